#include "plan/thrust_seconds.h"

#include "core/units.h"
#include "gps/track_geometry.h"
#include "model/chain_inverse.h"
#include "model/constants.h"
#include "model/derived.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "plan/series.h"

#include <cmath>
#include <span>

namespace torvane {

namespace {

constexpr size_t altitudeSpan = 15, speedSpan = 3, positionSpan = 5; // s of the means, uneven

using Seconds = std::span<ThrustSecond>;
using Member = double ThrustSecond::*;

void smooth(Seconds seconds, Member member, size_t span)
{
    std::vector<double> values;
    values.reserve(seconds.size());
    for (const ThrustSecond& second : seconds)
        values.push_back(second.*member);
    values = centredMeans(values, span / 2);
    for (size_t i = 0; i < seconds.size(); ++i)
        seconds[i].*member = values[i];
}

// The cadence that the drivetrain's losses go with: the measured one, unless the pedals barely turn.
double crankCadence(const Model& model, const MeasuredSecond& second)
{
    constexpr double leastTurning = 20; // rpm
    if (second.cadence >= leastTurning)
        return second.cadence;
    return cadenceInGear(model, second.speed, model.gearTable[usualGear(model, second.speed)].ratio);
}

// What maps a record of the device to a second of the balance.
struct Mapping {
    const Model& model;
    Evaluation now;
    const MeasuredRide& ride;
    Stage stage;
};

double airPowerAt(Mapping& mapping, double altitude)
{
    constexpr double anySpeed = 10; // m/s; drag grows with the square of it
    double temperature = mapping.ride.temperature;
    setAir(mapping.now, airPressureAt(temperature, altitude), temperature);
    resistanceAtVelocity(mapping.model, mapping.now, anySpeed);
    return mapping.now.airDragPower / (anySpeed * anySpeed * anySpeed);
}

ThrustSecond secondOf(Mapping& mapping, const MeasuredSecond& measured)
{
    ThrustSecond second;
    second.time = measured.timestamp - mapping.ride.seconds.front().timestamp;
    second.altitude = measured.altitude;
    second.speed = measured.speed;
    second.latitude = measured.latitude;
    second.longitude = measured.longitude;
    second.measured = second.thrust = measured.power;
    if (measured.power > 0)
        second.thrust = thrustForStage(mapping.model, mapping.now, mapping.stage, measured.power, measured.speed,
                                       crankCadence(mapping.model, measured));
    second.airPower = airPowerAt(mapping, measured.altitude);
    return second;
}

// Seconds in between a step of a few, by even change.
void appendStep(std::vector<ThrustSecond>& seconds, const ThrustSecond& next)
{
    ThrustSecond last = seconds.back();
    for (double steps = next.time - last.time, step = 1; step < steps; ++step) {
        ThrustSecond filled = last;
        for (Member member :
             {&ThrustSecond::time, &ThrustSecond::altitude, &ThrustSecond::speed, &ThrustSecond::latitude,
              &ThrustSecond::longitude, &ThrustSecond::measured, &ThrustSecond::thrust, &ThrustSecond::airPower})
            filled.*member = between(last.*member, next.*member, step / steps);
        seconds.push_back(filled);
    }
    seconds.push_back(next);
}

void appendStretches(Mapping& mapping, ThrustRide& thrust)
{
    for (const MeasuredSecond& measured : mapping.ride.seconds) {
        if (!std::isfinite(measured.altitude) || !std::isfinite(measured.speed))
            continue;
        ThrustSecond next = secondOf(mapping, measured);
        if (thrust.seconds.empty() || next.time - thrust.seconds.back().time > longestStep) {
            thrust.stretches.push_back({thrust.seconds.size(), thrust.seconds.size()});
            thrust.seconds.push_back(next);
        } else {
            appendStep(thrust.seconds, next);
        }
        thrust.stretches.back().last = thrust.seconds.size();
    }
}

bool hasPosition(const ThrustSecond& second)
{
    return std::isfinite(second.latitude) && std::isfinite(second.longitude);
}

// Where two places are the same the heading of the second before holds.
void setHeadings(Seconds seconds)
{
    for (size_t i = 0; i < seconds.size(); ++i) {
        const ThrustSecond& from = seconds[i == 0 ? 0 : i - 1];
        const ThrustSecond& to = seconds[std::min(i + 1, seconds.size() - 1)];
        double north = (to.latitude - from.latitude) * metresPerDegree;
        double east = (to.longitude - from.longitude) * metresPerDegree * std::cos(to.latitude * pi / 180);
        double length = std::hypot(east, north);
        if (length > 0.1) {
            seconds[i].east = east / length;
            seconds[i].north = north / length;
        } else if (i > 0 && std::isfinite(length)) {
            seconds[i].east = seconds[i - 1].east;
            seconds[i].north = seconds[i - 1].north;
        }
    }
}

void smoothStretch(Seconds seconds, bool hasPositions)
{
    smooth(seconds, &ThrustSecond::altitude, altitudeSpan);
    smooth(seconds, &ThrustSecond::speed, speedSpan);
    if (!hasPositions)
        return;
    smooth(seconds, &ThrustSecond::latitude, positionSpan);
    smooth(seconds, &ThrustSecond::longitude, positionSpan);
    setHeadings(seconds);
}

Bicycle bicycleOf(const Model& model, Evaluation& now)
{
    updateLoadAndGrip(model, now, 0);
    setLoads(model, now);
    return {now.rollingLoad * standardGravity, model.state.inertialWeight, model.state.totalWeight * standardGravity};
}

} // namespace

Model withoutFactor(const Model& model)
{
    Model bare = model;
    bare.calibration = {};
    keepDragFactors(bare);
    return bare;
}

ThrustRide thrustOf(const Model& model, const MeasuredRide& ride, Stage stage)
{
    ThrustRide thrust;
    Model bare = withoutFactor(model);
    Mapping mapping = {bare, {}, ride, stage};
    mapping.now.physics = Physics::ofTheRoad;
    thrust.bicycle = bicycleOf(bare, mapping.now);
    appendStretches(mapping, thrust);
    size_t placed = static_cast<size_t>(std::ranges::count_if(thrust.seconds, hasPosition));
    thrust.hasPositions = placed != 0;
    for (const SecondRange& range : thrust.stretches)
        smoothStretch(Seconds(thrust.seconds).subspan(range.first, range.size()), thrust.hasPositions);
    for (size_t i = 1; i < thrust.seconds.size(); ++i)
        thrust.seconds[i].metres = thrust.seconds[i - 1].metres + thrust.seconds[i].speed;
    return thrust;
}

} // namespace torvane
