#include "gps/ride_cleaning.h"

#include "gps/ride_motion.h"

#include "model/constants.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace torvane {

namespace {

constexpr size_t none = SIZE_MAX;
constexpr double metresPerSemicircle = 6371000.0 * pi / 2147483648.0; // of latitude

uint32_t secondsBetween(const RideSample& from, const RideSample& to)
{
    return to.timestamp - from.timestamp;
}

// Across the date line longitudes differ by the short way round.
int64_t shortWay(int32_t from, int32_t to)
{
    return static_cast<int32_t>(static_cast<uint32_t>(to) - static_cast<uint32_t>(from));
}

// Semicircles from the equator to the nearer of two latitudes, 0 where they lie on both sides.
int64_t nearestToEquator(int64_t a, int64_t b)
{
    return (a < 0) == (b < 0) ? std::min(std::abs(a), std::abs(b)) : 0;
}

// No less than the way between two positions; cheap, and mostly enough.
double longestWay(const RideSample& a, const RideSample& b)
{
    int64_t north = int64_t{b.values[rideLatitude]} - a.values[rideLatitude];
    int64_t east = shortWay(a.values[rideLongitude], b.values[rideLongitude]);
    return static_cast<double>(std::abs(north) + std::abs(east)) * metresPerSemicircle;
}

bool reaches(const RideSample& from, const RideSample& to, double speed)
{
    constexpr double resolution = 1; // m, more than positions are rounded by
    double reach = speed * secondsBetween(from, to) + resolution;
    return longestWay(from, to) <= reach || metresBetween(from, to) <= reach;
}

void clearPositions(std::span<RideSample> samples, size_t first, size_t end, PrepareFindings& findings)
{
    for (size_t i = first; i < end; ++i) {
        if (!samples[i].has(rideLatitude))
            continue;
        samples[i].clear(rideLatitude);
        samples[i].clear(rideLongitude);
        ++findings.positionsOff;
    }
}

// Positions that are out of reach of the last believed one, from `first` to `last`.
struct Strays {
    size_t believed = none;
    size_t first = none;
    size_t last = none;
};

void believe(std::span<RideSample> samples, Strays& strays, size_t i, PrepareFindings& findings)
{
    samples[strays.first].shifted = true;
    ++findings.positionShifts;
    strays = {i, none, none};
}

void judgeFirstStray(std::span<const RideSample> samples, Strays& strays, size_t i, double speed)
{
    if (strays.believed == none || reaches(samples[strays.believed], samples[i], speed))
        strays.believed = i;
    else
        strays.first = strays.last = i;
}

void judgeNextStray(std::span<RideSample> samples, Strays& strays, size_t i, double speed, PrepareFindings& findings)
{
    constexpr uint32_t convincing = 30; // s
    bool joinsTrack = reaches(samples[strays.believed], samples[i], speed);
    if (reaches(samples[strays.last], samples[i], speed)) {
        strays.last = i;
        if (joinsTrack || secondsBetween(samples[strays.first], samples[i]) >= convincing)
            believe(samples, strays, i, findings);
        return;
    }
    clearPositions(samples, strays.first, i, findings);
    strays.first = strays.last = joinsTrack ? none : i;
    if (joinsTrack)
        strays.believed = i;
}

int64_t rounded(double value)
{
    return static_cast<int64_t>(value < 0 ? value - 0.5 : value + 0.5);
}

// `share` of the way from one sample to the other, 0 to 1.
int32_t interpolate(const RideSample& from, const RideSample& to, size_t field, double share)
{
    int32_t a = from.values[field], b = to.values[field];
    int64_t way = field == rideLongitude ? shortWay(a, b) : int64_t{b} - a;
    int64_t step = rounded(static_cast<double>(way) * share);
    int32_t value = static_cast<int32_t>(static_cast<uint32_t>(a + step));
    return std::min(value, rideFields[field].most); // just short of the date line lies a marker
}

bool isPosition(size_t field)
{
    return field == rideLatitude || field == rideLongitude;
}

// One field of the ride, being completed.
struct Completion {
    std::span<RideSample> samples;
    size_t field;
    FieldFindings& findings;
};

void settle(const Completion& work, size_t i, int32_t value)
{
    work.samples[i].values[work.field] = value;
    ++work.findings.settled;
}

void leaveMissing(const Completion& work, size_t i)
{
    work.samples[i].values[work.field] = rideFields[work.field].marker();
    ++work.findings.missing;
}

// The samples from first up to end lack a value that stands before them.
void standOn(const Completion& work, size_t first, size_t end, int32_t value)
{
    Bridge bridge = rideFields[work.field].bridge;
    bool linear = bridge == Bridge::linear;
    for (size_t i = first; i < end; ++i) {
        if (bridge == Bridge::none) {
            leaveMissing(work, i);
            continue;
        }
        settle(work, i, value);
        if (linear)
            work.samples[i].set(work.field, value);
    }
}

void bridge(const Completion& work, size_t from, size_t to)
{
    RideSample& a = work.samples[from];
    RideSample& b = work.samples[to];
    for (size_t i = from + 1; i < to; ++i) {
        double share = static_cast<double>(secondsBetween(a, work.samples[i])) / secondsBetween(a, b);
        work.samples[i].set(work.field, interpolate(a, b, work.field, share));
        ++work.findings.bridged;
    }
}

// Where a position is lost and found elsewhere, the track stands until then.
void closeHole(const Completion& work, size_t from, size_t to)
{
    bool linear = rideFields[work.field].bridge == Bridge::linear;
    bool isShort = secondsBetween(work.samples[from], work.samples[to]) <= shortBridge;
    bool elsewhere = isPosition(work.field) && work.samples[to].shifted;
    if ((linear || isShort) && !elsewhere)
        bridge(work, from, to);
    else
        standOn(work, from + 1, to, work.samples[from].values[work.field]);
}

void countKnown(std::span<const RideSample> samples, PrepareFindings& findings)
{
    for (const RideSample& sample : samples)
        for (size_t field = 0; field < rideFieldCount; ++field)
            findings.fields[field].read += sample.has(field);
    for (FieldFindings& field : findings.fields)
        field.written = field.read != 0;
}

// In front of its first value a field already has that one.
void completeField(const Completion& work)
{
    if (!work.findings.written || work.findings.read == work.samples.size())
        return;
    size_t last = none;
    for (size_t i = 0; i < work.samples.size(); ++i) {
        if (!work.samples[i].has(work.field))
            continue;
        if (last == none)
            standOn(work, 0, i, work.samples[i].values[work.field]);
        else if (last + 1 < i)
            closeHole(work, last, i);
        last = i;
    }
    standOn(work, last + 1, work.samples.size(), work.samples[last].values[work.field]);
}

} // namespace

double metresBetween(const RideSample& a, const RideSample& b)
{
    int64_t north = int64_t{b.values[rideLatitude]} - a.values[rideLatitude];
    int64_t east = shortWay(a.values[rideLongitude], b.values[rideLongitude]);
    int64_t parallel = nearestToEquator(a.values[rideLatitude], b.values[rideLatitude]);
    double shrink = std::cos(static_cast<double>(parallel) * pi / 2147483648.0);
    return std::hypot(static_cast<double>(north), static_cast<double>(east) * shrink) * metresPerSemicircle;
}

void dropJumps(std::span<RideSample> samples, double jumpSpeed, PrepareFindings& findings)
{
    Strays strays;
    for (size_t i = 0; i < samples.size(); ++i) {
        if (!samples[i].has(rideLatitude))
            continue;
        if (strays.first == none)
            judgeFirstStray(samples, strays, i, jumpSpeed);
        else
            judgeNextStray(samples, strays, i, jumpSpeed, findings);
    }
    if (strays.first != none)
        clearPositions(samples, strays.first, samples.size(), findings);
}

void judgeSteps(std::span<RideSample> samples, std::span<const Pause> pauses, uint32_t gapLimit,
                PrepareFindings& findings)
{
    size_t pause = 0;
    for (size_t i = 0; i + 1 < samples.size(); ++i) {
        uint32_t seconds = secondsBetween(samples[i], samples[i + 1]);
        while (pause < pauses.size() && pauses[pause].to <= samples[i].timestamp)
            ++pause;
        bool paused = pause < pauses.size() && pauses[pause].from < samples[i + 1].timestamp;
        samples[i].open = seconds > gapLimit || paused || samples[i + 1].shifted;
        if (seconds > 1 && paused)
            ++findings.stepsPaused;
        else if (seconds > gapLimit)
            ++findings.stepsLong;
    }
}

void completeFields(std::span<RideSample> samples, PrepareFindings& findings)
{
    countKnown(samples, findings);
    for (size_t field = 0; field < rideFieldCount; ++field)
        completeField({samples, field, findings.fields[field]});
}

bool cleanRide(Activity& activity, const CleaningLimits& limits, PrepareFindings& findings)
{
    std::span<RideSample> samples = activity.samples;
    dropJumps(samples, limits.jumpSpeed, findings);
    judgeSteps(samples, activity.pauses, limits.gap, findings);
    dropStillMotion(samples, findings);
    straightenDistance(samples, findings);
    completeFields(samples, findings);
    bool settled = completeMotion(samples, findings);
    bool worked = findings.distanceStill || findings.speedStill || findings.positionsOff + findings.positionShifts > 0;
    return settled && !worked;
}

int32_t valueWithin(const RideSample& from, const RideSample& to, size_t field, double share)
{
    if (from.has(field) && to.has(field))
        return interpolate(from, to, field, share);
    return rideFields[field].bridge == Bridge::none ? rideFields[field].marker() : from.values[field];
}

} // namespace torvane
