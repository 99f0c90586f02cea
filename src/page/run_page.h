// The page of a simulation.
#pragma once

#include "page/page_texts.h"
#include "report/figures.h"
#include "ride/graph_series.h"

#include <string>

namespace torvane {

// HTML: its figures, all of its curves to choose from, and what was entered. Without curves, where there are none.
std::string runPage(std::string_view title, const Figures& figures, const GraphSeries* curves,
                    const PageFigures& inputs);

} // namespace torvane
