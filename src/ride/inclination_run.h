// Which slope gives a wanted velocity to a bicycle that rolls without power: poised, over a distance, or over a time.
// Leaves it in now.inclination.
#pragma once

#include "ride/ride_records.h"
#include "ride/rolling_run.h"

namespace torvane {

// Inclination and velocity, as the target and inclinationLimit name it.
// Status: statusTooSmallGradient, statusTooSmallVelocity, statusNotConverged, the tolerance classes of the velocity
// reached, or 0. With 0 the log and, when wanted, the curves are filled.
ResultStatus runInclination(RideRun& ride);

// For the velocity as entered, poised. Status 0, statusNotConverged, or statusLooseTolerance where so little power is
// at stake that the slope found is more than 1 percent off.
ResultStatus seekInclinationForFinalVelocity(RideRun& ride);

// For the velocity as entered, at the end of a roll to the limit. Status: statusNotConverged, the tolerance classes, or
// 0.
ResultStatus seekInclinationOver(RideRun& ride, const RollLimit& limit);

} // namespace torvane
