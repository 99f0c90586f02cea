// Runs one command with its dialog filled in from the request: what the two entries of the desktop do, in one go.
#pragma once

#include "cli/answer.h"
#include "cli/request.h"
#include "command/command_table.h"
#include "command/entries.h"

namespace torvane {

enum ExitCode : int {
    exitDone = 0,    // warnings included
    exitFailed = 1,  // fatal status or failed operation
    exitRefused = 2, // refused input or wrong usage
};

// The blocks and the model are as the request's options left them. Prints what the command came to, but for JSON, which
// the caller makes of the answer; what that already holds stays in it.
int runCommand(Session& session, const Command& command, const Request& request, Answer& answer, Streams& streams);

// Reads or writes a profile file by its command. What no page would take of one is told.
ResultStatus finishProfileFile(Session& session, const Command& command, const std::string& path, Answer& answer,
                               Streams& streams);

// "torvane-cli: text" to standard error and into the answer; exitRefused comes back.
int refuse(Answer& answer, Streams& streams, CallError error);
// What applySettings had to say; notes only where it was accepted.
void tellSettings(bool applied, const EntryFaults& faults, const std::vector<Box>& boxes, Answer& answer,
                  Streams& streams);

} // namespace torvane
