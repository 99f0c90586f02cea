// Which of the menu entries of the loaded ride a finished command opens or greys.
#pragma once

#include "command/command_table.h"
#include "core/verdict.h"
#include "gps/loaded_ride.h"

#include <optional>

namespace torvane {

// Greys all three: the start of the program, and every tool that overwrites the loaded activity.
void greyActivityCommands(void (*enableCommand)(int id, bool enabled));

// Why a command of the loaded ride is greyed, in the words of the check that asks the same at one stroke; none: it is
// open.
std::optional<Box> whyGreyed(const Command& command, AnalysisReadiness readiness);

// After the second entry of a command that ended with this status, with the readiness of the loaded ride.
void adjustMenu(MenuAfter rule, ResultStatus status, AnalysisReadiness readiness,
                void (*enableCommand)(int id, bool enabled));

} // namespace torvane
