// The curves that the last command left for the front end: a window, or a file of the console.
#pragma once

#include "ride/graph_series.h"

#include <optional>

namespace torvane {

// Filled by a command's operation, while no graph window is open; empty where the command has nothing to plot.
extern std::optional<GraphSeries> commandGraph;

} // namespace torvane
