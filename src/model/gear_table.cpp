#include "model/gear_table.h"

#include "model/constants.h"

#include <array>
#include <cmath>

namespace torvane {

namespace {

// Sprockets that each chainring starts with, from the inner ring outward. Neighbouring rings share one.
std::array<int, 3> sprocketsPerRing(int rings, int sprockets)
{
    if (rings == 1)
        return {sprockets, 0, 0};
    int inner = sprockets / rings + 1;
    int middle = (sprockets - inner) / (rings - 1) + 1;
    int outer = sprockets - middle - inner + 2;
    return {inner, middle, outer};
}

double ratioOf(const ModelState& m, int ring, int sprocket)
{
    return static_cast<double>(m.chainring[ring]) / m.sprocket[sprocket];
}

GearEntry gearOf(const ModelState& m, int ring, int sprocket)
{
    double ratio = ratioOf(m, ring, sprocket);
    auto velocityAt = [&m, ratio](double cadence) { return cadence * ratio * m.rearCircumference / mmPerMinute; };
    return {ratio,
            ring,
            sprocket,
            velocityAt(m.cadenceUsual),
            velocityAt(m.cadencePoweredMax),
            velocityAt(m.cadenceShiftUp),
            velocityAt(m.cadenceShiftDown)};
}

} // namespace

void buildGearTable(Model& model)
{
    ModelState& m = model.state;
    GearEntry* gearTable = model.gearTable;
    int rings = m.chainringCount;
    double widestJump = m.cadenceShiftUp / m.cadenceShiftDown;
    std::array<int, 3> counts = sprocketsPerRing(rings, m.sprocketCount);

    int rows = 0;
    int sprocket = m.sprocketCount - 1;
    for (int fromInner = 0; fromInner < rings; ++fromInner) {
        int ring = rings - 1 - fromInner;
        if (fromInner > 0) {
            ++sprocket; // back to the last sprocket used, then further down while the jump is too wide for the rider
            while (sprocket < m.sprocketCount - 1 &&
                   ratioOf(m, ring, sprocket) / gearTable[rows - 1].ratio > widestJump) {
                ++sprocket;
                ++counts[fromInner];
            }
        }
        for (int n = 0; n < counts[fromInner]; ++n)
            gearTable[rows++] = gearOf(m, ring, sprocket--);
    }
    m.gearCount = rows;
    model.reachVelocity = gearTable[rows - 1].velocityMax;
}

int nearestGear(const Model& model, double ratio)
{
    int nearest = 0;
    double distance = 1000.0;
    for (int row = 0; row < model.state.gearCount; ++row) {
        double away = std::fabs(model.gearTable[row].ratio - ratio);
        if (away < distance) {
            distance = away;
            nearest = row;
        }
    }
    return nearest;
}

double ratioAtCadence(const Model& model, double velocity, double cadence)
{
    return velocity * mmPerMinute / (cadence * model.state.rearCircumference);
}

double usualRatio(const Model& model, double velocity)
{
    return ratioAtCadence(model, velocity, model.state.cadenceUsual);
}

int usualGear(const Model& model, double velocity)
{
    return nearestGear(model, usualRatio(model, velocity));
}

double cadenceInGear(const Model& model, double velocity, double gearRatio)
{
    return velocity * mmPerMinute / (model.state.rearCircumference * gearRatio);
}

int32_t frontToothOf(const Model& model, int row)
{
    return model.state.chainring[model.gearTable[row].frontIndex];
}

int32_t rearToothOf(const Model& model, int row)
{
    return model.state.sprocket[model.gearTable[row].rearIndex];
}

} // namespace torvane
