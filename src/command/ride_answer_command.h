// What a recorded ride cost, as a command of the worker. Reads the session's inputs.
#pragma once

#include "command/session.h"
#include "core/result_status.h"

namespace torvane {

// The answer to the source; where there is a destination, its analysed file as well. The loaded ride stays as it is.
ResultStatus answerRideCommand(Session& session);

} // namespace torvane
