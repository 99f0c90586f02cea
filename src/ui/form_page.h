// The property sheets, and the one procedure behind every page.
#pragma once

#include "ui/win32.h"

namespace torvane {

// Runs the sheet of commandProfile, commandCondition or commandPreference. What was accepted stands in the working
// block when it returns.
void runPropertySheet(HWND owner, int command);

} // namespace torvane
