// One user's Torvane: what a front end owns and every command is handed. A second session knows nothing of the first.
#pragma once

#include "core/screens.h"
#include "ride/graph_series.h"

#include <optional>
#include <string>

namespace torvane {

struct Session {
    Screens screens;
    std::optional<GraphSeries> graph; // curves that the last command left; empty where it has nothing to plot
    std::string profilePath;          // answer of the profile file prompts; UTF-8
    std::string profileFault = {};    // the figure of the last profile file that its page would not take; empty: none
};

} // namespace torvane
