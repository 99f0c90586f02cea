// The FIT tools as commands: what the worker runs after a tool's dialog was confirmed.
// Reads toolInputs and workingBlock; reports the outcome. Knows nothing of dialogs.
#pragma once

#include "core/result_status.h"

namespace torvane {

ResultStatus combineCommand();
ResultStatus convertCommand();
ResultStatus addMessagesCommand();
ResultStatus divideCommand();
ResultStatus excludeCommand();
ResultStatus increaseTimestampCommand();
ResultStatus fieldDumpCommand();

} // namespace torvane
