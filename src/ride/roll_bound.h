// Bounds of a roll: whether it can still reach a velocity, told from a few resistances instead of from its remaining
// steps.
#pragma once

#include "ride/motion.h"
#include "ride/ride_records.h"

namespace torvane {

// True when a roll that stands at state.velocity, and stood at `before` a step of dt ago, stays below `most` in all
// steps to come, and where the last one is cut to a limit. False when that is not certain.
bool staysBelow(const RideRun& ride, const StepState& state, double before, double most, double dt);

} // namespace torvane
