// What a page tells of powers: where they go, how they are spread, and the best of them.
#pragma once

#include "gps/power_split.h"
#include "gps/ride_answer.h"
#include "page/page.h"

#include <span>

namespace torvane {

// A bar of where the energy of a ride went, its table and, of the series of a ride, the chart over distance.
void addSplitSection(HtmlPage& page, const std::array<double, powerSinkCount>& megaJoule, const RideAnswer& answer);

// Histogram with training levels, and the best mean powers.
void addPowerSection(HtmlPage& page, const Model& model, std::span<const RiddenRow> rows, const RideAnswer& answer);

} // namespace torvane
