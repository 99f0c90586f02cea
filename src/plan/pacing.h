// How a rider spends a normalised power along a course: a power for each part of the road.
#pragma once

#include "plan/plan_course.h"

#include <array>

namespace torvane {

// Three powers by slope, in the ratio of the options; the flat one comes to `watts` where its share is 100.
PowerProfile threePowers(const RideConditions& conditions, double watts);

// Share of a course point's power, by its slope: 0 up, 1 flat, 2 down.
int slopeClassOf(const PlanOptions& options, double slope);

PowerProfile scaled(const PowerProfile& profile, double factor);

} // namespace torvane
