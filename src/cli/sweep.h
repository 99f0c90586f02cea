// A command asked for many combinations of its entries: a row of figures for each, on all cores.
#pragma once

#include "cli/answer.h"
#include "cli/request.h"
#include "cli/write_rules.h"
#include "command/command_table.h"

#include <functional>

namespace torvane {

// One combination, with its values among the request's entries: its exit code and its answer.
using RunOfSweep = std::function<int(Session& session, const Request& request, Answer& answer, Streams& streams)>;

// Each combination starts from the settings of `session`, as a call of its own would. The rows go out in their order as
// they come to be, to standard output unless the request names a file: the values of the ranges, the command's figures,
// and what became of it; a combination that is refused or has no answer has a row without figures. Afterwards the
// answer counts them, where a file was written. The exit code is that of a failure only where none has an answer.
int runSweep(const Session& session, const Command& command, const Request& request, WriteRules& rules,
             const RunOfSweep& run, Answer& answer, Streams& streams);

} // namespace torvane
