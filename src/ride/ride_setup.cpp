// The set-up of a run: what the user entered.
#include "model/constants.h"
#include "model/resistance.h"
#include "ride/ride_run.h"

#include <algorithm>
#include <iterator>

namespace torvane {

namespace {

template <class Value, size_t count>
void copyArray(Value (&target)[count], const Value (&source)[count])
{
    std::copy(std::begin(source), std::end(source), target);
}

Drive driveOf(int mode, const Drive& last)
{
    bool overTime = mode == rideAcceleration || mode == rideDeceleration || mode == ridePatternBraking;
    return overTime ? Drive{mode == ridePatternBraking ? thrustByBraking : thrustByPedaling, 0} : last;
}

bool wantsGraph(const ParameterBlock& block, int mode)
{
    if (mode == ridePowerAndVelocity)
        return block.bandGraphPowerVelocity != 0;
    return (mode == rideCriticalCornering ? block.bandGraphCornering : block.expressGraph) != 0;
}

void takeOfMode(RideInputs& in, const ParameterBlock& block, int mode)
{
    in.rideMode = mode;
    in.rideTarget = block.rideTarget;
    in.powerBaseIndex = block.ridePowerBase[mode];
    in.wantsGraph = wantsGraph(block, mode);
    in.velocity = block.rideVelocity[mode];
    in.power = block.ridePower[mode];
    in.force = block.rideForce[mode];
    in.startVelocity = block.rideStartVelocity[mode];
    in.endVelocity = block.rideEndVelocity[mode];
    in.sectorTime = block.rideLegTime[mode];
    in.accele = block.rideAccele[mode];
    in.gravity = block.rideGravity[mode];
    in.distance = block.rideDistance[mode];
    bool patterned = mode == ridePatternBraking;
    in.inclination = patterned ? block.brakingInclination[std::clamp(block.rideTarget, 0, brakingPatternCount - 1)]
                               : block.rideInclination[mode];
}

void takeOfAllModes(RideInputs& in, const ParameterBlock& block)
{
    in.inclinationLimit = block.inclinationLimit;
    in.corneringRadius = block.corneringRadius;
    in.safetyMargin = block.safetyMargin;
    in.intervalDistance = block.intervalDistance;
    in.totalDistance = block.totalDistance;
    in.kickTime = block.initialKickTime;
    in.accelerationIntervalMode = block.accelerationIntervalMode;
    in.decelerationIntervalMode = block.decelerationIntervalMode;
    in.accelerationInterval = block.accelerationInterval;
    in.decelerationInterval = block.decelerationInterval;
    copyArray(in.startGearMode, block.startGearMode);
    copyArray(in.startGearIndex, block.startGearIndex);
    in.materials = brakeMaterialsOf(block);
}

PhysiologyInputs physiologyInputsOf(const ParameterBlock& block)
{
    PhysiologyInputs in = {};
    in.useFtp = block.useFtp;
    in.energyEfficiency = block.energyEfficiency;
    in.intensionCase = block.intensionCase;
    copyArray(in.length.intensionFirst, block.intensionFirst);
    copyArray(in.length.intensionSecond, block.intensionSecond);
    return in;
}

// Until the run knows better.
RideFigures figuresOf(const RideInputs& in)
{
    RideFigures figures = {};
    figures.power = in.power;
    figures.force = in.force;
    figures.velocity = in.velocity;
    figures.sectorTime = in.sectorTime;
    figures.accele = in.accele;
    figures.distance = in.distance;
    figures.corneringRadius = in.corneringRadius;
    figures.safetyMargin = in.safetyMargin;
    figures.sectorStartVelocity = in.startVelocity;
    figures.drive = in.drive;
    return figures;
}

} // namespace

RideInputs takeRideInputs(const ParameterBlock& block, const Drive& lastDrive)
{
    int mode = std::clamp(block.rideMode, 0, rideModeCount - 1);
    RideInputs in = {};
    takeOfMode(in, block, mode);
    takeOfAllModes(in, block);
    in.physiology = physiologyInputsOf(block);
    in.drive = driveOf(mode, lastDrive);
    return in;
}

RideRun prepareRideRun(const Model& model, const RideInputs& in)
{
    RideRun ride{model, in, figuresOf(in)};
    ride.now.headWind = model.state.windSpeed;
    setAir(ride.now, model.state.hectoPascal, model.state.temperature);
    ride.now.inclination = in.inclination;
    updateLoadAndGrip(model, ride.now, 0.0);
    return ride;
}

} // namespace torvane
