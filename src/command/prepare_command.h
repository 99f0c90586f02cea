// Preparing a ride, and holding two rides with power against each other, as commands of the worker. Both read
// toolInputs.
#pragma once

#include "core/result_status.h"

namespace torvane {

ResultStatus prepareCommand();
ResultStatus compareCommand();

} // namespace torvane
