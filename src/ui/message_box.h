// The program's message boxes: the modal ones of its own thread.
#pragma once

#include "core/verdict.h"
#include "ui/win32.h"

#include <string_view>

namespace torvane {

// A box with one button; returns when it is gone. Texts are UTF-8.
void showMessageBox(HWND owner, std::string_view title, std::string_view text);
// Each box of a verdict in turn.
void showBoxes(HWND owner, const Verdict& verdict);

} // namespace torvane
