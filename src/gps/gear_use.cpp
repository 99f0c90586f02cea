#include "gps/gear_use.h"

#include "model/gear_table.h"

namespace torvane {

std::vector<GearUse> gearUseOf(const Model& model, RiddenRows rows, FigureSource cadence)
{
    std::vector<GearUse> uses;
    uses.reserve(static_cast<size_t>(model.state.gearCount));
    for (int gear = 0; gear < model.state.gearCount; ++gear)
        uses.push_back({gear, 0});
    for (const RiddenRow& row : rows)
        if (row.cadence[cadence] > 0)
            uses[static_cast<size_t>(nearestGear(model, ratioAtCadence(model, row.speed, row.cadence[cadence])))]
                .seconds += row.seconds;
    std::erase_if(uses, [](const GearUse& use) { return use.seconds == 0; });
    return uses;
}

} // namespace torvane
