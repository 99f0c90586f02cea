// Fills the panes. The start of a text stands there at once, the rest follows in pieces while nobody asks for anything:
// the control lays out each line as it comes, some at a fifth of a millisecond. Window thread only.
#pragma once

#include "core/screens.h"
#include "ui/win32.h"

#include <string_view>

namespace torvane {

// Behind all that the pane holds or is still to get.
void appendToPane(Pane pane, std::wstring_view text);

// The pane has been emptied: nothing more is to come.
void forgetFill(Pane pane);

// The pane has formats from now on that are not of the whole text: it is never made anew.
void keepFormats(HWND pane);

// The rest at once, for those who want the whole text.
void finishFill(HWND pane);

// Drops what is still to come of new texts, and tells so; false where nothing was.
bool stopFill();

// A new place for a pane. The control lays out all of its text anew for each new size: one that takes long is made anew
// and filled again in pieces, where its formats allow that.
void movePane(Pane pane, const RECT& place);

// The row of WM_TIMER.
LRESULT onFillTimer(HWND window, WPARAM wParam, LPARAM lParam);

} // namespace torvane
