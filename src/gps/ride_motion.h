// Distance and speed of an activity's samples: what contradicts the rest of the ride goes, what a device held back is
// spread, what no sample has is worked out.
#pragma once

#include "gps/activity.h"

namespace torvane {

// Clears a distance or a speed that never moves though the ride does: against a distance that stands speed wins, and
// against both the positions. Reads which steps are open.
void dropStillMotion(std::span<RideSample> samples, PrepareFindings& findings);

// A distance that starts again goes on where it was; one that falls back a little stands until it is there again; one
// that is lower or far higher for a moment alone is cleared.
void straightenDistance(std::span<RideSample> samples, PrepareFindings& findings);

// Spreads leaps of a distance over the seconds for which it was held while the ride went on, by speed where there is
// one, and derives distance or speed where no sample has it. Of completed samples. False where speeds and distances
// stand so that the same, done again, could come to more.
bool completeMotion(std::span<RideSample> samples, PrepareFindings& findings);

} // namespace torvane
