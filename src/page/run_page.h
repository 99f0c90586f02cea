// The page of a simulation.
#pragma once

#include "page/page_texts.h"
#include "report/figures.h"
#include "ride/graph_series.h"

#include <string>
#include <vector>

namespace torvane {

// HTML: its figures, all of its curves to choose from, and what was entered: name, value, meaning. Without curves,
// where there are none.
std::string runPage(const Model& model, std::string_view title, const Figures& figures, const GraphSeries* curves,
                    const std::vector<std::vector<std::string>>& inputs);

} // namespace torvane
