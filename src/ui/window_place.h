// Where windows stand: the main window's place is kept from one start to the next, and used where it can be reached.
#pragma once

#include "core/entry_file.h"
#include "core/parameter_block.h"
#include "ui/win32.h"

namespace torvane {

// Whether the mouse can take the title bar of a window at such a place, on one of the present monitors.
bool isReachable(const RECT& window);

// The place of a window, in pixels of the screen; of a maximised or iconic one that which it returns to.
RECT returnPlace(HWND window);

// Before the main window is made: no stored place, or one out of reach, becomes the middle of the screen.
void settleMainPlace(ParameterBlock& block);

// Shows the main window, maximised where it was left so.
void showAsKept(HWND window, const EntryFile& kept);

// At the main window's end.
void keepMainPlace(HWND window, ParameterBlock& block, EntryFile& kept);

} // namespace torvane
