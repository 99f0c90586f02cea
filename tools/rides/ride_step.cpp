#include "rides/ride_step.h"

#include "core/parameter_block.h"
#include "model/assist.h"
#include "model/constants.h"
#include "model/derived.h"

#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "model/run_state.h"
#include "model/step_state.h"

#include <cmath>

namespace torvane {

namespace {

double radians(double degrees)
{
    return degrees * pi / 180;
}

void takeRoad(const Road& road, const Weather& weather)
{
    runState.inclination = 100 * road.rise;
    runState.headWind = std::cos(radians(road.heading - weather.windDirection)) * weather.windSpeed;
    runState.airPressureRatio = airPressureAt(weather.temperature, road.altitude) / seaLevelPressure;
    updateLoadAndGrip(0);
    setLoads();
}

int riddenGear(double speed)
{
    return nearestGear(wheelRpmAt(speed) / modelState.cadenceUsual);
}

// The power that reaches the road.
double thrustPowerAt(double speed, double pedalingPower)
{
    if (pedalingPower <= 0)
        return 0;
    int gear = riddenGear(speed);
    StepState step;
    step.velocity = speed;
    step.frontTooth = frontToothOf(gear);
    step.rearTooth = rearToothOf(gear);
    step.gearRatio = gearTable[gear].ratio;
    step.cadence = riddenCadence(speed);
    runState.pedalingPower = pedalingPower;
    driveFromPedaling(step);
    return runState.thrustPower;
}

} // namespace

double riddenCadence(double speed)
{
    return wheelRpmAt(speed) / gearTable[riddenGear(speed)].ratio;
}

void rideOn(const Road& road, const Weather& weather, double power, double braking, double dt, Place& place)
{
    takeRoad(road, weather);
    double surplus = thrustPowerAt(place.speed, power) - resistanceAtVelocity(place.speed).value;
    place.speed += (surplus / (place.speed * modelState.inertialWeight) - braking) * dt;
    double way = place.speed * dt;
    double heading = radians(road.heading);
    place.distance += way;
    place.latitude += std::cos(heading) * way / metresPerDegree;
    place.longitude += std::sin(heading) * way / (metresPerDegree * std::cos(radians(place.latitude)));
}

double noise(std::mt19937& random, double deviation)
{
    double sum = -6;
    for (int i = 0; i < 12; i++)
        sum += random() / 4294967296.0;
    return sum * deviation;
}

} // namespace torvane
