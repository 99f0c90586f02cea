// How fast a corner can be taken before the tyres lose grip: velocity, line radius and margin of friction, any of them
// from the other two, and the power that the velocity takes.
#pragma once

#include "ride/ride_records.h"

namespace torvane {

// Target 0 velocity, 1 corneringRadius, 2 safetyMargin (-9999.999 without radius or grip; below 0 the bicycle slips).
// Then power and requiredPower and, when wanted, the curve of the band that goes with the target. Status: that of the
// power.
ResultStatus runCriticalCornering(RideRun& ride);

} // namespace torvane
