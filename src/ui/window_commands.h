// The commands that are the desktop's alone: about, exit, fonts, clearing, printing, text files of the panes.
#pragma once

#include "command/command_table.h"

namespace torvane {

void runWindowCommand(const Command& command);

} // namespace torvane
