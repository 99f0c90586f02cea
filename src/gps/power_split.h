// Where the power along a ride goes.
#pragma once

#include "gps/analysis.h"
#include "model/power_sinks.h"

#include <vector>

namespace torvane {

struct RowPowers { // W
    PowerSplit sinks = {};
    double motor = 0; // its share of their sum
};

// One for each row of an analysis of the physics of the road, before any smoothing of the prediction. A row that asks
// for no power loses none in the drivetrain.
std::vector<RowPowers> powerSplitOf(const Model& model, const Analysis& analysis, const FitSummary& summary);

} // namespace torvane
