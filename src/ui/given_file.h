// Files that come without a dialog, dropped on the window or chosen from the menu of recent ones: a ride goes to the
// command "Ride", with all its entries as they are saved, a profile is loaded, and parameters replace the defaults when
// the user says so.
#pragma once

#include "command/command_table.h"
#include "ui/win32.h"

#include <optional>
#include <string>

namespace torvane {

LRESULT onDropFiles(HWND window, WPARAM wParam, LPARAM lParam);

// A UTF-8 path.
void openGiven(const std::string& path);

// Enters the given file in place of the command's dialog or prompt, and tells whether that was accepted; nothing where
// none was given.
std::optional<bool> enterGiven(const Command& command);

// After an entry that was accepted: its ride or profile is among the recent ones.
void rememberEntry(const Command& command);

} // namespace torvane
