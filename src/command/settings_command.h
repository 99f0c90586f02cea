// Start of the model, and the short commands on profile, condition and preference.
// Shows reports through Screens; knows no window.
#pragma once

#include "command/command_table.h"
#include "core/parameter_block.h"
#include "forms/form.h"

namespace torvane {

// Start of the program: the defaults out of a parameter file become the saved block, the working block and the model
// in force.
void startFrom(Session& session, const ParameterBlock& defaults);

// The confirming button of a page of a sheet: stores into the working block and marks for what follows the sheet.
Verdict confirmPage(Session& session, FormState& page);
// The same of a dialog: what runs next finds its files and options in the session.
Verdict confirmDialog(Session& session, FormState& dialog);

// Before the entry of a command of a family: its calculator (mode) becomes the present one; another one than before
// starts from its first target.
void chooseCalculator(const Command& command, ParameterBlock& working);

// What follows the entry of a Work::settings command: the sheet, whatever button ended it, or the file prompt whose
// answer is session.profilePath. Commits, applies, rebuilds and reports to the upper pane. 0, or 1 where a profile file
// could not be read or written; the status line tells.
ResultStatus finishProfile(Session& session);
ResultStatus finishCondition(Session& session);
ResultStatus finishPreference(Session& session);
ResultStatus loadNamedProfile(Session& session);
ResultStatus saveNamedProfile(Session& session);

} // namespace torvane
