// The page of two rides with power, held against each other.
#pragma once

#include "gps/ride_comparison.h"

#include <string>

namespace torvane {

// HTML. The names are paths.
std::string comparisonPage(const RideComparison& comparison, const std::string& first, const std::string& second);

} // namespace torvane
