// The font commands of the panes.
#pragma once

#include "ui/win32.h"

namespace torvane {

// Runs the system's font dialog on the format of the pane's selection. Scope 0 changes the selection, any other scope
// all the text. The focus returns to the pane, also after a cancel. False when the format could not be applied.
bool chooseScreenFont(HWND pane, int scope);

} // namespace torvane
