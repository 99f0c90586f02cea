// What the console tells of itself: usage, commands, and the entries of each with unit, limits, default and choices.
#pragma once

#include "command/session.h"

#include <string>
#include <string_view>

namespace torvane {

std::string usageText();
std::string generalHelp();
// Of a command, or of one of the topics profile, condition, preference, with the defaults and choices that a session
// gives. Empty for a name that is neither.
std::string helpOn(const Session& session, std::string_view name);
// Every name that helpOn knows, for suggestions: command names, aliases and topics.
bool isHelpTopic(std::string_view name);

} // namespace torvane
