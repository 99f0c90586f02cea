// Which of the menu entries of the loaded ride a finished command opens or greys.
#pragma once

#include "command/command_table.h"
#include "gps/loaded_ride.h"

namespace torvane {

// Greys all three: the start of the program, and every tool that overwrites the loaded activity.
void greyActivityCommands(void (*enableCommand)(int id, bool enabled));

// After the second entry of a command that ended with this status, with the readiness of the loaded ride.
void adjustMenu(MenuAfter rule, ResultStatus status, AnalysisReadiness readiness,
                void (*enableCommand)(int id, bool enabled));

} // namespace torvane
