// "Load Activity FIT File": what the worker runs once the prompt has given a path.
#pragma once

#include "command/session.h"
#include "fit/fit_codes.h"

namespace torvane {

// Loads the session's chosen file, which becomes its ride where that succeeds, and reports its summary or its fault.
// The track itself is not kept.
StatusCode loadGpsFile(Session& session);

// The same with a ride in memory, which stays there; reports give it the name.
StatusCode loadRideInMemory(Session& session, FitImage&& image, const std::string& name);

} // namespace torvane
