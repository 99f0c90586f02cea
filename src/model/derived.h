// What the rider's entries mean in figures that physics can use: rims, circumferences, masses, air pressure, brake
// surfaces, training levels. Also the small predictions that dialogs offer. Knows nothing of forces or gears.
#pragma once

#include <cstdint>

namespace torvane {

constexpr int trainingLevelBoundCount = 7;
extern double trainingLevelBound[trainingLevelBoundCount]; // W, lower bounds of the training levels, rising

// Fills the derived fields of modelState and trainingLevelBound from its entered fields. Call it whenever those
// changed, and buildGearTable (gear_table.h) after it; rebuildModel does both.
void computeDerived();

// Heat shedding surface of both brakes, m2. Part of computeDerived.
void computeBrakeSurfaceArea();

// Torso angle in degrees of the positions 1 to 5. Any other position is free entry: 0, keep what was entered.
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
