// Two rides with power, held against each other: as a whole and by sector.
#pragma once

#include "core/screens.h"
#include "gps/ride_comparison.h"

#include <string_view>

namespace torvane {

// Appends to the lower pane.
void reportComparison(Screens& screens, const RideComparison& comparison, std::string_view first,
                      std::string_view second);

} // namespace torvane
