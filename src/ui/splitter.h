// The bar between the two panes, which a drag moves; its place is kept beside the parameter file.
#pragma once

#include "ui/win32.h"

namespace torvane {

// 0, or -1.
int registerSplitterClass();
HWND createSplitter(HWND window);

// Height of the upper pane in a room for both panes, pixels.
int upperPaneHeightIn(int room);
// Over the meeting edges of both panes, whose place is y.
void placeSplitter(HWND splitter, int y, int width);

} // namespace torvane
