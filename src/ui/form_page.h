// The property sheets, and the one procedure behind every page.
#pragma once

#include "forms/sheet.h"
#include "ui/win32.h"

namespace torvane {

// Runs a sheet until no page of it is refused, or it is cancelled. What was accepted stands in the working block when
// it returns.
void runPropertySheet(HWND owner, Sheet sheet);

} // namespace torvane
