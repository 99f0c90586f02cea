// A pane as a document: saved to and opened from rich text or plain text files. Both panes share one file name and one
// format, so that a save of the lower pane without a prompt goes over the upper pane's file.
#pragma once

#include "ui/win32.h"

#include <string>

namespace torvane {

// Each returns 0, or another value when it was cancelled or failed; a failure was told.
int saveScreen(HWND pane); // asks for a name while there is none
int saveScreenAs(HWND pane);
int openScreen(HWND pane); // asks first whether to save a modified pane

// The text of a pane, its paragraphs ending in CR.
std::wstring paneText(HWND pane);

} // namespace torvane
