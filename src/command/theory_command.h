// The commands of the theory calculators: the answer and, where there is one, what it means on the road.
#pragma once

#include "command/session.h"
#include "core/result_status.h"

namespace torvane {

// The calculator that the working block's theoryCalculator and theoryTarget name; runs on the worker. Returns the
// status of the calculation or, when that is 0, of its verification.
ResultStatus runTheory(Session& session);

} // namespace torvane
