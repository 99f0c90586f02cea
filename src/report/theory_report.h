// The reports of the theory calculators, into the lower pane and the status line.
#pragma once

#include "core/screens.h"
#include "model/theory.h"

namespace torvane {

// Clears the lower pane, sets the status line and prints the answer of the calculation. A fatal status ends the report
// after its alert lines.
void reportTheoryResult(Screens& screens, const Theory& theory, ResultStatus status);

// Appends what the answer means on the road, after reportTheoryResult and with the status of the verification.
void reportTheoryReal(Screens& screens, const Theory& theory, ResultStatus status);

} // namespace torvane
