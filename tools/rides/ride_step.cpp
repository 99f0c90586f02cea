#include "rides/ride_step.h"

#include "model/assist.h"
#include "model/chain_inverse.h"
#include "model/constants.h"
#include "model/derived.h"

#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "model/step_state.h"

#include <cmath>

namespace torvane {

namespace {

double radians(double degrees)
{
    return degrees * pi / 180;
}

Evaluation onRoad(const Model& model, const Road& road, const Weather& weather)
{
    Evaluation now = {};
    now.physics = weather.physics;
    now.inclination = 100 * road.rise;
    now.headWind = std::cos(radians(road.heading - weather.windDirection)) * weather.windSpeed;
    setAir(now, airPressureAt(weather.temperature, road.altitude), weather.temperature);
    updateLoadAndGrip(model, now, 0);
    setLoads(model, now);
    return now;
}

int riddenGear(const Model& model, double speed)
{
    return nearestGear(model, wheelRpmAt(model, speed) / model.state.cadenceUsual);
}

// The power that reaches the road.
double thrustPowerAt(const Model& model, Evaluation& now, double speed, double pedalingPower)
{
    if (pedalingPower <= 0)
        return 0;
    if (now.physics == Physics::ofTheRoad)
        return thrustForStage(model, now, stagePedaling, pedalingPower, speed, riddenCadence(model, speed));
    int gear = riddenGear(model, speed);
    StepState step;
    step.velocity = speed;
    step.frontTooth = frontToothOf(model, gear);
    step.rearTooth = rearToothOf(model, gear);
    step.gearRatio = model.gearTable[gear].ratio;
    step.cadence = riddenCadence(model, speed);
    driveFromPedaling(model, now, step, pedalingPower);
    return now.thrustPower;
}

} // namespace

double riddenCadence(const Model& model, double speed)
{
    return wheelRpmAt(model, speed) / model.gearTable[riddenGear(model, speed)].ratio;
}

void rideOn(const Model& model, const Road& road, const Weather& weather, double power, double braking, double dt,
            Place& place)
{
    Evaluation now = onRoad(model, road, weather);
    double surplus =
        thrustPowerAt(model, now, place.speed, power) - resistanceAtVelocity(model, now, place.speed).value;
    place.speed += (surplus / (place.speed * model.state.inertialWeight) - braking) * dt;
    double way = place.speed * dt;
    double heading = radians(road.heading);
    place.distance += way;
    place.latitude += std::cos(heading) * way / metresPerDegree;
    place.longitude += std::sin(heading) * way / (metresPerDegree * std::cos(radians(place.latitude)));
}

double noise(std::mt19937& random, double deviation)
{
    double sum = -6;
    for (int i = 0; i < 12; ++i)
        sum += random() / 4294967296.0;
    return sum * deviation;
}

} // namespace torvane
