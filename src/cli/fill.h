// Fills in the dialogs of a command from what the user has given, as if its controls had been used.
#pragma once

#include "cli/answer.h"
#include "cli/command_files.h"
#include "cli/request.h"
#include "forms/form.h"

#include <string>
#include <vector>

namespace torvane {

// One run of a command.
struct Run {
    Session& session;
    const Command& command;
    const Request& request;
    Streams& streams;
    WriteRules& rules;
    RunFiles files;
    Answer answer = {};
    std::vector<std::string> notes = {}; // entries without effect
};

// Creating a file and doing all at one stroke analyse first: the form of those settings, null for any other command.
const Form* settingsForm(const Command& command);

// What is wrong with the names of a request's entries; empty when the dialogs of the command have them all.
std::string checkNames(const Command& command, const Request& request);

// Opens a form on the settings of a ride, sets its entries and paths, and confirms it into workingBlock. False when
// something was refused; the user was told.
bool fillForm(const Form& form, const LoadedRide& ride, Run& run);
// The same for the command's own dialog with what its buttons open. Leaves the checked destination in the answer.
bool fillDialog(Run& run);

} // namespace torvane
