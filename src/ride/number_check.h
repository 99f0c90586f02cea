// Whether all that a run leaves for its report and tables is a number. Losses that reach the whole power, brakes that
// glow and velocities next to nothing lead to figures that are none.
#pragma once

#include "ride/ride_records.h"

namespace torvane {

bool endedInNumbers(const RideRun& ride);

} // namespace torvane
