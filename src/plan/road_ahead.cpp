#include "plan/road_ahead.h"

#include "model/chain_inverse.h"
#include "model/constants.h"
#include "model/derived.h"
#include "model/gear_table.h"
#include "model/resistance.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace torvane {

namespace {

constexpr double beyondReach = 1.02; // of the highest gear's reach: until there the legs fade

double speedAt(const Model& model, double cadence, double ratio)
{
    return cadence * ratio * model.state.rearCircumference / mmPerMinute;
}

} // namespace

RoadAhead::RoadAhead(const RideConditions& conditions)
    : ride(conditions), stage(conditions.settings.analysePowerBase),
      slowestSpeed(speedAt(conditions.model, conditions.options.leastCadence, conditions.model.gearTable[0].ratio)),
      airPoint(std::numeric_limits<size_t>::max())
{
    now.physics = Physics::ofTheRoad;
}

void RoadAhead::setAirOf(size_t index)
{
    if (index == airPoint)
        return;
    airPoint = index;
    const CoursePoint& point = ride.course.points[index];
    const PlanOptions& options = ride.options;
    double temperature = ride.model.state.temperature;
    bool knowsHeading = ride.course.findings.hasPlaces;
    double wind = knowsHeading ? std::cos((point.heading - options.windDirection) * pi / 180) * options.windSpeed : 0;
    now.headWind = wind + ride.extraHeadWind;
    setAir(now, airPressureAt(temperature, point.height), temperature);
}

void RoadAhead::go(double distance, double way)
{
    double from = std::min(distance, ride.course.length - way);
    setAirOf(pointAt(ride.course, distance));
    now.inclination = 100 * (heightAt(ride.course, from + way) - heightAt(ride.course, from)) / way;
    updateLoadAndGrip(ride.model, now, 0);
    setLoads(ride.model, now);
}

double RoadAhead::resistance(double speed)
{
    return resistanceAtVelocity(ride.model, now, speed).value;
}

void RoadAhead::shift(double speed, bool steady)
{
    const GearEntry& held = ride.model.gearTable[gear];
    if (steady || speed < held.velocityShiftDown || speed > held.velocityShiftUp)
        gear = usualGear(ride.model, speed);
}

// From step to step the losses hardly change: what they left in the last one is nearly the answer. A motor's share is
// no such thing.
double RoadAhead::warmThrust(double wanted, double speed)
{
    constexpr int rounds = 4;
    constexpr double close = 1e-7;
    if (ride.model.state.motorLocation == motorNone) {
        double wheelSpeed = radiansPerSecond(wheelRpmAt(ride.model, speed));
        double crankSpeed = radiansPerSecond(cadence);
        for (int round = 0; round < rounds; ++round) {
            stagesFromThrust(ride.model, now, wanted * passed, wheelSpeed, crankSpeed);
            double off = stagePower(now, stage) / wanted - 1;
            if (std::fabs(off) < close)
                return wanted * passed;
            passed /= 1 + off;
        }
    }
    double thrust = thrustForStage(ride.model, now, stage, wanted, speed, cadence);
    passed = thrust > 0 ? thrust / wanted : 1;
    return thrust;
}

double RoadAhead::inGears(double wanted, double speed, Losses losses)
{
    cadence = cadenceInGear(ride.model, speed, ride.model.gearTable[gear].ratio);
    double thrust = losses == Losses::asBefore ? wanted * passed : warmThrust(wanted, speed);
    power = wanted;
    motor = now.assistPower;
    return thrust;
}

double RoadAhead::thrustFor(double wanted, double speed, Losses losses)
{
    double reach = ride.model.reachVelocity;
    double legs = std::clamp((beyondReach - speed / reach) / (beyondReach - 1), 0.0, 1.0);
    if (wanted <= 0 || legs == 0) {
        power = motor = cadence = 0;
        return 0;
    }
    if (speed >= slowestSpeed)
        return inGears(wanted * legs, speed, losses);
    gear = 0;
    double share = speed / slowestSpeed;
    double thrust = inGears(wanted, slowestSpeed, losses);
    power *= share;
    motor *= share;
    cadence *= share;
    return thrust * share;
}

void RoadAhead::driveBack(double thrust, double speed)
{
    if (thrust <= 0) {
        power = motor = cadence = 0;
        return;
    }
    cadence = cadenceInGear(ride.model, speed, ride.model.gearTable[gear].ratio);
    driveStagesFromThrust(ride.model, now, speed, thrust, radiansPerSecond(wheelRpmAt(ride.model, speed)),
                          radiansPerSecond(cadence));
    power = stagePower(now, stage);
    motor = now.assistPower;
}

bool RoadAhead::canRide(double wanted)
{
    gear = 0;
    return thrustFor(wanted, slowestSpeed) >= resistance(slowestSpeed);
}

} // namespace torvane
