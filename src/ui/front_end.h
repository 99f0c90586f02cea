// What the command protocol asks of the desktop: dialogs, sheets, prompts, graph, menu, focus, and the commands that
// are windows' business alone.
#pragma once

#include "command/protocol.h"
#include "ui/win32.h"

#include <span>

namespace torvane {

const FrontEnd& desktopFrontEnd();

// The private messages that bring the protocol's calls to the window thread; rows of the main window's procedure.
std::span<const MessageRow> frontEndMessages();

} // namespace torvane
