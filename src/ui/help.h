// F1: the manual in the user's browser, at the page of what is in hand.
#pragma once

#include "ui/win32.h"

#include <string_view>

namespace torvane {

// The manual stands beside the program as HTML; where it does not, that is told.
void showManual(HWND owner, std::string_view anchor);

// Of the main window: an entry of the menu under the keyboard, else the last command.
LRESULT onHelp(HWND window, WPARAM wParam, LPARAM lParam);

} // namespace torvane
