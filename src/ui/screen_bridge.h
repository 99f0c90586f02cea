// Carries the Screens calls of either thread to the window thread. Text for a pane is gathered here and handed over in
// large pieces: the control's cost goes by the call, not by the character.
#pragma once

#include "ui/win32.h"

#include <span>

namespace torvane {

// From now on `screens` leads to this window's panes and bars.
void installScreens(HWND window);

// Hands over what is still gathered. Either thread; called before a command is seen to end.
void flushScreens();

// Asks the present run to end at its next step; with none nothing happens.
void stopRun();
// Of the window thread before a run begins: it has not been asked yet.
void allowRun();

// The private messages that carry the calls; rows of the main window's procedure.
std::span<const MessageRow> screenMessages();

} // namespace torvane
