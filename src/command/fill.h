// Fills in the dialogs of a command from entries by name, as if its controls had been used.
#pragma once

#include "command/command_table.h"
#include "command/entries.h"
#include "command/session.h"
#include "forms/form.h"

#include <string>
#include <vector>

namespace torvane {

// The files of one run; absolute paths.
struct RunFiles {
    std::vector<std::string> sources;
    std::string destination; // empty: none
};

// What a command's dialogs are filled in with, and what became of that.
struct Filling {
    Session& session;
    const Command& command;
    const std::vector<Assignment>& entries;
    const RunFiles& files;
    bool saveAsDefault = false;
    EntryFaults faults = {};
    std::vector<Box> boxes = {};
    std::string destination = {}; // as the dialog has completed it; empty: none
};

// Creating a file and doing all at one stroke analyse first: the form of those settings, null for any other command.
const Form* settingsForm(const Command& command);

// The files that the command will write, by the destination that its dialog has left: a division writes parts.
std::vector<std::string> filesOf(const Filling& filling);

// The files that a command reads because an entry names them.
std::vector<std::string> filesNamedBy(const Command& command, const std::vector<Assignment>& entries);

// What is wrong with the names of a command's entries; no text when its dialogs have them all.
Refusal checkNames(const Command& command, const std::vector<Assignment>& entries);

// Opens a form on the settings of a ride, sets its entries and paths, and confirms it into the working block. False
// when something was refused: the filling tells what.
bool fillForm(const Form& form, const LoadedRide& ride, Filling& filling);
// The same for the command's own dialog with what its buttons open.
bool fillDialog(Filling& filling);

} // namespace torvane
