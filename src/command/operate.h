// The work of a command, once its dialog is confirmed.
#pragma once

#include "command/command_table.h"

namespace torvane {

// Runs the command's operation: its status, or statusStopped where session.screens.stop asked for that in time. A run
// that was stopped has written nothing and left the session's ride as it was; figures and graph are gone, the status
// line says so, and what it may have put into a pane before is unfinished.
ResultStatus operate(const Command& command, Session& session);

} // namespace torvane
