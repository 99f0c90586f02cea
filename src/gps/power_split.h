// Where the power along a ride goes.
#pragma once

#include "gps/analysis.h"

#include <array>
#include <vector>

namespace torvane {

enum PowerSink : uint8_t {
    sinkAir,
    sinkRolling,
    sinkSlope,
    sinkAcceleration,
    sinkDrivetrain,
    sinkBrakes,
    powerSinkCount
};
// W; negative what the wind, the slope or the bicycle's own motion gives back. Their sum is the power at the stage that
// the settings tell power for.
using PowerSplit = std::array<double, powerSinkCount>;

// One for each row of an analysis of the physics of the road, before any smoothing of the prediction. A row that asks
// for no power loses none in the drivetrain.
std::vector<PowerSplit> powerSplitOf(const Model& model, const Analysis& analysis, const FitSummary& summary);

} // namespace torvane
