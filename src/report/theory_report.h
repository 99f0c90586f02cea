// The reports of the theory calculators, into the lower pane and the status line. They read runState, modelState and,
// for calculator and target, workingBlock.
#pragma once

#include "core/result_status.h"
#include "core/screens.h"

namespace torvane {

// Clears the lower pane, sets the status line and prints the answer of the calculation. A fatal status ends the report
// after its alert lines.
void reportTheoryResult(Screens& screens, ResultStatus status);

// Appends what the answer means on the road, after reportTheoryResult and with the status of the verification.
void reportTheoryReal(Screens& screens, ResultStatus status);

} // namespace torvane
