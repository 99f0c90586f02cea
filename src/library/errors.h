// What went wrong, in the library's words.
#pragma once

#include "command/command_table.h"
#include "command/entries.h"
#include "torvane/answer.h"
#include "torvane/result.h"

#include <string>
#include <vector>

namespace torvane::library {

Limits limitsOf(const Row& row);

// Of entries that a page or a dialog would not take.
Error errorOf(const EntryFaults& faults, const std::vector<Box>& boxes);
Error errorOf(const Refusal& refusal);

// Of a command that did not do what it is for, with its report and its status line.
Error errorOf(const Command& command, ResultStatus status, const std::string& report, const std::string& statusLine);

} // namespace torvane::library
