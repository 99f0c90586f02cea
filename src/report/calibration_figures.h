// The figures of a calibration, its table of windows and its graph.
#pragma once

#include "core/row_writer.h"
#include "plan/calibrate.h"
#include "report/figures.h"
#include "ride/graph_series.h"

namespace torvane {

// What the answer is told for.
constexpr int calibrationLevel = 95; // percent, of the interval
constexpr int dragAreaSpeed = 40;    // kph
constexpr int rollingPercent = 20;

double windSpeed(const CalibratedRide& ride);     // m/s
double windDirection(const CalibratedRide& ride); // deg, where it comes from

// The rides that were used are a group.
Figures calibrationFigures(const CalibrationAnswer& answer);
std::vector<FigureInfo> calibrationFigureInfos();

// A row for each window.
void writeCalibrationRows(RowWriter& rows, const CalibrationAnswer& answer);

// Measured against predicted, before and after with the ends of the interval, over the distance of all rides.
GraphSeries calibrationGraph(const CalibrationAnswer& answer);

} // namespace torvane
