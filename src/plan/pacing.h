// How a rider spends a normalised power along a course: a power for each part of the road.
#pragma once

#include "plan/planning.h"

namespace torvane {

// Three powers by slope, in the ratio of the options; `watts` where the share is 100.
PowerProfile threePowers(const RideConditions& conditions, double watts);

// Which of the three powers a slope in percent takes: 0 up, 1 flat, 2 down.
int slopeClassOf(const PlanOptions& options, double slope);

// The profile of least time that the simulation has found at a normalised power; even power where none is faster.
PowerProfile leastTimeAt(Planning& planning, double watts);

PowerProfile scaled(const PowerProfile& profile, double factor);

} // namespace torvane
