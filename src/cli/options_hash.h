// By what a later batch knows that nothing has changed.
#pragma once

#include "cli/request.h"
#include "command/command_table.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace torvane {

// FNV-1a; a text behind another goes on from the hash of that. The same on every platform.
constexpr uint64_t hashStart = 14'695'981'039'346'656'037u;
uint64_t hashOf(std::string_view text, uint64_t before = hashStart);

// Of all that the answers of a batch depend on besides their rides: version, command, entries, settings, profile, and
// the files that entries name. 16 hexadecimal digits.
std::string optionsHash(const Session& session, const Command& command, const Request& request);

} // namespace torvane
