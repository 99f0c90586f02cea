// A course ahead, as a command of the worker. Reads the session's inputs and plan.
#pragma once

#include "command/session.h"
#include "core/result_status.h"

namespace torvane {

// The answer to the source; where there is a destination, its course or activity as a FIT file, or its track as GPX by
// the name, as well. Codes of fit_codes.h and plan_codes.h.
ResultStatus planCommand(Session& session);

} // namespace torvane
