// What the console tells of itself: usage, commands, and the entries of each with meaning, unit, limits, default and
// choices.
#pragma once

#include "command/command_table.h"
#include "command/session.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace torvane {

// Pages that help knows by name.
struct Topic {
    std::string_view name;
    Sheet sheet;
};
std::span<const Topic> helpTopics();

// The command that stands in front of another one.
struct LeadingCommand {
    std::string_view name, call, meaning;
};
LeadingCommand leadingCommand();

std::string usageText();
std::string generalHelp();
// Of a command, of sweep, or of one of the topics profile, condition, preference, with the defaults and choices that a
// session gives. Empty for a name that is none of them.
std::string helpOn(const Session& session, std::string_view name);

// A command of the console, as it is called: "torvane-cli load RIDE.fit".
std::string callOf(const Command& command);
bool isOfConsole(const Command& command);
std::vector<std::string> aliasesOf(const Command& command);

} // namespace torvane
