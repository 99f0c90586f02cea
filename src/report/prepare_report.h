// What the preparing of a ride found and did: a line for each finding, with its count.
#pragma once

#include "core/screens.h"
#include "gps/prepare_findings.h"

namespace torvane {

// Appends to the lower pane. What was not found is not told.
void reportPreparation(Screens& screens, const PrepareFindings& findings);

} // namespace torvane
