// The gear that is nearest to a ratio, asked for one velocity after another: each search starts where the one before
// has ended. Internal to walks over a road or a track; who asks once takes nearestGear.
#pragma once

#include "model/gear_table.h"

#include <cstddef>
#include <span>

namespace torvane {

// Ratio of the gear that nearestGear finds. `place` is the caller's, 0 at the start.
inline double nearestRatio(const Model& model, double wanted, int& place)
{
    const GearOrder& order = model.gearOrder;
    std::span<const double> rising(order.rising, static_cast<size_t>(order.count));
    size_t at = static_cast<size_t>(place);
    while (at + 1 < rising.size() && rising[at + 1] <= wanted)
        ++at;
    while (at > 0 && rising[at] > wanted)
        --at;
    place = static_cast<int>(at);
    return model.gearTable[nearerGear(order, place, wanted)].ratio;
}

} // namespace torvane
