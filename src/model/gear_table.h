// The gears that a rider really uses: chainrings and sprockets dealt out along the chain line, from the lowest gear up.
// Not sorted by ratio; rows run ring by ring.
#pragma once

#include "model/model.h"

namespace torvane {

// Fills gearTable, state.gearCount and reachVelocity from the state, of which computeDerived has run. Part of
// rebuildModel.
void buildGearTable(Model& model);

// Row with the nearest ratio, the earliest on a tie. Row 0 for a ratio that is no number or 1000 away from every row.
int nearestGear(const Model& model, double ratio);
// The same where the last ratio of the order that is not above it is known; 0 where all are.
int nearerGear(const GearOrder& order, int place, double ratio);

// Ratio that a velocity in m/s asks for at a cadence in rpm, or at the usual one, and the gear nearest to the latter.
double ratioAtCadence(const Model& model, double velocity, double cadence);
double usualRatio(const Model& model, double velocity);
int usualGear(const Model& model, double velocity);

// Cadence in rpm of a velocity in m/s in a gear.
double cadenceInGear(const Model& model, double velocity, double gearRatio);

// Teeth of a row, in the model's rings and sprockets.
int32_t frontToothOf(const Model& model, int row);
int32_t rearToothOf(const Model& model, int row);

} // namespace torvane
