// What the preparing of a ride found and did: a line for each finding, with its count.
#pragma once

#include "core/screens.h"
#include "gps/prepare_findings.h"

#include <string>
#include <vector>

namespace torvane {

// Appends to the lower pane. What was not found is not told.
void reportPreparation(Screens& screens, const PrepareFindings& findings);

// One sentence for each thing that was mended or is doubtful, with its count; none for mere form, such as definitions
// made one. In the order in which a reader wants them: what is missing, what contradicts, what was mended.
std::vector<std::string> preparationNotes(const PrepareFindings& findings);

// Hands each of them to the screens' notes.
void tellPreparationNotes(Screens& screens, const PrepareFindings& findings);

} // namespace torvane
