// Trimmed moving means: each value of a track gives way to the mean of its neighbourhood without the smallest and the
// largest value there. The window follows from how densely the track was sampled.
// A window w covers the samples within (w + 2) / 2 on either side, so 7 means 9 samples, 5 seven, 3 five, 1 three.
// Results do not feed back within a pass. Where a window has no more than two samples the value stays.
// Passes walk along the track one behind the other, as close as their windows let them: a row goes through all of them
// while it is near, and is what it would be had each gone to the end before the next one.
#pragma once

#include "core/progress.h"
#include "gps/gps_record.h"

#include <functional>
#include <limits>
#include <span>
#include <vector>

namespace torvane {

using RecordField = double GpsRecord::*;

// A pass: goes on as far as it can when so many rows are ready in front of it, and returns how many it is through with.
using TrackPass = std::function<size_t(size_t ready)>;

// All rows through these passes, in this order. Ends where the progress is to stop.
void runPasses(size_t rows, const std::vector<TrackPass>& passes, const Progress* progress = nullptr);

// Where the search of a window's extremes starts; matters only for values beyond.
struct ExtremesStart {
    double smallest;
    double largest;
};

// Starts of the classic passes. Some lie among real values: where all of a window slow down, or ride above 1000 m, one
// end is trimmed of a number that stands nowhere.
constexpr ExtremesStart altitudeStart = {1000.0, -500.0};
constexpr ExtremesStart inclinationStart = {1000.0, -1000.0};
constexpr ExtremesStart accelerationStart = {1000.0, 0.0};
// Beyond all values.
constexpr ExtremesStart unbiasedStart = {std::numeric_limits<double>::infinity(),
                                         -std::numeric_limits<double>::infinity()};

// 7, 5, 3 or 1, by the mean of all steps of distance that are at least 1 m; 1 when there is none.
int chooseWindow(std::span<const GpsRecord> records);

// 5, 3, or 0 for none, by the mean of all steps between positions.
int choosePositionWindow(std::span<const GpsRecord> records);

// Smooths a field over the rows of all sectors.
TrackPass smoothField(std::span<GpsRecord> records, RecordField field, int window, ExtremesStart start);

// A plain mean of what is a number within the window; 0 where nothing is. Each row's value is asked for once, before
// the field of that row is written.
void averageInto(std::span<GpsRecord> records, RecordField field, const std::function<double(size_t row)>& valueOf,
                 int window);

void averageField(std::span<GpsRecord> records, RecordField field, int window);

// Smooths latitude or longitude, each within its sector.
TrackPass smoothPosition(std::span<GpsRecord> records, RecordField field, int window);

// Smooths headings within their sector, across north as well. A window that turns by more than 90 degrees is a real
// corner and stays.
TrackPass smoothHeading(std::span<GpsRecord> records, int window);

// Smooths the steps of distance and adds them up again from the first row on. Where the window is too short it is the
// step that stays, so that the last row keeps its place behind the one before it.
TrackPass smoothDistance(std::span<GpsRecord> records, int window);

// The passes over the other fields.
TrackPass smoothSpeed(std::span<GpsRecord> records, int window);
TrackPass smoothCadence(std::span<GpsRecord> records, int window);
TrackPass smoothPower(std::span<GpsRecord> records, int window);

} // namespace torvane
