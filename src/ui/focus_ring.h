// Keys that belong to no window alone. F6 and Ctrl+Tab: the keyboard goes round the panes, the graph and an open
// dialog. Esc, where no dialog is open, stops what runs.
#pragma once

#include "ui/win32.h"

namespace torvane {

// Of a message loop, before a message goes to its window; true: it was such a key. A key of the graph counts as well.
bool takeWindowKey(const MSG& message);

// Lets the loops of dialogs ask the same.
void watchDialogKeys();

} // namespace torvane
