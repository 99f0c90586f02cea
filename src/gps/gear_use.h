// Which gears a ride was ridden in.
#pragma once

#include "gps/ridden_rows.h"

#include "model/model.h"

#include <cstdint>
#include <vector>

namespace torvane {

struct GearUse {
    int row;          // of the model's gear table
    uint32_t seconds; // pedalled in it
};

// By speed and cadence, each time the nearest gear; those of the gear table that were used, in its order. Coasting does
// not count.
std::vector<GearUse> gearUseOf(const Model& model, RiddenRows rows, FigureSource cadence);

} // namespace torvane
