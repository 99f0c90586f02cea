#include "ride/motion.h"

#include "model/assist.h"
#include "model/constants.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"

#include <algorithm>
#include <cmath>

namespace torvane {

void engageGear(const Model& model, StepState& state)
{
    state.frontTooth = frontToothOf(model, state.gear);
    state.rearTooth = rearToothOf(model, state.gear);
    state.gearRatio = model.gearTable[state.gear].ratio;
}

int startGear(const RideRun& ride, GearedStart which, double velocity)
{
    if (ride.in.startGearMode[which] == gearAutomatic)
        return usualGear(ride.model, velocity);
    return std::clamp(ride.in.startGearIndex[which], 0, std::max(0, ride.model.state.gearCount - 1));
}

bool takePower(RideRun& ride, double power)
{
    ride.found.power = std::isfinite(power) ? power : 0.0;
    return std::isfinite(power);
}

void resetGrip(RideRun& ride)
{
    updateLoadAndGrip(ride.model, ride.now, 0.0);
}

double powerForEndingVelocity(RideRun& ride)
{
    resetGrip(ride);
    return solvePowerAtVelocity(ride.model, ride.now, stagePedaling, ride.in.endVelocity).value;
}

void showStart(RideRun& ride, const StepState& state)
{
    ride.now.pedalingPower = state.resistance;
    ride.now.pedalingTorque = state.cadence == 0.0 ? 0.0 : state.resistance / radiansPerSecond(state.cadence);
    ride.now.pedalingForce = forceAtLever(ride.now.pedalingTorque, crankLever(ride.model));
}

void updateResistance(RideRun& ride, StepState& state)
{
    state.previousResistance = state.resistance;
    state.resistance = resistanceAtVelocity(ride.model, ride.now, state.velocity).value;
}

double powerAcceleration(const RideRun& ride, const StepState& state)
{
    double resistance = (state.previousResistance + state.resistance) * 0.5;
    return (ride.now.thrustPower - resistance) / (ride.model.state.inertialWeight * state.velocity);
}

double gravityAcceleration(const RideRun& ride, double thrustForce)
{
    double slope = std::sin(std::atan(ride.now.inclination / 100.0)) * ride.model.state.totalWeight;
    return (thrustForce - slope) * standardGravity / ride.model.state.inertialWeight;
}

void followLargestAccele(RideRun& ride, double accele)
{
    if (std::fabs(accele) > std::fabs(ride.found.maxAccele))
        ride.found.maxAccele = accele;
}

void advance(StepState& state, double dt)
{
    double gain = state.accele * dt;
    state.distance += (gain * 0.5 + state.velocity) * dt;
    state.velocity += gain;
}

double settleAtVelocity(const RideRun& ride, StepState& state, double dt)
{
    double end = ride.in.endVelocity;
    double overshoot = (state.velocity - end) / state.accele;
    state.distance -= (end + state.velocity) * 0.5 * dt * overshoot;
    state.time += (1.0 - overshoot) * dt;
    state.velocity = end;
    return overshoot;
}

void storeMotion(RideRun& ride, const StepState& state)
{
    ride.found.velocity = state.velocity;
    ride.found.sectorTime = state.time;
    ride.found.distance = state.distance;
    ride.found.accele = meanAccele(ride.found.sectorStartVelocity, ride.in.endVelocity, state.time);
}

double meanAccele(double from, double to, double time)
{
    return time == 0.0 ? 0.0 : (to - from) / time;
}

double quantizeInterval(double wanted)
{
    int best = 2;
    for (int n = 100; n > 2; --n)
        if (1000 % n == 0 && std::fabs(1.0 / n - wanted) < std::fabs(1.0 / best - wanted))
            best = n;
    return 1.0 / best;
}

double automaticInterval(const Model& model, double velocity)
{
    double ratio = usualRatio(model, velocity);
    return quantizeInterval(0.5 / (ratio * ratio));
}

} // namespace torvane
