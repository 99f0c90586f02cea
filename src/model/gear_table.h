// The gears that a rider really uses: chainrings and sprockets dealt out along the chain line, from the lowest gear up.
// Not sorted by ratio; rows run ring by ring.
#pragma once

#include <cstdint>

namespace torvane {

constexpr int gearTableCapacity = 45; // 3 chainrings by 15 sprockets

struct GearEntry {
    double ratio;             // front teeth / rear teeth
    int32_t frontIndex;       // into chainring
    int32_t rearIndex;        // into sprocket
    double velocityUsual;     // m/s at cadenceUsual
    double velocityMax;       // m/s at cadencePoweredMax
    double velocityShiftUp;   // m/s at cadenceShiftUp
    double velocityShiftDown; // m/s at cadenceShiftDown
};

extern GearEntry gearTable[gearTableCapacity]; // modelState.gearCount rows hold

// Fills gearTable, modelState.gearCount and runState.reachVelocity from modelState. Needs the counts of chainrings
// within 1 to 3 and of sprockets within 1 to 15, and computeDerived done.
void buildGearTable();

// computeDerived and buildGearTable: all that must follow when the entered fields of modelState have changed.
void rebuildModel();

// Row with the nearest ratio, the earliest on a tie. Row 0 for a ratio that is no number or 1000 away from every row.
int nearestGear(double ratio);

// Teeth of a row, in modelState's rings and sprockets.
int32_t frontToothOf(int row);
int32_t rearToothOf(int row);

} // namespace torvane
