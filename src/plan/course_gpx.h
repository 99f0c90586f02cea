// A predicted ride as a GPX track with times.
#pragma once

#include "plan/planned_seconds.h"

#include <string>

namespace torvane {

// A point each second that has a position; the marks as waypoints. UTF-8.
std::string courseGpx(const PlannedFile& planned);

} // namespace torvane
