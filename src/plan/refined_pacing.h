// Least time with momentum: a plan moved to where every second that power saves costs the same normalised power, by the
// ride of a point of mass.
#pragma once

#include "plan/planning.h"

namespace torvane {

// A plan from even power; each power 0, where coasting is fast, or between the options' least and most of `watts`,
// which is about its normalised power.
PowerProfile refinedPacing(const RideConditions& conditions, double watts);

} // namespace torvane
