// What the console tells of itself: usage, commands, and the entries of each with unit, limits, default and choices.
#pragma once

#include "model/model.h"

#include <string>
#include <string_view>

namespace torvane {

std::string usageText();
std::string generalHelp();
// Of a command, or of one of the topics profile, condition, preference, with the choices that a model gives. Empty for
// a name that is neither.
std::string helpOn(const Model& model, std::string_view name);
// Every name that helpOn knows, for suggestions: command names, aliases and topics.
bool isHelpTopic(std::string_view name);

} // namespace torvane
