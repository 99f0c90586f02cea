// A ride dropped onto the window is answered at once: as by the dialog of that command, with nothing chosen but the
// source.
#pragma once

#include "command/command_table.h"
#include "ui/win32.h"

#include <optional>

namespace torvane {

LRESULT onDropFiles(HWND window, WPARAM wParam, LPARAM lParam);

// In place of a command's first entry where a ride was dropped for it: whether it was accepted. None otherwise.
std::optional<bool> enterDropped(const Command& command);

} // namespace torvane
