// Calibration as a command of the worker. Reads the session's inputs.
#pragma once

#include "command/session.h"
#include "core/result_status.h"

namespace torvane {

// The factor of air drag by the rides among the sources; where there is a destination, the present profile with it, as
// a file. The profile in force stays as it is.
ResultStatus calibrateCommand(Session& session);

} // namespace torvane
