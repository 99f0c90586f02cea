// The vectors of a graph: each a thin line through the origin with a head and a name.
#pragma once

#include "plot/geometry.h"
#include "plot/picture.h"

namespace torvane {

// Skips vectors that have no direction on the two axes chosen.
void drawVectors(const Graph& graph, const GraphGeometry& geometry, Picture& picture);

} // namespace torvane
