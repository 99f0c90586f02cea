#include "gps/ride_motion.h"

#include "gps/ride_cleaning.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

uint32_t secondsBetween(const RideSample& from, const RideSample& to)
{
    return to.timestamp - from.timestamp;
}

// How far the ride goes, by each of its fields, in metres.
struct Ways {
    double distance = 0, speed = 0;
    double position = 0; // farthest from where each stretch between open steps begins
};

void addStep(const RideSample& from, const RideSample& to, Ways& ways)
{
    if (from.has(rideDistance) && to.has(rideDistance))
        ways.distance += std::max(0, to.values[rideDistance] - from.values[rideDistance]) / 100.0;
    if (from.has(rideSpeed) && to.has(rideSpeed))
        ways.speed += to.values[rideSpeed] / 1000.0 * secondsBetween(from, to);
}

// Of one stretch without an open step.
Ways waysWithin(std::span<const RideSample> samples)
{
    Ways ways;
    const RideSample* start = nullptr;
    for (size_t i = 0; i < samples.size(); ++i) {
        if (i != 0)
            addStep(samples[i - 1], samples[i], ways);
        if (!samples[i].has(rideLatitude))
            continue;
        if (!start)
            start = &samples[i];
        ways.position = std::max(ways.position, metresBetween(*start, samples[i]));
    }
    return ways;
}

Ways waysOf(std::span<const RideSample> samples)
{
    Ways ways;
    for (size_t first = 0, end = 1; first < samples.size(); first = end++) {
        while (end < samples.size() && !samples[end - 1].open)
            ++end;
        Ways stretch = waysWithin(samples.subspan(first, end - first));
        ways.distance += stretch.distance;
        ways.speed += stretch.speed;
        ways.position += stretch.position;
    }
    return ways;
}

// What is wrong by more than any device is.
bool standsAgainst(double way, double other)
{
    constexpr double sure = 100; // m
    constexpr double least = 0.05;
    return other > sure && way < least * other;
}

bool hasAny(std::span<const RideSample> samples, RideField field)
{
    return std::ranges::any_of(samples, [&](const RideSample& sample) { return sample.has(field); });
}

void drop(std::span<RideSample> samples, RideField field, bool& told)
{
    if (!hasAny(samples, field))
        return;
    for (RideSample& sample : samples)
        sample.clear(field);
    told = true;
}

constexpr int32_t littleWay = 100 * 100; // 1/100 m

// Whether one of the next few known distances lies from `least` on and below `end`.
bool comesSoon(std::span<const RideSample> samples, size_t i, int64_t least, int64_t end)
{
    constexpr int few = 5;
    int seen = 0;
    for (++i; i < samples.size() && seen < few; ++i) {
        if (!samples[i].has(rideDistance))
            continue;
        int32_t distance = samples[i].values[rideDistance];
        if (distance >= least && distance < end)
            return true;
        ++seen;
    }
    return false;
}

// Whether a sample alone, or with a few others, is told too near or too far: soon the distances are again what they
// were before it.
bool strays(std::span<const RideSample> samples, size_t i, int32_t before)
{
    int32_t distance = samples[i].values[rideDistance];
    if (distance < before)
        return comesSoon(samples, i, before, INT64_MAX);
    return comesSoon(samples, i, before, int64_t{distance} - littleWay);
}

// What is added to the distances of a device from where they fell on, 1/100 m.
int64_t shiftOf(int32_t before, int32_t fallen)
{
    if (fallen < before / 2)
        return before; // from 0 on
    return before - fallen > littleWay ? before - fallen : 0;
}

// A distance that stands from one sample to the one in front of another, where it leaps: samples [first, leap].
struct Hold {
    size_t first, leap;
};

// Adds up over the steps of a hold: mm, as twice the mean of the speeds at their ends.
int64_t doubledWay(std::span<const RideSample> samples, size_t first, size_t last)
{
    int64_t way = 0;
    for (size_t i = first; i < last; ++i)
        way += (int64_t{samples[i].values[rideSpeed]} + samples[i + 1].values[rideSpeed]) *
               secondsBetween(samples[i], samples[i + 1]);
    return way;
}

// mm that were ridden at least while the distance stood.
int64_t surelyRidden(std::span<const RideSample> samples, const Hold& hold)
{
    int64_t way = 0;
    for (size_t i = hold.first; i + 1 < hold.leap; ++i)
        way += int64_t{std::min(samples[i].values[rideSpeed], samples[i + 1].values[rideSpeed])} *
               secondsBetween(samples[i], samples[i + 1]);
    return way;
}

bool speedsKnown(std::span<const RideSample> samples, const Hold& hold)
{
    return std::ranges::all_of(samples.subspan(hold.first, hold.leap - hold.first + 1),
                               [](const RideSample& sample) { return sample.has(rideSpeed); });
}

int64_t leapOf(std::span<const RideSample> samples, const Hold& hold)
{
    return int64_t{samples[hold.leap].values[rideDistance]} - samples[hold.first].values[rideDistance];
}

// Gives the samples within a hold their share of its leap: `part` tells how much of `whole` lies in front of each.
template <class Part>
void spread(std::span<RideSample> samples, const Hold& hold, double whole, Part&& part, PrepareFindings& findings)
{
    double leap = static_cast<double>(leapOf(samples, hold));
    int32_t start = samples[hold.first].values[rideDistance];
    for (size_t i = hold.first + 1; i < hold.leap; ++i) {
        samples[i].values[rideDistance] = start + static_cast<int32_t>(std::lround(leap * (part(i) / whole)));
        ++findings.distancesHeld;
    }
}

// A leap that is far shorter than the way by speed speaks of something else.
bool spreadBySpeed(std::span<RideSample> samples, const Hold& hold, PrepareFindings& findings)
{
    constexpr int64_t leastRidden = 1000, nearlyRidden = leastRidden / 2; // mm
    int64_t ridden = surelyRidden(samples, hold);
    int64_t whole = doubledWay(samples, hold.first, hold.leap);
    int64_t leap = leapOf(samples, hold) * 10; // mm
    if (ridden < leastRidden || 4 * leap < whole)
        return ridden < nearlyRidden;
    auto part = [&](size_t i) { return static_cast<double>(doubledWay(samples, hold.first, i)); };
    spread(samples, hold, static_cast<double>(whole), part, findings);
    return false;
}

// Without speeds: who stands for longer may have stood indeed.
bool spreadByTime(std::span<RideSample> samples, const Hold& hold, PrepareFindings& findings)
{
    constexpr int64_t leastLeap = 100; // 1/100 m
    double whole = secondsBetween(samples[hold.first], samples[hold.leap]);
    if (whole <= shortBridge && leapOf(samples, hold) >= leastLeap)
        spread(
            samples, hold, whole, [&](size_t i) { return secondsBetween(samples[hold.first], samples[i]); }, findings);
    return false;
}

// False where it, done again, could come to more.
bool spreadHold(std::span<RideSample> samples, const Hold& hold, bool bySpeed, PrepareFindings& findings)
{
    if (!bySpeed)
        return spreadByTime(samples, hold, findings);
    return speedsKnown(samples, hold) && spreadBySpeed(samples, hold, findings);
}

bool holdsOn(std::span<const RideSample> samples, size_t i)
{
    return i + 1 < samples.size() && !samples[i].open &&
           samples[i].values[rideDistance] == samples[i + 1].values[rideDistance];
}

bool spreadHolds(std::span<RideSample> samples, bool bySpeed, PrepareFindings& findings)
{
    bool settled = true;
    for (size_t first = 0; first + 1 < samples.size(); ++first) {
        if (!holdsOn(samples, first))
            continue;
        size_t last = first;
        while (holdsOn(samples, last))
            ++last;
        if (last + 1 < samples.size() && !samples[last].open)
            settled = spreadHold(samples, {first, last + 1}, bySpeed, findings) && settled;
        first = last;
    }
    return settled;
}

// Distance from positions, or from speed: 1/100 m of one step.

double wayByPosition(const RideSample& from, const RideSample& to)
{
    return metresBetween(from, to) * 100;
}

double wayBySpeed(const RideSample& from, const RideSample& to)
{
    double mean = (from.values[rideSpeed] + to.values[rideSpeed]) / 2.0; // mm/s
    return mean * secondsBetween(from, to) / 10;
}

// The way across an open step does not count.
void deriveDistance(std::span<RideSample> samples, double (*way)(const RideSample&, const RideSample&))
{
    double distance = 0; // 1/100 m
    for (size_t i = 0; i < samples.size(); ++i) {
        if (i != 0 && !samples[i - 1].open)
            distance += way(samples[i - 1], samples[i]);
        double most = rideFields[rideDistance].most;
        samples[i].set(rideDistance, static_cast<int32_t>(std::lround(std::min(distance, most))));
    }
}

// mm/s over the steps that touch a sample, open ones left out; 0 between two open ones.
int32_t speedByDistance(std::span<const RideSample> samples, size_t i)
{
    size_t from = i != 0 && !samples[i - 1].open ? i - 1 : i;
    size_t to = i + 1 < samples.size() && !samples[i].open ? i + 1 : i;
    if (from == to)
        return 0;
    double way = int64_t{samples[to].values[rideDistance]} - samples[from].values[rideDistance];
    double speed = way * 10 / secondsBetween(samples[from], samples[to]);
    return static_cast<int32_t>(std::lround(std::clamp<double>(speed, 0, rideFields[rideSpeed].most)));
}

void deriveSpeed(std::span<RideSample> samples)
{
    for (size_t i = 0; i < samples.size(); ++i)
        if (!samples[i].has(rideSpeed))
            samples[i].set(rideSpeed, speedByDistance(samples, i));
}

void markDerived(FieldFindings& field)
{
    field.derived = true;
    field.written = true;
}

} // namespace

void dropStillMotion(std::span<RideSample> samples, PrepareFindings& findings)
{
    Ways ways = waysOf(samples);
    if (standsAgainst(std::max(ways.distance, ways.speed), ways.position)) {
        drop(samples, rideDistance, findings.distanceStill);
        drop(samples, rideSpeed, findings.speedStill);
    } else if (standsAgainst(ways.distance, ways.speed)) {
        drop(samples, rideDistance, findings.distanceStill);
    } else if (standsAgainst(ways.speed, ways.distance)) {
        drop(samples, rideSpeed, findings.speedStill);
    }
}

void straightenDistance(std::span<RideSample> samples, PrepareFindings& findings)
{
    int64_t shift = 0;
    int32_t before = 0, farthest = 0; // as the device said last, and as told
    for (size_t i = 0; i < samples.size(); ++i) {
        if (!samples[i].has(rideDistance))
            continue;
        int32_t distance = samples[i].values[rideDistance];
        if (strays(samples, i, before)) {
            samples[i].clear(rideDistance);
            ++findings.distanceFalls;
            continue;
        }
        if (distance < before) {
            ++findings.distanceFalls;
            shift += shiftOf(before, distance);
        }
        before = distance;
        int64_t told = std::clamp<int64_t>(distance + shift, farthest, rideFields[rideDistance].most);
        farthest = static_cast<int32_t>(told);
        samples[i].set(rideDistance, farthest);
    }
}

bool completeMotion(std::span<RideSample> samples, PrepareFindings& findings)
{
    auto& fields = findings.fields;
    bool hasSpeed = fields[rideSpeed].written;
    bool settled = true;
    if (fields[rideDistance].written)
        settled = spreadHolds(samples, hasSpeed, findings);
    if (!fields[rideDistance].written && (fields[rideLatitude].written || hasSpeed)) {
        findings.distanceBySpeed = hasSpeed && (findings.distanceStill || !fields[rideLatitude].written);
        deriveDistance(samples, findings.distanceBySpeed ? wayBySpeed : wayByPosition);
        markDerived(fields[rideDistance]);
    }
    if (!fields[rideDistance].written)
        return true;
    if (!hasSpeed)
        markDerived(fields[rideSpeed]);
    deriveSpeed(samples);
    return settled;
}

} // namespace torvane
