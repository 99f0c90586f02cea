#include "model/gear_table.h"

#include "model/constants.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

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

GearOrder orderOf(const GearEntry* table, int rows)
{
    int32_t sorted[gearTableCapacity];
    std::iota(sorted, sorted + rows, 0);
    std::stable_sort(sorted, sorted + rows, [=](int a, int b) { return table[a].ratio < table[b].ratio; });
    GearOrder order = {};
    for (int i = 0; i < rows; ++i) {
        double ratio = table[sorted[i]].ratio;
        if (order.count > 0 && order.rising[order.count - 1] == ratio)
            continue;
        order.rising[order.count] = ratio;
        order.row[order.count++] = sorted[i];
    }
    return order;
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
    model.gearOrder = orderOf(gearTable, rows);
    model.reachVelocity = gearTable[rows - 1].velocityMax;
}

// Distances rise from the ratio on either side: only its two neighbours can be the nearest.
int nearerGear(const GearOrder& order, int place, double ratio)
{
    int nearest = place;
    double distance = std::fabs(order.rising[place] - ratio);
    if (place + 1 < order.count) {
        double above = std::fabs(order.rising[place + 1] - ratio);
        bool isEarlier = order.row[place + 1] < order.row[place];
        if (above < distance || (above == distance && isEarlier)) {
            nearest = place + 1;
            distance = above;
        }
    }
    return distance < 1000.0 ? order.row[nearest] : 0;
}

int nearestGear(const Model& model, double ratio)
{
    const GearOrder& order = model.gearOrder;
    const double* above = std::upper_bound(order.rising, order.rising + order.count, ratio);
    return nearerGear(order, std::max(static_cast<int>(above - order.rising) - 1, 0), ratio);
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
