// What --graph draws, by --curves, --x, --size and --dark.
#pragma once

#include "cli/request.h"
#include "plot/chart.h"
#include "ride/graph_series.h"

#include <string>

namespace torvane {

// "1280x720". False for anything else, and for sides beyond the limits of a chart.
bool readChartSize(const std::string& text, ChartSize& size);

// What is wrong with the options of a picture before anything has run; empty: nothing.
std::string checkChartOptions(const Request& request);

// The chart of a run as SVG. An empty text on success, else what is wrong: a curve that the run does not have.
std::string chartOf(const Request& request, const GraphSeries& series, std::string& svg);

} // namespace torvane
