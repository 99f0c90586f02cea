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

// Deals the files of a request out to runs: one, or with --into one for each file. An empty text on success.
std::string planRuns(const Command& command, const Request& request, std::vector<RunFiles>& runs);

} // namespace torvane
