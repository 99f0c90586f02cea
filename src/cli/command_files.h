// Which files each command takes on the command line, and where they go.
#pragma once

#include "cli/request.h"
#include "cli/write_rules.h"
#include "command/command_table.h"
#include "command/fill.h"

#include <string>
#include <vector>

namespace torvane {

// A file that a command writes, as the rules of writing see it.
Output outputOf(const Command& command, const std::string& path);

// The runs that the files of a request make.
struct PlannedRuns {
    std::vector<RunFiles> runs;     // one, or with --into one for each file
    std::vector<std::string> notes; // of folders that were looked through
    bool complete = true;           // each could be
    bool resumable = true;          // what an earlier call has done can be told
};
// An empty text on success.
std::string planRuns(const Command& command, const Request& request, PlannedRuns& planned);

} // namespace torvane
