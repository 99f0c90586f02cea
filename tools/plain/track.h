// A track made clean as its rules read: a copy for each pass, every window gathered anew, each angle by the library's
// functions. What the program's own passes, which look at each row once, must equal to the last bit.
#pragma once

#include "gps/analysis.h"
#include "gps/sectors.h"
#include "gps/smoothing.h"
#include "gps/track_geometry.h"
#include "model/constants.h"

#include <cmath>
#include <functional>
#include <vector>

namespace torvane::plain {

using Values = std::vector<double>;
// Whether row k counts in the window of row i.
using Counts = std::function<bool(size_t i, size_t k)>;

inline Values valuesOf(const GpsRecords& records, RecordField field)
{
    Values values;
    for (const GpsRecord& record : records)
        values.push_back(record.*field);
    return values;
}

struct Window {
    double sum = 0, smallest, largest;
    int count = 0;

    Window(const Values& values, size_t i, int width, ExtremesStart start, const Counts& counts)
        : smallest(start.smallest), largest(start.largest)
    {
        size_t half = static_cast<size_t>((width + 2) / 2);
        for (size_t k = i < half ? 0 : i - half; k < values.size() && k <= i + half; ++k) {
            if (!counts(i, k))
                continue;
            sum += values[k];
            ++count;
            if (values[k] < smallest)
                smallest = values[k];
            if (values[k] > largest)
                largest = values[k];
        }
    }
    double mean() const
    {
        return (sum - (smallest + largest)) / (count - 2);
    }
};

inline bool all(size_t, size_t)
{
    return true;
}

inline Counts withinSector(const GpsRecords& records)
{
    return [&](size_t i, size_t k) { return records[i].sector == records[k].sector; };
}

inline void smooth(GpsRecords& records, RecordField field, const Values& values, int width, ExtremesStart start,
                   const Counts& counts = all)
{
    for (size_t i = 0; i < records.size(); ++i)
        if (Window window(values, i, width, start, counts); window.count > 2)
            records[i].*field = window.mean();
}

inline void smoothHeading(GpsRecords& records, int width)
{
    Values headings = valuesOf(records, &GpsRecord::heading);
    auto turned = [&](double offset) {
        Values values;
        for (double heading : headings)
            values.push_back(std::fmod(heading + offset, 360.0));
        return values;
    };
    Values offsets[] = {turned(0), turned(180)};
    for (size_t i = 0; i < records.size(); ++i) {
        for (int turn = 0; turn < 2; ++turn) {
            Window window(offsets[turn], i, width, {1000, 0}, withinSector(records));
            double spread = window.largest - window.smallest;
            if (turn == 0 && spread >= 90)
                continue;
            if (spread <= 90 && window.count > 2)
                records[i].heading = std::fmod((360.0 - 180 * turn) + window.mean(), 360.0);
            break;
        }
    }
}

inline void smoothDistance(GpsRecords& records, int width)
{
    Values steps(records.size());
    for (size_t i = 1; i < records.size(); ++i)
        steps[i] = records[i].distance - records[i - 1].distance;
    for (size_t i = 1; i < records.size(); ++i) {
        Window window(steps, i, width, {1000, 0}, all);
        records[i].distance = (window.count > 2 ? window.mean() : steps[i]) + records[i - 1].distance;
    }
}

inline double bearing(const GpsRecord& from, const GpsRecord& to)
{
    auto radians = [](double degrees) { return degrees * pi / 180; };
    double f1 = radians(from.latitude), f2 = radians(to.latitude);
    double dl = radians(to.longitude) - radians(from.longitude);
    double y = std::sin(dl) * std::cos(f2);
    double x = std::sin(f2) * std::cos(f1) - std::sin(f1) * std::cos(f2) * std::cos(dl);
    return std::fmod(std::atan2(y, x) * 180 / pi + 360.0, 360.0);
}

inline void computeHeadings(GpsRecords& records)
{
    for (size_t i = 0; i + 1 < records.size(); ++i)
        records[i].heading = bearing(records[i], records[i + 1]);
    if (records.size() > 1)
        records.back().heading = records[records.size() - 2].heading;
}

inline int positionWindow(const GpsRecords& records)
{
    double sum = 0;
    for (size_t i = 1; i < records.size(); ++i)
        sum += greatCircleDistance(records[i - 1].latitude, records[i - 1].longitude, records[i].latitude,
                                   records[i].longitude);
    double mean = sum / static_cast<double>(records.size() - 1);
    return records.size() < 2 ? 0 : mean < 5 ? 5 : mean < 7 ? 3 : 0;
}

inline Values slopesOf(const GpsRecords& records)
{
    auto between = [&](size_t from, size_t to) {
        double way = records[to].distance - records[from].distance;
        return way == 0 ? 0 : (records[to].altitude - records[from].altitude) * 100 / way;
    };
    Values slopes(records.size());
    size_t last = records.size() - 1;
    for (size_t i = 0; i < last; ++i)
        if (i == 0 || !(records[i].speed < 2))
            slopes[i] = between(i, i + 1);
    if (last > 0)
        slopes[last] = between(last - 1, last);
    return slopes;
}

inline void computeAcceleration(GpsRecords& records)
{
    for (size_t i = 0; i + 1 < records.size(); ++i) {
        double acceleration =
            (records[i + 1].speed - records[i].speed) / (records[i + 1].timestamp - records[i].timestamp);
        records[i].acceleration = std::isfinite(acceleration) ? acceleration : 0;
    }
    records.back().acceleration = 0;
}

// refineTrack of a ride with positions, altitude, distance and speed, smoothed as the classic analysis does.
inline void refineTrack(GpsRecords& records, double unrealInclination, double unrealAccele)
{
    if (int width = positionWindow(records))
        for (RecordField field : {&GpsRecord::latitude, &GpsRecord::longitude})
            smooth(records, field, valuesOf(records, field), width, {360, -360}, withinSector(records));
    plain::computeHeadings(records);
    int width = chooseWindow(records);
    plain::smoothHeading(records, width);
    plain::smoothDistance(records, width);
    smooth(records, &GpsRecord::speed, valuesOf(records, &GpsRecord::speed), width, {1000, 0});
    plain::computeAcceleration(records);
    smooth(records, &GpsRecord::altitude, valuesOf(records, &GpsRecord::altitude), width, altitudeStart);
    Values slopes = plain::slopesOf(records);
    for (size_t i = 1; i + 1 < slopes.size(); ++i)
        if (std::fabs(slopes[i]) > unrealInclination)
            slopes[i] = 0;
    smooth(records, &GpsRecord::inclination, slopes, width, inclinationStart);
    Values kept(records.size());
    for (size_t i = 0; i < records.size(); ++i) {
        double slope = records[i].inclination;
        double gravity = slope == 0 ? 0 : -standardGravity * slope / std::sqrt(slope * slope + 100.0 * 100.0);
        if (records[i].acceleration <= gravity + unrealAccele)
            kept[i] = records[i].acceleration;
    }
    smooth(records, &GpsRecord::acceleration, kept, width, accelerationStart);
}

} // namespace torvane::plain
