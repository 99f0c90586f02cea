// Start of the model, and the short commands on profile, condition and preference.
// Shows reports through Screens; knows no window.
#pragma once

#include "command/command_table.h"
#include "core/parameter_block.h"

namespace torvane {

// Start of the program, after the blocks are filled: puts workingBlock into the model, with the brake entries of both
// types, and rebuilds what derives from it.
void startModel(Session& session);

// Before the entry of a command of a family: its calculator (mode) becomes the present one; another one than before
// starts from its first target.
void chooseCalculator(const Command& command, ParameterBlock& working);

// What follows the entry of a Work::settings command: the sheet, whatever button ended it, or the file prompt whose
// answer is session.profilePath. Commits, applies, rebuilds and reports to the upper pane. 0, or 1 where a profile file
// could not be read or written; the status line tells.
ResultStatus finishSettings(Session& session, const Command& command);

} // namespace torvane
