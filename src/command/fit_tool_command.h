// The FIT tools as commands: what the worker runs after a tool's dialog was confirmed.
// Reads the session's inputs and its working block; reports the outcome. Knows nothing of dialogs.
#pragma once

#include "command/session.h"
#include "core/result_status.h"

namespace torvane {

ResultStatus combineCommand(Session& session);
ResultStatus convertCommand(Session& session);
ResultStatus addMessagesCommand(Session& session);
ResultStatus divideCommand(Session& session);
ResultStatus excludeCommand(Session& session);
ResultStatus increaseTimestampCommand(Session& session);
ResultStatus fieldDumpCommand(Session& session);

} // namespace torvane
