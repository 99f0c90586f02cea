// Printing of a pane: the page loop with one inch margins and the page's number on top.
#pragma once

#include "ui/win32.h"

namespace torvane {

// Sets the line width of a pane to what the printer's paper leaves between the margins. 0, or -1 where there is no
// printer to ask.
int setPrintWidth(HWND pane);

// Device context of the printer that the user chooses, or of the default one, by the flags of the system's dialog; null
// when there is none. To be deleted.
HDC askPrinter(HWND owner, DWORD flags);

// Asks for a printer and prints all of a pane. 1 always; a cancelled question prints nothing.
int printPane(HWND owner, HWND pane);

} // namespace torvane
