#include "gps/track.h"

#include "core/units.h"
#include "gps/analysis.h"
#include "gps/gps_load.h"
#include "gps/sectors.h"
#include "gps/smoothing.h"
#include "gps/speed_noise.h"
#include "gps/track_geometry.h"
#include "gps/trimmed_means.h"

#include "model/constants.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <utility>
#include <vector>

namespace torvane {

namespace {

constexpr double slowestSlope = 2.0; // m/s; slower, the altitude's own noise makes the slope

// The headings of some steps; there is one row more.
void setHeadings(std::span<GpsRecord> rows)
{
    EarthPlace places[rowsOfBlock + 1];
    double headings[rowsOfBlock];
    size_t steps = rows.size() - 1;
    for (size_t i = 0; i <= steps; ++i) // in its place: a copy would wait until its parts are written
        ::new (&places[i]) EarthPlace(earthPlaceOf(rows[i].latitude, rows[i].longitude));
    bearingsAlong(std::span(places, steps + 1), std::span(headings, steps));
    for (size_t i = 0; i < steps; ++i)
        rows[i].heading = headings[i];
}

// The heading of each row's step; the last row has that of the step before.
TrackPass computeHeadings(std::span<GpsRecord> records)
{
    return [=, done = size_t{0}](size_t ready) mutable {
        while (done + 1 < ready) {
            size_t steps = std::min(rowsOfBlock, ready - 1 - done);
            setHeadings(records.subspan(done, steps + 1));
            done += steps;
        }
        if (ready < records.size())
            return done;
        if (done > 0)
            records[done].heading = records[done - 1].heading;
        return ready;
    };
}

bool isOfTheRoad(uint32_t analysisFlags)
{
    return (analysisFlags & analysisOfTheRoad) != 0;
}

double accelerationOverDistance(const GpsRecord& from, const GpsRecord& to)
{
    return ((from.speed + to.speed) * 0.5 * (to.speed - from.speed)) / (to.distance - from.distance);
}

double accelerationOverTime(const GpsRecord& from, const GpsRecord& to)
{
    return (to.speed - from.speed) / (to.timestamp - from.timestamp); // unsigned seconds
}

double accelerationBetween(const GpsRecord& from, const GpsRecord& to, uint32_t analysisFlags)
{
    bool overDistance = (analysisFlags & analysisNoTimestamps) != 0;
    double acceleration = overDistance ? accelerationOverDistance(from, to) : accelerationOverTime(from, to);
    return std::isfinite(acceleration) ? acceleration : 0;
}

// Of a row's step: the road's leads to it, the classic one leads on.
double accelerationAt(std::span<const GpsRecord> records, size_t i, uint32_t analysisFlags)
{
    size_t to = isOfTheRoad(analysisFlags) ? i : i + 1;
    return to > 0 && to < records.size() ? accelerationBetween(records[to - 1], records[to], analysisFlags) : 0;
}

// Percent from one row to the next; 0 where no way lies between them.
double slopeBetween(const GpsRecord& from, const GpsRecord& to)
{
    if (to.distance == from.distance)
        return 0;
    return (to.altitude - from.altitude) * 100 / (to.distance - from.distance);
}

// Of the step that leads to a row.
double slopeBefore(std::span<const GpsRecord> records, size_t i)
{
    if (i == 0 || !(std::max(records[i - 1].speed, records[i].speed) >= slowestSlope))
        return 0;
    return slopeBetween(records[i - 1], records[i]);
}

// Of the step that leads on from a row; of the first and the last whatever their speed, the last has that before it.
double slopeBehind(std::span<const GpsRecord> records, size_t i)
{
    size_t last = records.size() - 1;
    if (last == 0)
        return 0;
    if (i == last)
        return slopeBetween(records[last - 1], records[last]);
    return i > 0 && records[i].speed < slowestSlope ? 0 : slopeBetween(records[i], records[i + 1]);
}

ExtremesStart startOf(ExtremesStart classic, uint32_t analysisFlags)
{
    return isOfTheRoad(analysisFlags) ? unbiasedStart : classic;
}

// The slope of a row's step, or what stands for one that cannot be real. The first and the last are never rejected.
double realSlope(std::span<const GpsRecord> records, size_t i, double unrealInclination, bool ofTheRoad)
{
    double slope = ofTheRoad ? slopeBefore(records, i) : slopeBehind(records, i);
    if (i == 0 || i + 1 >= records.size() || !(std::fabs(slope) > unrealInclination))
        return slope;
    return ofTheRoad ? std::numeric_limits<double>::quiet_NaN() : 0;
}

TrackPass smoothInclination(std::span<GpsRecord> records, int window, double unrealInclination)
{
    auto slope = [=](size_t i) { return realSlope(records, i, unrealInclination, false); };
    auto take = [=](size_t i, double, bool known, double mean) {
        if (known)
            records[i].inclination = mean;
    };
    return TrimmedMeans(records.size(), window, inclinationStart, slope, take, 1);
}

// A device tells heights in steps: on an even climb most of the slopes of a window are alike and the few that are not
// make up for them. Trimming takes those away, which made a climb of 2.2 percent one of 2.7; so the road's is a mean
// of all that is real.
void averageInclination(std::span<GpsRecord> records, int window, double unrealInclination)
{
    auto slope = [=](size_t i) { return realSlope(records, i, unrealInclination, true); };
    averageInto(records, &GpsRecord::inclination, slope, window);
}

// As the steps are.
void computeInclination(std::span<GpsRecord> records, bool ofTheRoad)
{
    for (size_t i = 0; i < records.size(); ++i)
        records[i].inclination = ofTheRoad ? slopeBefore(records, i) : slopeBehind(records, i);
}

// The slope's share of gravity along the road, m/s2, negative uphill.
double slopeGravity(double inclination)
{
    if (inclination == 0)
        return 0;
    return -standardGravity * inclination / std::sqrt(inclination * inclination + 100.0 * 100.0);
}

// Below what slopeGravity tells of any inclination. No part of a slope is more than its percents, and hardly less.
double leastSlopeGravity(double inclination)
{
    constexpr double roundings = 1.000001, smallest = 1e-300;
    return -(standardGravity * 0.01 * roundings * std::fabs(inclination) + smallest);
}

// One that the slope allows, or 0. Most are so small that a rough look at the slope tells.
double realAcceleration(std::span<const GpsRecord> records, size_t i, double unrealAccele)
{
    const GpsRecord& record = records[i];
    bool real = record.acceleration <= leastSlopeGravity(record.inclination) + unrealAccele ||
                record.acceleration <= slopeGravity(record.inclination) + unrealAccele;
    return real ? record.acceleration : 0;
}

// The means of what the limits allow. A row whose window is too short keeps its acceleration as it is.
TrackPass smoothAcceleration(std::span<GpsRecord> records, int window, double unrealAccele, uint32_t analysisFlags)
{
    auto real = [=](size_t i) {
        records[i].acceleration = accelerationAt(records, i, analysisFlags);
        return realAcceleration(records, i, unrealAccele);
    };
    auto take = [=](size_t i, double, bool known, double mean) {
        if (known)
            records[i].acceleration = mean;
    };
    return TrimmedMeans(records.size(), window, startOf(accelerationStart, analysisFlags), real, take, 1);
}

// A track on its way, with the passes that wait for being run.
struct Refinement {
    std::span<GpsRecord> records;
    double unrealInclination, unrealAccele;
    uint32_t flags; // of the analysis
    const Progress* progress;
    std::vector<TrackPass> passes = {};
    int window = 0; // none

    bool has(uint32_t flag) const
    {
        return (flags & flag) != 0;
    }
    bool hasHeadings() const
    {
        return has(analysisPosition) && !has(analysisNoHeadings);
    }
    void run()
    {
        runPasses(records.size(), std::exchange(passes, {}), progress);
    }
};

void refinePositions(Refinement& track)
{
    if (track.has(analysisSmoothing) && track.has(analysisPosition))
        if (int window = choosePositionWindow(track.records))
            for (RecordField field : {&GpsRecord::latitude, &GpsRecord::longitude})
                track.passes.push_back(smoothPosition(track.records, field, window));
    if (track.hasHeadings())
        track.passes.push_back(computeHeadings(track.records));
    if (track.has(analysisMotionFromPosition)) {
        track.run();
        distanceFromPositions(track.records);
    }
}

// Returns whether the speeds are too clean to be smoothed.
bool refineMotion(Refinement& track)
{
    if (track.has(analysisSmoothing))
        track.window = chooseWindow(track.records);
    if (track.window != 0 && track.hasHeadings())
        track.passes.push_back(smoothHeading(track.records, track.window));
    if (track.window != 0)
        track.passes.push_back(smoothDistance(track.records, track.window));
    if (track.has(analysisMotionFromPosition | analysisSpeedFromDistance)) {
        track.run();
        speedFromDistance(track.records);
    }
    bool clean = track.has(analysisMeasuredSpeed) && noiseOfSpeed(track.records) < cleanSpeed;
    if (track.window != 0 && !clean)
        track.passes.push_back(smoothSpeed(track.records, track.window));
    return clean;
}

void refineSlope(Refinement& track)
{
    if (track.has(analysisFlat)) {
        for (GpsRecord& record : track.records)
            record.inclination = 0;
        return;
    }
    if (track.window != 0)
        track.passes.push_back(
            smoothField(track.records, &GpsRecord::altitude, track.window, startOf(altitudeStart, track.flags)));
    if (track.window != 0 && !isOfTheRoad(track.flags)) {
        track.passes.push_back(smoothInclination(track.records, track.window, track.unrealInclination));
        return;
    }
    track.run();
    if (track.window != 0)
        averageInclination(track.records, track.window, track.unrealInclination);
    else
        computeInclination(track.records, isOfTheRoad(track.flags));
}

void refineAcceleration(Refinement& track, bool cleanSpeeds)
{
    if (track.window != 0 && !cleanSpeeds) {
        track.passes.push_back(smoothAcceleration(track.records, track.window, track.unrealAccele, track.flags));
        return track.run();
    }
    track.run();
    for (size_t i = 0; i < track.records.size(); ++i) {
        track.records[i].acceleration = accelerationAt(track.records, i, track.flags);
        if (track.window != 0)
            track.records[i].acceleration = realAcceleration(track.records, i, track.unrealAccele);
    }
}

} // namespace

void refineTrack(std::span<GpsRecord> records, double unrealInclination, double unrealAccele, uint32_t analysisFlags,
                 const Progress* progress)
{
    if (records.empty())
        return;
    Refinement track = {records, unrealInclination, unrealAccele, analysisFlags, progress};
    refinePositions(track);
    bool cleanSpeeds = refineMotion(track);
    refineSlope(track);
    refineAcceleration(track, cleanSpeeds);
}

StatusCode prepareTrack(const FitImage& image, GpsRecords& records, const ParameterBlock& settings,
                        uint32_t analysisFlags, TrackLimits limits)
{
    if (StatusCode code = fillRecords(image, records))
        return code;
    if (analysisFlags & analysisMissing)
        forgetMarkers(records);
    if (!formSectors(records, settings.thresholdSpeed / kphPerMps, analysisFlags))
        return fitNoSector;
    if (limits == TrackLimits::analyse)
        refineTrack(records, settings.analyseUnrealInclination, settings.analyseUnrealAccele, analysisFlags,
                    image.progress);
    else
        refineTrack(records, settings.expressUnrealInclination, settings.expressUnrealAccele, analysisFlags,
                    image.progress);
    return fitOk;
}

} // namespace torvane
