// A plan as a rider can follow it: a few stretches, each with one power.
#pragma once

#include "plan/plan_course.h"

#include <vector>

namespace torvane {

// Cuts the ridden course where its power changes most, in at most `most` stretches: least squares over
// the time pedalled. Each is held at leastPower, in W, or above, or is not pedalled at all.
std::vector<Stretch> stretchesOf(const CourseRide& ride, double length, size_t most, double leastPower);

PowerProfile profileOf(const std::vector<Stretch>& stretches);

} // namespace torvane
