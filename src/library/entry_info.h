// Entries, described.
#pragma once

#include "command/command_table.h"
#include "command/session.h"
#include "torvane/entries.h"

#include <vector>

namespace torvane::library {

// What the pages take by name, and what lies behind their buttons, as they would open now. A control that serves one
// entry under several choices is told for each.
std::vector<EntryInfo> describedSettings(const Session& session);
// The same of a command's dialogs.
std::vector<EntryInfo> describedEntries(const Session& session, const Command& command);

} // namespace torvane::library
