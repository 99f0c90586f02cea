// Whether a ride can be loaded, analysed and written at one stroke: what the dialog asks before it closes. Reads the
// source and leaves its field presence and readiness behind, so that the settings of the analysis show its options.
#pragma once

#include "core/verdict.h"
#include "fit/fit_survey.h"

namespace torvane {

struct ToolInputs;

// Source in files[0], destination in files[toolDestination]; the destination is looked at, and completed with its
// extension, only when asked for. Stops at the first fault, with its box.
Verdict checkOneStrokeSource(ToolInputs& inputs, bool needDestination);

// Sets fieldPresence and analysisReadiness from a survey: a field that is defined counts as filled.
void presetPresenceFromScan(const SourceFileInfo& info);

} // namespace torvane
