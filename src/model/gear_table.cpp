#include "model/gear_table.h"

#include "core/parameter_block.h"
#include "model/derived.h"
#include "model/run_state.h"

#include <array>
#include <cmath>

namespace torvane {

GearEntry gearTable[gearTableCapacity];

namespace {

// Sprockets that each chainring starts with, from the inner ring outward. Neighbouring rings share one.
std::array<int, 3> sprocketsPerRing(int rings, int sprockets)
{
    if (rings == 1) {
        return {sprockets, 0, 0};
    }
    int inner = sprockets / rings + 1;
    int middle = (sprockets - inner) / (rings - 1) + 1;
    int outer = sprockets - middle - inner + 2;
    return {inner, middle, outer};
}

double ratioOf(int ring, int sprocket)
{
    return static_cast<double>(modelState.chainring[ring]) / modelState.sprocket[sprocket];
}

GearEntry gearOf(int ring, int sprocket)
{
    double ratio = ratioOf(ring, sprocket);
    auto velocityAt = [ratio](double cadence) { return cadence * ratio * modelState.rearCircumference / 60000.0; };
    return {ratio,
            ring,
            sprocket,
            velocityAt(modelState.cadenceUsual),
            velocityAt(modelState.cadencePoweredMax),
            velocityAt(modelState.cadenceShiftUp),
            velocityAt(modelState.cadenceShiftDown)};
}

} // namespace

void buildGearTable()
{
    const int rings = modelState.chainringCount;
    const double widestJump = modelState.cadenceShiftUp / modelState.cadenceShiftDown;
    std::array<int, 3> counts = sprocketsPerRing(rings, modelState.sprocketCount);

    int rows = 0;
    int sprocket = modelState.sprocketCount - 1;
    for (int fromInner = 0; fromInner < rings; ++fromInner) {
        int ring = rings - 1 - fromInner;
        if (fromInner > 0) {
            ++sprocket; // back to the last sprocket used, then further down while the jump is too wide for the rider
            while (sprocket < modelState.sprocketCount - 1 &&
                   ratioOf(ring, sprocket) / gearTable[rows - 1].ratio > widestJump) {
                ++sprocket;
                ++counts[fromInner];
            }
        }
        for (int n = 0; n < counts[fromInner]; ++n) {
            gearTable[rows++] = gearOf(ring, sprocket--);
        }
    }
    modelState.gearCount = rows;
    runState.reachVelocity = gearTable[rows - 1].velocityMax;
}

void rebuildModel()
{
    computeDerived();
    buildGearTable();
}

int nearestGear(double ratio)
{
    int nearest = 0;
    double distance = 1000.0;
    for (int row = 0; row < modelState.gearCount; ++row) {
        double away = std::fabs(gearTable[row].ratio - ratio);
        if (away < distance) {
            distance = away;
            nearest = row;
        }
    }
    return nearest;
}

int32_t frontToothOf(int row)
{
    return modelState.chainring[gearTable[row].frontIndex];
}

int32_t rearToothOf(int row)
{
    return modelState.sprocket[gearTable[row].rearIndex];
}

} // namespace torvane
