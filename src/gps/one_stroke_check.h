// Whether a ride can be loaded, analysed and written at one stroke: what the dialog asks before it closes.
#pragma once

#include "core/verdict.h"
#include "fit/fit_tools.h"
#include "gps/loaded_ride.h"
#include "gps/prepare.h"

namespace torvane {

// Source in files[0], as it is or as it will be prepared, destination in files[toolDestination]; the destination is
// looked at, and completed with its extension, only when asked for. Stops at the first fault, with its box. Presence
// and readiness of the source go to `scanned`, so that the settings of the analysis show its options.
Verdict checkOneStrokeSource(ToolInputs& inputs, const Preparation& preparation, bool needDestination,
                             LoadedRide& scanned);

// Sets presence and readiness from a survey: a field that is defined counts as filled.
void presetPresenceFromScan(LoadedRide& ride, const SourceFileInfo& info);

} // namespace torvane
