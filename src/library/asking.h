// A question, answered by a session as the programs answer it.
#pragma once

#include "command/command_table.h"
#include "command/entries.h"
#include "command/session.h"
#include "torvane/answer.h"
#include "torvane/calculator.h"

#include <string>
#include <string_view>
#include <vector>

namespace torvane::library {

std::vector<Assignment> assignmentsOf(const Entries& entries);

// A command that the library runs by `ask`: a report, a calculator, a simulation, one of rides and files. Null: none.
const Command* askedCommand(std::string_view name);
Error unknownCommand(std::string_view name);

// Runs a command. What it leaves in the session's blocks is the caller's to put back.
Result<Answer> askCommand(Session& session, const Command& command, const Question& question);
// Analyses the ride in hand, and makes the file of it.
Result<Bytes> analysedFileOf(Session& session, const Entries& entries);

// The answer, or the error, that a command of rides has come to.
Result<Answer> outcome(const Command& command, ResultStatus status, Answer&& answer);

} // namespace torvane::library
