#include "ride/brake_energy.h"

#include "core/units.h"
#include "model/brake_heat.h"
#include "model/constants.h"

#include <cmath>

namespace torvane {

namespace {

double brakeShare(const RideRun& ride, int wheel)
{
    return wheel == 0 ? ride.now.frontFrictionShare : ride.now.rearFrictionShare;
}

double kineticEnergy(const RideRun& ride, double velocity)
{
    double v = velocity / kphPerMps;
    return v * v * ride.model.state.inertialWeight * 0.5;
}

} // namespace

void clearBrakeEnergy(RideRun& ride)
{
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        ride.heat.brakeHeat[wheel] = 0.0;
        ride.heat.brakeRadiated[wheel] = 0.0;
    }
    ride.found.airDragQuantity = 0.0;
    ride.found.rollingDragQuantity = 0.0;
}

void accumulateBrakeStep(RideRun& ride, double velocity, double thrustPower, double dt)
{
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        ride.heat.brakeHeat[wheel] += std::fabs(thrustPower) * dt * brakeShare(ride, wheel);
        ride.heat.brakeRadiated[wheel] -= heatLossRate(ride.model, ride.in.materials, ride.heat, velocity, wheel) * dt;
    }
    addDragQuantities(ride, dt);
}

void undoBrakeOvershoot(RideRun& ride, double velocity, double thrustPower, double dt, double fraction)
{
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        ride.heat.brakeHeat[wheel] -= std::fabs(thrustPower) * dt * brakeShare(ride, wheel) * fraction;
        ride.heat.brakeRadiated[wheel] +=
            heatLossRate(ride.model, ride.in.materials, ride.heat, velocity, wheel) * dt * fraction;
    }
    ride.found.airDragQuantity -= ride.now.airDragPower * dt * fraction;
    ride.found.rollingDragQuantity -= ride.now.rollingPower * dt * fraction;
}

void coolBrakes(RideRun& ride, double velocity, double dt)
{
    for (int wheel = 0; wheel < wheelCount; ++wheel)
        ride.heat.brakeRadiated[wheel] -= heatLossRate(ride.model, ride.in.materials, ride.heat, velocity, wheel) * dt;
}

void addDragQuantities(RideRun& ride, double dt)
{
    ride.found.airDragQuantity += ride.now.airDragPower * dt;
    ride.found.rollingDragQuantity += ride.now.rollingPower * dt;
}

double drawnTemperature(const RideRun& ride, int wheel)
{
    int material = ride.model.state.brakeMaterial[ride.model.state.brakeType[wheel]][wheel];
    double weight = ride.model.state.brakeWeight[ride.model.state.brakeType[0]][wheel];
    double held = ride.heat.brakeHeat[wheel] + ride.heat.brakeRadiated[wheel];
    return held / (ride.in.materials.specificHeat[material] * weight) + ride.model.state.temperature;
}

void energyLedger(RideRun& ride, double distance, double firstVelocity, double secondVelocity)
{
    double descent = std::sin(std::atan(-ride.now.inclination / 100.0));
    ride.found.potentialEnergy = descent * ride.model.state.totalWeight * distance * standardGravity;
    ride.found.startKineticEnergy = kineticEnergy(ride, firstVelocity);
    ride.found.endKineticEnergy = kineticEnergy(ride, secondVelocity);
}

} // namespace torvane
