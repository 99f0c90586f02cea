#include "gps/track.h"

#include "core/units.h"
#include "gps/analysis.h"
#include "gps/gps_load.h"
#include "gps/sectors.h"
#include "gps/smoothing.h"
#include "gps/speed_noise.h"
#include "gps/track_geometry.h"

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
    for (size_t i = 0; i < last; ++i) {
        records[i].heading =
            bearing(records[i].latitude, records[i].longitude, records[i + 1].latitude, records[i + 1].longitude);
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

// Of the steps that lead to the rows.
std::vector<double> slopesBefore(std::span<const GpsRecord> records)
{
    std::vector<double> slopes(records.size());
    for (size_t i = 1; i < records.size(); ++i)
        if (std::max(records[i - 1].speed, records[i].speed) >= slowestSlope)
            slopes[i] = slopeBetween(records[i - 1], records[i]);
    return slopes;
}

// Of the steps that lead on from the rows; the last has none.
std::vector<double> slopesBehind(std::span<const GpsRecord> records)
{
    std::vector<double> slopes(records.size());
    if (records.size() < 2)
        return slopes;
    size_t last = records.size() - 1;
    slopes[0] = slopeBetween(records[0], records[1]);
    for (size_t i = 1; i < last; ++i)
        if (!(records[i].speed < slowestSlope))
            slopes[i] = slopeBetween(records[i], records[i + 1]);
    slopes[last] = slopeBetween(records[last - 1], records[last]);
    return slopes;
}

ExtremesStart startOf(ExtremesStart classic, uint32_t analysisFlags)
{
    return isOfTheRoad(analysisFlags) ? unbiasedStart : classic;
}

void assignField(std::span<GpsRecord> records, RecordField field, const std::vector<double>& values)
{
    for (size_t i = 0; i < records.size(); ++i)
        records[i].*field = values[i];
}

// A device tells heights in steps: on an even climb most of the slopes of a window are alike and the few that are not
// make up for them. Trimming takes those away, which made a climb of 2.2 percent one of 2.7; so the road's is a mean
// of all that is real.
void computeInclination(std::span<GpsRecord> records, int window, double unrealInclination, bool ofTheRoad)
{
    std::vector<double> slopes = ofTheRoad ? slopesBefore(records) : slopesBehind(records);
    if (window == 0) {
        assignField(records, &GpsRecord::inclination, slopes);
        return;
    }
    for (size_t i = 1; i + 1 < slopes.size(); ++i) // the first and the last are never rejected
        if (std::fabs(slopes[i]) > unrealInclination)
            slopes[i] = ofTheRoad ? std::numeric_limits<double>::quiet_NaN() : 0;
    if (ofTheRoad)
        averageInto(records, &GpsRecord::inclination, slopes, window);
    else
        smoothInto(records, &GpsRecord::inclination, slopes, window, inclinationStart);
}

// The slope's share of gravity along the road, m/s2, negative uphill.
double slopeGravity(double inclination)
{
    if (inclination == 0)
        return 0;
    return -standardGravity * inclination / std::sqrt(inclination * inclination + 100.0 * 100.0);
}

// Those that the slope allows; 0 for the others.
std::vector<double> realAccelerations(std::span<const GpsRecord> records, double unrealAccele)
{
    std::vector<double> kept(records.size());
    for (size_t i = 0; i < records.size(); ++i)
        if (records[i].acceleration <= slopeGravity(records[i].inclination) + unrealAccele)
            kept[i] = records[i].acceleration;
    return kept;
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
    std::vector<double> real = realAccelerations(records, unrealAccele);
    if (clean)
        assignField(records, &GpsRecord::acceleration, real);
    else
        smoothInto(records, &GpsRecord::acceleration, real, window, startOf(accelerationStart, analysisFlags));
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
