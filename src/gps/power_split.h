// Where the power along a ride goes.
#pragma once

#include "gps/analysis.h"
#include "model/power_sinks.h"

#include <vector>

namespace torvane {

// One for each row of an analysis of the physics of the road, before any smoothing of the prediction. A row that asks
// for no power loses none in the drivetrain.
std::vector<PowerSplit> powerSplitOf(const Model& model, const Analysis& analysis, const FitSummary& summary);

} // namespace torvane
