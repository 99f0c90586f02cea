// The steady ride: the power that a velocity takes, or the velocity that a power gives. No time in it.
#pragma once

#include "ride/ride_records.h"

namespace torvane {

// Target 0: power at the pedals from velocity. Target 1: velocity from power at the stage powerBaseIndex. Also
// requiredPower and, when wanted, the curves of powers and resistances from standstill up to the velocity. Status: the
// solver's.
ResultStatus runPowerAndVelocity(RideRun& ride);

} // namespace torvane
