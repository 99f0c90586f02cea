// Which slope gives a wanted velocity to a bicycle that rolls without power: poised, over a distance, or over a time.
// Leaves it in runState.inclination.
#pragma once

#include "core/result_status.h"
#include "ride/rolling_run.h"
#include "ride/sample_log.h"

namespace torvane {

// Inclination and velocity, as the target (0 final velocity, 1 inclination) and runState.inclinationLimit name it.
// Status: statusTooSmallGradient, statusTooSmallVelocity, statusNotConverged, the tolerance classes of the velocity
// reached, or 0. With 0 log and, when not null, graph are filled.
ResultStatus runInclination(int target, SampleLog& log, GraphSeries* graph);

// For runState.velocity, poised. Status 0, statusNotConverged, or statusLooseTolerance where so little power is at
// stake that the slope found is more than 1 percent off.
ResultStatus seekInclinationForFinalVelocity();

// For runState.velocity at the end of a roll to the limit. Status: statusNotConverged, the tolerance classes, or 0.
ResultStatus seekInclinationOver(const RollLimit& limit, SampleLog& log);

} // namespace torvane
