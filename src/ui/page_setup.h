// Paper and orientation of the default printer.
#pragma once

#include "ui/win32.h"

namespace torvane {

// Runs the system's page set-up and stores its answer for the printer, for all programs. False when it was cancelled or
// failed; a failure was told.
bool pageSetUp(HWND owner);

} // namespace torvane
