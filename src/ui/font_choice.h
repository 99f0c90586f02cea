// The font commands of the panes.
#pragma once

#include "ui/win32.h"

namespace torvane {

// What of a pane's text a font is chosen for.
enum class FontScope { selection, all };

// Runs the system's font dialog on the format of the pane's selection. The focus returns to the pane, also after a
// cancel. False when the format could not be applied.
bool chooseScreenFont(HWND pane, FontScope scope);

// A font of the format on a device of so many pixels an inch.
LOGFONTW toLogicalFont(const CHARFORMATW& format, int pixelsPerInch);

} // namespace torvane
