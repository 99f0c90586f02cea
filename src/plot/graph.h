// A graph as its window holds it: the series with their ranges, and what the user has chosen to see. And the window's
// controls as data: which there are, what they list, what choosing an entry does. Knows nothing of window calls; the
// front end makes the controls and forwards.
#pragma once

#include "ride/graph_series.h"

#include <string>
#include <vector>

namespace torvane {

// Which of a kind's drawings, axes and controls a graph has; one row for each graphKind.
struct GraphKind {
    int axes;     // 1 X, 2 X and Y, 3 X and two Y
    bool grey;    // axes in grey, the data being vectors
    bool bars;    // one series as bars
    bool lines;   // Y over X, and the second Y where there are three axes
    bool marks;   // a mark for each point
    bool vectors; // under the marks
    bool select;  // two combo boxes choose the series on the axes
    bool search;  // a combo box or a click picks a point
};

constexpr GraphKind graphKinds[] = {
    {1, false, true, false, false, false, false, false}, // 0
    {2, false, false, true, false, false, false, false}, // 1
    {3, false, false, true, false, false, false, false}, // 2
    {3, false, false, true, false, false, true, false},  // 3
    {2, false, false, false, true, false, false, false}, // 4
    {2, true, false, false, true, true, true, false},    // 5
    {2, false, false, false, true, false, false, true},  // 6
    {2, true, false, false, true, true, true, true},     // 7
    {2, true, false, false, true, true, true, true},     // 8, with a second search list
};

enum Axis : int { axisX, axisY, axisSecondY };

struct Graph {
    GraphSeries series;
    std::vector<double> seriesMin; // for each series; 0 always lies in the range
    std::vector<double> seriesMax;
    int axisSeries[3] = {0, 1, 2}; // series on each Axis
    int picked = 0;                // point found by a search, counted from 1; 0 none
};

// Takes the series over and finds the range of each. Series with a common bit in their scale groups share one range.
// Values that cannot be plotted (no number, infinite, beyond 1e300) are left out.
Graph storeGraph(GraphSeries series);

// Row of graphKinds; a kind that there is not is drawn as axes alone.
const GraphKind& kindOf(const Graph& graph);

bool plottable(double value);

// Controls

struct GraphControl {
    int id;                           // 1 and 4 labels, 2, 3, 5, 6 combo boxes
    const char* label;                // of a label, null for a combo box
    int x, y, width, height;          // pixels of an ordinary display; a combo box with its list dropped down
    std::vector<std::string> entries; // of a combo box
    int selected;                     // entry shown, -1 none
    const char* name = nullptr;       // of a combo box: for who does not see what it stands beside
};

constexpr int controlFontHeight = 14; // "Arial"
constexpr int controlTop = 14;        // pixels, of the labels

// Where the row of the controls is free, pixels from the left.
int freeLeftOf(const Graph& graph);

// All controls of the graph, as they stand under its present choices.
std::vector<GraphControl> graphControls(const Graph& graph);

// The user has chosen an entry of a combo box. Afterwards the graph is to be painted anew, and the selected entries of
// all combo boxes are to be shown as graphControls now tells. An entry that the list does not have changes nothing.
void chooseEntry(Graph& graph, int controlId, int entry);

// Lays another of the series that can lie there along the X axis; any other changes nothing.
void layAlong(Graph& graph, int series);

// The user has clicked into a window of that size. True when a mark was near enough and is picked now: then as above.
bool pickPoint(Graph& graph, int width, int height, int x, int y);

} // namespace torvane
