// A road as a planner on a web page gives it away: GPX with positions and elevations, and no times.
#pragma once

#include "rides/fit_builder.h"
#include "samples/course.h"

namespace torvane {

Bytes plannedTrack(const Course& course, double latitude, double longitude, const char* name);

} // namespace torvane
