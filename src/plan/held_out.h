// How well a ride is predicted by what its other half has taught: blocks of ten minutes, every other one for the fit.
#pragma once

#include "plan/drag_fit.h"

#include <array>
#include <span>
#include <vector>

namespace torvane {

struct PredictionQuality {
    double blockError = 0;  // share of the mean power of a block, median of the blocks
    double shortError = 0;  // W, root of the mean square over half a minute
    double correlation = 0; // of means over half a minute
};

struct HeldOut {
    PredictionQuality before, after;
    std::array<double, 2> factor = {}, error = {}; // of the two halves, alone, with their standard errors
    size_t blocks = 0;                             // 0: the ride is too short
    size_t better = 0;                             // blocks that are predicted no worse than before
};

// `windows` are those of the fit, `shortWindows` those of half a minute. Before is a factor that was known, and no
// wind.
HeldOut holdOut(std::span<const RideWindows> windows, std::span<const std::vector<EnergyWindow>> shortWindows,
                double factorBefore);

} // namespace torvane
