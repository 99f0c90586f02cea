// What the rider's entries mean in figures that physics can use: rims, circumferences, masses, air pressure, brake
// surfaces, training levels. Also the small predictions that dialogs offer. Knows nothing of forces or gears.
#pragma once

#include "model/model.h"

#include <cstdint>

namespace torvane {

// Fills the derived fields of the state and the training levels from the entered fields. Part of rebuildModel.
void computeDerived(Model& model);

// Torso angle in degrees of a Position. positionTorsoAngle is free entry: 0, keep what was entered.
double torsoAngleForPosition(int position);

// Barometric pressure in hPa at a temperature in Celsius and an altitude in m. Never below 0.
double airPressureAt(double temperature, double altitude);

struct WheelResist {
    double resist;   // W
    double velocity; // kph that the resist holds for
};

// Air resistance of a 28 inch front wheel from its build, an empirical fit. Rim depth in mm, model year A.D.
WheelResist predictWheelResist(int32_t rimDepth, int32_t spokeCount, int32_t modelYear);

} // namespace torvane
