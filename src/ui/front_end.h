// What the command protocol asks of the desktop: dialogs, sheets, prompts, graph, menu, focus, and the commands that
// are windows' business alone.
#pragma once

#include "command/protocol.h"

namespace torvane {

const FrontEnd& desktopFrontEnd();

} // namespace torvane
