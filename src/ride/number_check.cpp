#include "ride/number_check.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace torvane {

namespace {

bool areNumbers(std::initializer_list<double> figures)
{
    return std::all_of(figures.begin(), figures.end(), [](double figure) { return std::isfinite(figure); });
}

bool steadyFigures(const Evaluation& now)
{
    return areNumbers({now.pedalingPower, now.pedalingTorque, now.pedalingForce, now.crankPower, now.crankTorque,
                       now.crankForce, now.hubPower, now.hubTorque, now.hubForce, now.thrustPower, now.thrustTorque,
                       now.thrustForce, now.assistPower, now.assistTorque, now.assistForce}) &&
           areNumbers({now.cadence, now.inclination, now.airDrag, now.airDragPower, now.totalLoad, now.rollingPower,
                       now.slopePower});
}

bool runFigures(const RideFigures& f)
{
    bool stages = true;
    for (int stage = 0; stage < stageCount; ++stage) {
        stages = stages && areNumbers({f.peakPower[stage], f.meanStagePower[stage], f.meanStageTorque[stage],
                                       f.meanStageForce[stage]});
    }
    return stages && areNumbers({f.velocity, f.power, f.meanPower, f.requiredPower, f.force, f.corneringRadius,
                                 f.safetyMargin, f.assistPeakPower, f.assistMeanPower, f.assistMeanTorque,
                                 f.assistMeanForce, f.sectorTime, f.accele, f.maxAccele, f.distance});
}

bool brakeFigures(const RideFigures& f, const BrakeHeat& heat)
{
    return areNumbers({heat.brakeHeat[0], heat.brakeHeat[1], heat.brakeRadiated[0], heat.brakeRadiated[1],
                       heat.brakeTemperature[0], heat.brakeTemperature[1], f.airDragQuantity, f.rollingDragQuantity,
                       f.potentialEnergy, f.startKineticEnergy, f.endKineticEnergy});
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

bool endedInNumbers(const RideRun& ride)
{
    return steadyFigures(ride.now) && runFigures(ride.found) && brakeFigures(ride.found, ride.heat) &&
           bodyFigures(ride.physiology) && std::all_of(ride.log.rows.begin(), ride.log.rows.end(), isNumbers);
}

} // namespace torvane
