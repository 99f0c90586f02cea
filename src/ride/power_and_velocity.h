// The steady ride: the power that a velocity takes, or the velocity that a power gives. No time in it.
#pragma once

#include "core/result_status.h"
#include "ride/graph_series.h"

namespace torvane {

// Target 0: runState.power at the pedals from velocity. Target 1: runState.velocity from power at the stage
// powerBaseIndex. Also the required power (peakPower[0]). When graph is not null, it gets the band of powers and
// resistances from standstill up to the velocity. Status: the solver's.
ResultStatus runPowerAndVelocity(int target, GraphSeries* graph);

} // namespace torvane
