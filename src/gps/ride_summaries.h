// Sessions, laps and activities on their way into a prepared file: values that current devices write into wider fields
// move into the plain ones, fields without a value go. Also full timestamps for compressed ones of other messages.
#pragma once

#include "gps/activity.h"

#include <optional>
#include <vector>

namespace torvane {

// What applies to all summaries of a file.
struct SummaryRules {
    bool dropPower = false;
    bool dropCadence = false;
    std::optional<uint8_t> sessionSport; // of all sessions: such that differ would not load
    std::optional<uint8_t> lapSport;     // of all laps, likewise where there is no session
};

struct RewrittenMessage {
    std::vector<uint8_t> definition; // a definition message; its local type is the source's
    std::vector<uint8_t> payload;
};

// Whether a message has to be rewritten at all; all others pass as they are.
bool needsRewriting(const OtherMessage& message);

void rewriteMessage(const OtherMessage& message, const SummaryRules& rules, RewrittenMessage& rewritten,
                    PrepareFindings& findings);

} // namespace torvane
