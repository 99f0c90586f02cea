// Draws a graph: from its series, its present choices and a size to a picture.
#pragma once

#include "plot/graph.h"
#include "plot/picture.h"

namespace torvane {

// Every width and height of a client area gives a picture, the empty one included.
Picture drawGraph(const Graph& graph, int width, int height);

} // namespace torvane
