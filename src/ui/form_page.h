// The property sheets, and the one procedure behind every page.
#pragma once

#include "ui/win32.h"

namespace torvane {

// Runs the sheet of a command (321, 324, 325). What was accepted stands in workingBlock when it returns.
void runPropertySheet(HWND owner, int command);

} // namespace torvane
