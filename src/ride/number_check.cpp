#include "ride/number_check.h"

#include "core/parameter_block.h"
#include "model/run_state.h"
#include "ride/physiology.h"
#include "ride/sample_log.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace torvane {

namespace {

bool areNumbers(std::initializer_list<double> figures)
{
    return std::all_of(figures.begin(), figures.end(), [](double figure) { return std::isfinite(figure); });
}

bool steadyFigures(const RunState& r)
{
    return areNumbers({r.pedalingPower, r.pedalingTorque, r.pedalingForce, r.crankPower, r.crankTorque, r.crankForce,
                       r.hubPower, r.hubTorque, r.hubForce, r.thrustPower, r.thrustTorque, r.thrustForce, r.assistPower,
                       r.assistTorque, r.assistForce}) &&
           areNumbers({r.velocity, r.cadence, r.power, r.meanPower, r.force, r.inclination, r.corneringRadius,
                       r.safetyMargin, r.airDrag, r.airDragPower, r.totalLoad, r.rollingPower, r.slopePower});
}

bool runFigures(const RunState& r)
{
    bool stages = true;
    for (int stage = 0; stage < stageCount; ++stage) {
        stages = stages && areNumbers({r.peakPower[stage], r.meanStagePower[stage], r.meanStageTorque[stage],
                                       r.meanStageForce[stage]});
    }
    return stages && areNumbers({r.assistPeakPower, r.assistMeanPower, r.assistMeanTorque, r.assistMeanForce,
                                 r.sectorTime, r.accele, r.maxAccele, r.distance});
}

bool brakeFigures(const RunState& r, const ModelState& m)
{
    return areNumbers({m.brakeHeat[0], m.brakeHeat[1], m.brakeRadiated[0], m.brakeRadiated[1], m.brakeTemperature[0],
                       m.brakeTemperature[1], r.airDragQuantity, r.rollingDragQuantity, r.potentialEnergy,
                       r.startKineticEnergy, r.endKineticEnergy});
}

bool bodyFigures(const PhysiologyFigures& p)
{
    return areNumbers({p.normalizedPower, p.variabilityIndex, p.intensityFactor, p.trainingStressScore, p.kiloJoule,
                       p.kiloCalorie, p.foodKiloCalorie});
}

// Each row holds the velocity and the stage of its step; what they add up to is looked at above.
bool isNumbers(const SampleRow& row)
{
    return areNumbers({row.velocity, row.power, row.torque, row.force, row.accele, row.cadence});
}

} // namespace

bool endedInNumbers(const SampleLog& log)
{
    return steadyFigures(runState) && runFigures(runState) && brakeFigures(runState, modelState) &&
           bodyFigures(physiology) && std::all_of(log.rows.begin(), log.rows.end(), isNumbers);
}

} // namespace torvane
