// The rows of an analysed ride that were ridden, as the figures of an answer want them: how long and how far each step
// was, at what height, with what power and cadence, predicted and measured.
#pragma once

#include "gps/analysis.h"

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace torvane {

// Where a power or a cadence comes from.
enum FigureSource : uint8_t { predictedFigure, measuredFigure, figureSourceCount };

constexpr double noFigure = std::numeric_limits<double>::quiet_NaN();

// A record that was kept, with the step that led to it. A step without time begins a new stretch.
struct RiddenRow {
    uint32_t timestamp = 0; // FIT seconds, end of the step
    uint32_t seconds = 0;
    double metres = 0;
    double distance = 0; // m since the start; slow steps count, pauses do not
    double height = 0;   // m above the start; what lies across a stop counts as far as a road could lead there
    double speed = 0;    // m/s
    std::array<double, figureSourceCount> power = {noFigure, noFigure};   // W; no number where there is none
    std::array<double, figureSourceCount> cadence = {noFigure, noFigure}; // rpm
};

using RiddenRows = std::span<const RiddenRow>;

// What was measured beside the prediction, rising by time.
struct MeasuredRow {
    uint32_t timestamp; // FIT seconds
    double power = noFigure;
    double cadence = noFigure;
};

std::vector<RiddenRow> riddenRowsOf(const Analysis& analysis, std::span<const MeasuredRow> measured);

uint32_t secondsOf(RiddenRows rows);
double metresOf(RiddenRows rows);

} // namespace torvane
