// Preparing a ride, and holding two rides with power against each other, as commands of the worker. Both read
// the session's inputs.
#pragma once

#include "command/session.h"
#include "core/result_status.h"

namespace torvane {

ResultStatus prepareCommand(Session& session);
ResultStatus compareCommand(Session& session);

} // namespace torvane
