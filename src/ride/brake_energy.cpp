#include "ride/brake_energy.h"

#include "core/parameter_block.h"
#include "model/brake_heat.h"
#include "model/constants.h"
#include "model/run_state.h"

#include <cmath>

namespace torvane {

namespace {

double brakeShare(int wheel)
{
    return wheel == 0 ? modelState.frontFrictionShare : modelState.rearFrictionShare;
}

double kineticEnergy(double velocity)
{
    double v = velocity / 3.6;
    return v * v * modelState.inertialWeight * 0.5;
}

} // namespace

void clearBrakeEnergy()
{
    for (int wheel = 0; wheel < 2; ++wheel) {
        modelState.brakeHeat[wheel] = 0.0;
        modelState.brakeRadiated[wheel] = 0.0;
    }
    runState.airDragQuantity = 0.0;
    runState.rollingDragQuantity = 0.0;
}

void accumulateBrakeStep(double velocity, double thrustPower, double dt)
{
    for (int wheel = 0; wheel < 2; ++wheel) {
        modelState.brakeHeat[wheel] += std::fabs(thrustPower) * dt * brakeShare(wheel);
        modelState.brakeRadiated[wheel] -= heatLossRate(velocity, wheel) * dt;
    }
    addDragQuantities(dt);
}

void undoBrakeOvershoot(double velocity, double thrustPower, double dt, double fraction)
{
    for (int wheel = 0; wheel < 2; ++wheel) {
        modelState.brakeHeat[wheel] -= std::fabs(thrustPower) * dt * brakeShare(wheel) * fraction;
        modelState.brakeRadiated[wheel] += heatLossRate(velocity, wheel) * dt * fraction;
    }
    runState.airDragQuantity -= runState.airDragPower * dt * fraction;
    runState.rollingDragQuantity -= runState.rollingPower * dt * fraction;
}

void coolBrakes(double velocity, double dt)
{
    for (int wheel = 0; wheel < 2; ++wheel) {
        modelState.brakeRadiated[wheel] -= heatLossRate(velocity, wheel) * dt;
    }
}

void addDragQuantities(double dt)
{
    runState.airDragQuantity += runState.airDragPower * dt;
    runState.rollingDragQuantity += runState.rollingPower * dt;
}

double drawnTemperature(int wheel)
{
    int material = modelState.brakeMaterial[modelState.brakeType[wheel]][wheel];
    double weight = modelState.brakeWeight[modelState.brakeType[0]][wheel];
    double held = modelState.brakeHeat[wheel] + modelState.brakeRadiated[wheel];
    return held / (runState.specificHeat[material] * weight) + modelState.temperature;
}

void energyLedger(double inclination, double distance, double firstVelocity, double secondVelocity)
{
    double descent = std::sin(std::atan(-inclination / 100.0));
    runState.potentialEnergy = descent * modelState.totalWeight * distance * standardGravity;
    runState.startKineticEnergy = kineticEnergy(firstVelocity);
    runState.endKineticEnergy = kineticEnergy(secondVelocity);
}

} // namespace torvane
