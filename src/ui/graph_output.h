// The picture of the graph window elsewhere: on the clipboard, in a file, on paper. Always on white, and without the
// read-out.
#pragma once

#include "plot/graph.h"
#include "ui/win32.h"

namespace torvane {

// In the size in which the window shows it. A failure is told in a box.
void copyGraph(HWND window, const Graph& graph, SIZE size);
void saveGraph(HWND window, const Graph& graph, SIZE size);
void printGraph(HWND window, const Graph& graph, SIZE size);

} // namespace torvane
