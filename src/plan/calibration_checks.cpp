#include "plan/calibration_checks.h"

#include "gps/track_geometry.h"
#include "model/constants.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

template <class Has>
bool any(const MeasuredRide& ride, Has&& has)
{
    return std::ranges::any_of(ride.seconds, has);
}

// A speed that no road has: a device that was fed with a number.
bool isConstant(const ThrustRide& ride)
{
    constexpr double leastChange = 0.01; // share of the mean
    double sum = 0, squares = 0, count = 0;
    for (const ThrustSecond& second : ride.seconds) {
        sum += second.speed;
        squares += second.speed * second.speed;
        ++count;
    }
    double mean = sum / count;
    return mean > 0 && std::sqrt(std::max(0.0, squares / count - mean * mean)) < leastChange * mean;
}

// Metres to the east and north of the first place.
struct Offset {
    double east, north;
};

Offset offsetOf(const ThrustSecond& from, const ThrustSecond& to)
{
    double narrow = std::cos(from.latitude * pi / 180);
    return {(to.longitude - from.longitude) * metresPerDegree * narrow,
            (to.latitude - from.latitude) * metresPerDegree};
}

// Diagonal of the box around the track.
double extentOf(const ThrustRide& ride)
{
    Offset least = {0, 0}, most = {0, 0};
    for (const ThrustSecond& second : ride.seconds) {
        Offset at = offsetOf(ride.seconds.front(), second);
        if (!std::isfinite(at.east) || !std::isfinite(at.north))
            continue;
        least = {std::min(least.east, at.east), std::min(least.north, at.north)};
        most = {std::max(most.east, at.east), std::max(most.north, at.north)};
    }
    return std::hypot(most.east - least.east, most.north - least.north);
}

// Whether the ways lead along one line, to or fro: the doubled headings agree.
bool isShuttle(const ThrustRide& ride)
{
    constexpr double alongOneLine = 0.7;
    double cosine = 0, sine = 0, metres = 0;
    for (const ThrustSecond& second : ride.seconds) {
        cosine += second.speed * (second.east * second.east - second.north * second.north);
        sine += second.speed * 2 * second.east * second.north;
        metres += second.speed;
    }
    return std::hypot(cosine, sine) > alongOneLine * metres;
}

bool isSame(double one, double other)
{
    return one == other || (std::isnan(one) && std::isnan(other));
}

} // namespace

bool isSameRide(const MeasuredRide& one, const MeasuredRide& other)
{
    return !one.seconds.empty() &&
           std::ranges::equal(one.seconds, other.seconds, [](const MeasuredSecond& a, const MeasuredSecond& b) {
               return a.timestamp == b.timestamp && isSame(a.speed, b.speed) && isSame(a.power, b.power);
           });
}

CalibrationFault faultOfRecords(const MeasuredRide& ride)
{
    if (ride.code != fitOk)
        return CalibrationFault::unreadable;
    if (!any(ride, [](const MeasuredSecond& s) { return std::isfinite(s.power); }))
        return CalibrationFault::withoutPower;
    if (!any(ride, [](const MeasuredSecond& s) { return s.power > 0; }))
        return CalibrationFault::stillMeter;
    if (!any(ride, [](const MeasuredSecond& s) { return std::isfinite(s.altitude); }))
        return CalibrationFault::withoutAltitude;
    if (!any(ride, [](const MeasuredSecond& s) { return s.speed > 0; }))
        return CalibrationFault::withoutSpeed;
    return CalibrationFault::none;
}

CalibrationFault faultOfTrack(const ThrustRide& ride)
{
    constexpr double leastExtent = 1000; // m
    if (ride.seconds.size() < leastCalibrationWindows * 30)
        return CalibrationFault::tooFewWindows;
    if (isConstant(ride))
        return CalibrationFault::constantSpeed;
    if (ride.hasPositions && extentOf(ride) < leastExtent && isShuttle(ride))
        return CalibrationFault::shortShuttle;
    return CalibrationFault::none;
}

double onwardShare(const ThrustRide& ride)
{
    double east = 0, north = 0, metres = 0;
    for (const ThrustSecond& second : ride.seconds) {
        east += second.speed * second.east;
        north += second.speed * second.north;
        metres += second.speed;
    }
    return ride.hasPositions && metres > 0 ? std::hypot(east, north) / metres : 1;
}

double altitudeDrift(const ThrustRide& ride)
{
    constexpr double samePlace = 200; // m
    const ThrustSecond& from = ride.seconds.front();
    const ThrustSecond& to = ride.seconds.back();
    Offset apart = offsetOf(from, to);
    return std::hypot(apart.east, apart.north) < samePlace ? to.altitude - from.altitude : 0;
}

LeftOutSeconds countUse(const SecondUse& use)
{
    LeftOutSeconds seconds = {};
    for (LeftOut reason : use)
        ++seconds[reason];
    return seconds;
}

uint32_t doubtsOf(const MeasuredRide& measured, const ThrustRide& ride, const LeftOutSeconds& seconds)
{
    constexpr double mostDrift = 15;                   // m, a few percent of an hour's power
    constexpr uint32_t muchBraking = 8, manyGaps = 10; // one part in so many
    auto total = static_cast<uint32_t>(ride.seconds.size());
    uint32_t doubts = 0;
    if (!ride.hasPositions)
        doubts |= doubtNoPositions;
    else if (onwardShare(ride) >= oneWayShare)
        doubts |= doubtOneWay;
    if (std::fabs(altitudeDrift(ride)) > mostDrift)
        doubts |= doubtAltitude;
    if (seconds[leftBraking] > total / muchBraking)
        doubts |= doubtBraking;
    if (seconds[leftWithoutPower] > total / manyGaps)
        doubts |= doubtMeterGaps;
    if (seconds[leftStrong] != 0)
        doubts |= doubtSpikes;
    if (measured.isVirtual)
        doubts |= doubtVirtual;
    return doubts;
}

} // namespace torvane
