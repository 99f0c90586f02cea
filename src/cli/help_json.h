// What the console tells of itself, as data: for pages of the web, editors, completion and the documents.
#pragma once

#include "command/session.h"

#include <string>
#include <string_view>

namespace torvane {

// Options, commands and pages with their entries, as one JSON object.
std::string helpJson(const Session& session);
// Of a command, or of one of the topics of help; empty for a name that is neither.
std::string helpJsonOn(const Session& session, std::string_view name);

} // namespace torvane
