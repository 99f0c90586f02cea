#include "ride/motion.h"

#include "core/parameter_block.h"
#include "model/constants.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "model/run_state.h"

#include <algorithm>
#include <cmath>

namespace torvane {

double usualRatio(double velocity)
{
    return velocity * 60000.0 / (modelState.cadenceUsual * modelState.rearCircumference);
}

double cadenceInGear(double velocity, double gearRatio)
{
    return velocity * 60000.0 / (modelState.rearCircumference * gearRatio);
}

void engageGear(StepState& state)
{
    state.frontTooth = frontToothOf(state.gear);
    state.rearTooth = rearToothOf(state.gear);
    state.gearRatio = gearTable[state.gear].ratio;
}

int startGear(int which, double velocity)
{
    if (runState.startGearMode[which] == 0) {
        return nearestGear(usualRatio(velocity));
    }
    return std::clamp(runState.startGearIndex[which], 0, std::max(0, modelState.gearCount - 1));
}

bool takePower(double power)
{
    runState.power = std::isfinite(power) ? power : 0.0;
    return std::isfinite(power);
}

void resetGrip()
{
    updateLoadAndGrip(0.0);
}

void showStart(const StepState& state)
{
    runState.pedalingPower = state.resistance;
    runState.pedalingTorque = state.cadence == 0.0 ? 0.0 : state.resistance / radiansPerSecond(state.cadence);
    runState.pedalingForce = forceAtLever(runState.pedalingTorque, crankLever());
}

void updateResistance(StepState& state)
{
    state.previousResistance = state.resistance;
    state.resistance = resistanceAtVelocity(state.velocity).value;
}

double powerAcceleration(const StepState& state)
{
    double resistance = (state.previousResistance + state.resistance) * 0.5;
    return (runState.thrustPower - resistance) / (modelState.inertialWeight * state.velocity);
}

double gravityAcceleration(double thrustForce)
{
    double slope = std::sin(std::atan(runState.inclination / 100.0)) * modelState.totalWeight;
    return (thrustForce - slope) * standardGravity / modelState.inertialWeight;
}

void followLargestAccele(double accele)
{
    if (std::fabs(accele) > std::fabs(runState.maxAccele)) {
        runState.maxAccele = accele;
    }
}

void advance(StepState& state, double dt)
{
    double gain = state.accele * dt;
    state.distance += (gain * 0.5 + state.velocity) * dt;
    state.velocity += gain;
}

double settleAtVelocity(StepState& state, double dt)
{
    const double end = runState.endVelocity;
    double overshoot = (state.velocity - end) / state.accele;
    state.distance -= (end + state.velocity) * 0.5 * dt * overshoot;
    state.time += (1.0 - overshoot) * dt;
    state.velocity = end;
    return overshoot;
}

void storeMotion(const StepState& state)
{
    runState.velocity = state.velocity;
    runState.sectorTime = state.time;
    runState.distance = state.distance;
    runState.accele = meanAccele(runState.startVelocity, runState.endVelocity, state.time);
}

double meanAccele(double from, double to, double time)
{
    return time == 0.0 ? 0.0 : (to - from) / time;
}

double quantizeInterval(double wanted)
{
    int best = 2;
    for (int n = 100; n > 2; --n) {
        if (1000 % n == 0 && std::fabs(1.0 / n - wanted) < std::fabs(1.0 / best - wanted)) {
            best = n;
        }
    }
    return 1.0 / best;
}

double automaticInterval(double velocity)
{
    double ratio = usualRatio(velocity);
    return quantizeInterval(0.5 / (ratio * ratio));
}

} // namespace torvane
