// Why a call of the console did not do what it was asked, as data.
#pragma once

#include "command/command_table.h"
#include "command/entries.h"
#include "core/verdict.h"
#include "torvane/result.h"

#include <string>
#include <string_view>
#include <vector>

namespace torvane {

struct CallError {
    std::string kind;  // the library's names of kinds, wrongUsage and stopped
    std::string text;  // one or more lines
    std::string entry; // whose fault it is; empty: no one entry's
    std::optional<library::Limits> limits = {};
    std::string given = {}; // what the entry was given as, in its unit; a path
};

// Options, files or their order.
CallError wrongUsage(std::string text);
CallError errorOf(library::ErrorKind kind, std::string text);
CallError errorOf(const library::Error& error);
// Of a form that was not accepted.
CallError errorOf(const EntryFaults& faults, const std::vector<Box>& boxes);

std::string jsonError(const CallError& error);

} // namespace torvane
