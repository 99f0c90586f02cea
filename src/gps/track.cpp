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
#include <vector>

namespace torvane {

namespace {

constexpr double slowestSlope = 2.0; // m/s; slower, the altitude's own noise makes the slope

void computeHeadings(std::span<GpsRecord> records)
{
    size_t last = records.size() - 1;
    EarthPlace from = earthPlaceOf(records[0].latitude, records[0].longitude);
    for (size_t i = 0; i < last; ++i) {
        EarthPlace to = earthPlaceOf(records[i + 1].latitude, records[i + 1].longitude);
        records[i].heading = bearing(from, to);
        from = to;
    }
    if (last > 0)
        records[last].heading = records[last - 1].heading;
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

// Of each row's step: the road's leads to it, the classic one leads on.
void computeAcceleration(std::span<GpsRecord> records, uint32_t analysisFlags)
{
    size_t owner = isOfTheRoad(analysisFlags) ? 1 : 0;
    records.front().acceleration = records.back().acceleration = 0;
    for (size_t i = 0; i + 1 < records.size(); ++i)
        records[i + owner].acceleration = accelerationBetween(records[i], records[i + 1], analysisFlags);
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

// A device tells heights in steps: on an even climb most of the slopes of a window are alike and the few that are not
// make up for them. Trimming takes those away, which made a climb of 2.2 percent one of 2.7; so the road's is a mean
// of all that is real.
void computeInclination(std::span<GpsRecord> records, int window, double unrealInclination, bool ofTheRoad)
{
    double unreal = ofTheRoad ? std::numeric_limits<double>::quiet_NaN() : 0;
    auto realSlope = [&](size_t i) {
        double slope = ofTheRoad ? slopeBefore(records, i) : slopeBehind(records, i);
        bool mayBeUnreal = i > 0 && i + 1 < records.size(); // the first and the last are never rejected
        return window != 0 && mayBeUnreal && std::fabs(slope) > unrealInclination ? unreal : slope;
    };
    if (window != 0 && !ofTheRoad)
        return overTrimmedMeans(records.size(), window, inclinationStart, realSlope,
                                [&](size_t i, double, bool known, double mean) {
                                    if (known)
                                        records[i].inclination = mean;
                                });
    std::vector<double> slopes(records.size());
    for (size_t i = 0; i < records.size(); ++i)
        slopes[i] = realSlope(i);
    if (window != 0)
        return averageInto(records, &GpsRecord::inclination, slopes, window);
    for (size_t i = 0; i < records.size(); ++i)
        records[i].inclination = slopes[i];
}

// The slope's share of gravity along the road, m/s2, negative uphill.
double slopeGravity(double inclination)
{
    if (inclination == 0)
        return 0;
    return -standardGravity * inclination / std::sqrt(inclination * inclination + 100.0 * 100.0);
}

// One that the slope allows, or 0.
double realAcceleration(std::span<const GpsRecord> records, size_t i, double unrealAccele)
{
    return records[i].acceleration <= slopeGravity(records[i].inclination) + unrealAccele ? records[i].acceleration : 0;
}

void rejectAcceleration(std::span<GpsRecord> records, int window, double unrealAccele, ExtremesStart start)
{
    auto real = [&](size_t i) { return realAcceleration(records, i, unrealAccele); };
    overTrimmedMeans(records.size(), window, start, real, [&](size_t i, double, bool known, double mean) {
        if (known)
            records[i].acceleration = mean;
    });
}

void refinePositions(std::span<GpsRecord> records, uint32_t analysisFlags)
{
    if ((analysisFlags & analysisSmoothing) != 0 && (analysisFlags & analysisPosition) != 0) {
        if (int window = choosePositionWindow(records))
            smoothPositions(records, window);
    }
    if (analysisFlags & analysisPosition)
        computeHeadings(records);
    if (analysisFlags & analysisMotionFromPosition)
        distanceFromPositions(records);
}

void refineSlope(std::span<GpsRecord> records, int window, double unrealInclination, uint32_t analysisFlags)
{
    if (analysisFlags & analysisFlat) {
        for (GpsRecord& record : records)
            record.inclination = 0;
        return;
    }
    if (window != 0)
        smoothField(records, &GpsRecord::altitude, window, startOf(altitudeStart, analysisFlags));
    computeInclination(records, window, unrealInclination, isOfTheRoad(analysisFlags));
}

} // namespace

void refineTrack(std::span<GpsRecord> records, double unrealInclination, double unrealAccele, uint32_t analysisFlags)
{
    if (records.empty())
        return;
    refinePositions(records, analysisFlags);
    int window = (analysisFlags & analysisSmoothing) != 0 ? chooseWindow(records) : 0;
    if (window != 0) {
        smoothHeading(records, window);
        smoothDistance(records, window);
    }
    if (analysisFlags & (analysisMotionFromPosition | analysisSpeedFromDistance))
        speedFromDistance(records);
    bool clean = (analysisFlags & analysisMeasuredSpeed) != 0 && noiseOfSpeed(records) < cleanSpeed;
    if (window != 0 && !clean)
        smoothSpeed(records, window);
    computeAcceleration(records, analysisFlags);
    refineSlope(records, window, unrealInclination, analysisFlags);
    if (window == 0)
        return;
    if (!clean)
        return rejectAcceleration(records, window, unrealAccele, startOf(accelerationStart, analysisFlags));
    for (size_t i = 0; i < records.size(); ++i)
        records[i].acceleration = realAcceleration(records, i, unrealAccele);
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
        refineTrack(records, settings.analyseUnrealInclination, settings.analyseUnrealAccele, analysisFlags);
    else
        refineTrack(records, settings.expressUnrealInclination, settings.expressUnrealAccele, analysisFlags);
    return fitOk;
}

} // namespace torvane
