// The graph window: a top-level window of its own without an owner, at most one at a time, that paints the picture of a
// graph and holds its combo boxes. What is drawn where is decided in plot.
#pragma once

#include "ui/win32.h"

namespace torvane {

// Each returns 0, or -1 after telling the user that it failed.
int registerGraphClass();
// Shows the curves that the last command left, if it left any.
int openGraphWindow();

void closeGraphWindow();
HWND graphWindowHandle(); // null: there is none

// Of the message loop, before a message goes to its window: Tab goes through the lists, Esc closes. True: it was that.
bool takeGraphKey(const MSG& message);

// Above the main window again, which comes to the front when one of its panes takes the focus.
void raiseGraphWindow();

} // namespace torvane
