// The set-up of a run: what the user entered, copied into the run record.
#include "core/parameter_block.h"
#include "model/constants.h"
#include "model/run_state.h"
#include "ride/brake_energy.h"
#include "ride/motion.h"
#include "ride/ride_run.h"
#include "ride/stage_totals.h"

#include <algorithm>
#include <iterator>

namespace torvane {

namespace {

void takeDrive(int mode)
{
    if (mode == rideAcceleration || mode == rideDeceleration || mode == ridePatternBraking) {
        runState.thrustMode = mode == ridePatternBraking ? 1 : 0;
        runState.kiloWattLog = 0;
    }
}

void takeInputs(const ParameterBlock& in, int mode)
{
    RunState& r = runState;
    r.velocity = in.rideVelocity[mode];
    r.power = in.ridePower[mode];
    r.force = in.rideForce[mode];
    r.startVelocity = in.rideStartVelocity[mode];
    r.endVelocity = in.rideEndVelocity[mode];
    r.sectorTime = in.rideLegTime[mode];
    r.accele = in.rideAccele[mode];
    r.gravity = in.rideGravity[mode];
    r.distance = in.rideDistance[mode];
    const bool patterned = mode == ridePatternBraking;
    r.inclination = patterned ? in.brakingInclination[std::clamp(in.rideTarget, 0, 3)] : in.rideInclination[mode];
    r.powerBaseIndex = in.ridePowerBase[mode];
}

void takeSettings(const ParameterBlock& in)
{
    RunState& r = runState;
    r.kickTime = in.initialKickTime;
    r.accelerationIntervalMode = in.accelerationIntervalMode;
    r.decelerationIntervalMode = in.decelerationIntervalMode;
    r.accelerationInterval = in.accelerationInterval;
    r.decelerationInterval = in.decelerationInterval;
    std::copy(std::begin(in.specificHeat), std::end(in.specificHeat), r.specificHeat);
    std::copy(std::begin(in.emittance), std::end(in.emittance), r.emittance);
    r.intervalDistance = in.intervalDistance;
    r.totalDistance = in.totalDistance;
    std::copy(std::begin(in.startGearMode), std::end(in.startGearMode), r.startGearMode);
    std::copy(std::begin(in.startGearIndex), std::end(in.startGearIndex), r.startGearIndex);
    r.inclinationLimit = in.inclinationLimit;
    r.corneringRadius = in.corneringRadius;
    r.safetyMargin = in.safetyMargin;
}

void takePhysiology(const ParameterBlock& in)
{
    RunState& r = runState;
    r.useFtp = in.useFtp;
    r.energyEfficiency = in.energyEfficiency;
    r.intensionCase = in.intensionCase;
    std::copy(std::begin(in.intensionFirst), std::end(in.intensionFirst), r.intensionFirst);
    std::copy(std::begin(in.intensionSecond), std::end(in.intensionSecond), r.intensionSecond);
}

// A run that fails early must not answer with figures of the run before.
void clearResults()
{
    clearPeaks();
    storeMeans(StageTotals{}, 0.0);
    clearBrakeEnergy();
    runState.meanPower = 0.0;
    runState.seekLow = runState.seekHigh = 0.0;
}

} // namespace

void prepareRideRun()
{
    const ParameterBlock& in = workingBlock;
    const int mode = std::clamp(in.rideMode, 0, rideModeCount - 1);
    runState.headWind = modelState.windSpeed;
    runState.airPressureRatio = modelState.hectoPascal / seaLevelPressure;
    takeDrive(mode);
    takeInputs(in, mode);
    takeSettings(in);
    takePhysiology(in);
    clearResults();
    resetGrip();
}

} // namespace torvane
