// The entries of a form as help tells them, in words and as data.
#pragma once

#include "command/command_table.h"
#include "command/session.h"
#include "forms/entry_meanings.h"

#include <string>
#include <vector>

namespace torvane {

struct EntryHelp {
    const Row* row;
    const char* meaning;
    std::vector<std::string> labels = {}; // of a choice
    // With the defaults of the session. Edit boxes of one name that serve several choices can have several: each once.
    std::vector<double> defaults = {}; // of a number in its unit, 0 or 1 of a check
    std::string chosen = {};           // of a choice: the label; empty: none is chosen
    Counting counting = {};
};

// Entries of one name that say the same stand once. With pages their present values are the defaults.
std::vector<EntryHelp> entriesOf(const Session& session, const Form& form, bool page);

// The forms whose entries a command takes, and the pages of a sheet with what their buttons open.
std::vector<const Form*> formsOf(const Command& command);
std::vector<const Form*> formsOf(Sheet sheet);

} // namespace torvane
