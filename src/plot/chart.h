// A chart of a run for a file or a page: curves over one series, a panel of its own for each unit, one under the other
// on a common axis. Letters are measured, so that none stands on another, on a curve's axis or beyond the edge.
// The graph window has a drawing of its own (draw_graph.h).
#pragma once

#include "plot/curves.h"
#include "plot/picture.h"
#include "ride/graph_series.h"

#include <string>
#include <vector>

namespace torvane {

struct ChartSize {
    int width = 640, height = 480; // pixels
};
constexpr int leastChartSide = 160, mostChartSide = 10000;

// What stands at a value of the axis along.
struct ChartMark {
    double value;
    std::string label;
};

// Coordinates of the picture are eighths of a pixel. Values that cannot be plotted leave a gap. The choice holds places
// of the series. With marks the axis along has these, as far as they lie between its ends, and no round numbers.
Picture drawChart(const GraphSeries& series, const CurveChoice& choice, const ChartSize& size,
                  const std::vector<ChartMark>& marks = {});

} // namespace torvane
