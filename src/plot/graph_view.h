// A graph as its window shows it: the curves, a map of the track beside them where the graph has places, and the
// read-out of one point. Whoever paints it need know nothing of where things stand.
#pragma once

#include "plot/graph.h"
#include "plot/picture.h"

#include <string>

namespace torvane {

// The track takes its colours from the first list's series.
bool hasMap(const Graph& graph);
// Of the width in pixels what the curves have; a map has the rest, to the right of them.
int widthOfCurves(const Graph& graph, int width);

// Curves and map; with a map its coordinates are parts of a pixel.
Picture drawGraphView(const Graph& graph, int width, int height);

// The point that a place is about, from 0; -1: none. Over curves the one nearest across, and of those on one column the
// nearest up or down; over marks and on the map the nearest altogether.
int nearestPoint(const Graph& graph, int width, int height, int x, int y);

enum class PointStep { back, forth, farBack, farForth, first, last };

// Where a key leads to from a point (-1: from none). A step goes on to what can be told apart on the screen.
int steppedPoint(const Graph& graph, int width, int height, int from, PointStep step);

// "time(min) 12.5   altitude(m) 340   velocity(kph) 31.2"; empty for -1 and for bars.
std::string readOut(const Graph& graph, int point);

// The marks of a point over the curves and the map, in pixels.
Picture drawReadOut(const Graph& graph, int width, int height, int point);

} // namespace torvane
