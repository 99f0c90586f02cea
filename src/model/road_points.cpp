#include "model/road_points.h"

#include "model/loads.h"
#include "model/thrust_pair.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace torvane {

namespace {

Pair pairAt(const RoadPoints::Figures& figures, size_t point)
{
    return Pair{figures[point], figures[point + 1]};
}

void setPair(RoadPoints::Figures& figures, size_t point, Pair pair)
{
    figures[point] = pair[0];
    figures[point + 1] = pair[1];
}

// On a level road most points have the slope of the one before.
bool isAsBefore(const RoadPoints& points, size_t i)
{
    auto bits = [&](size_t point) { return std::bit_cast<uint64_t>(points.inclination[point]); };
    return i > 0 && bits(i) == bits(i - 1);
}

} // namespace

// The angles first: so short, each loop has several of its calls under way.
void takeSlopes(RoadPoints& points)
{
    RoadPoints::Figures angles;
    for (size_t i = 0; i < points.count; ++i)
        angles[i] = isAsBefore(points, i) ? angles[i - 1] : slopeAngle(points.inclination[i]);
    for (size_t i = 0; i < points.count; ++i) {
        bool again = isAsBefore(points, i);
        points.sine[i] = again ? points.sine[i - 1] : std::sin(angles[i]);
        points.cosine[i] = again ? points.cosine[i - 1] : std::cos(angles[i]);
    }
}

void takeLoads(const Model& model, RoadPoints& points)
{
    for (size_t i = 0; i < points.count; i += 2) {
        Gradient<Pair> road = {pairAt(points.sine, i), pairAt(points.cosine, i)};
        WheelWeights<Pair> weights = wheelWeightsOf(model.state, road, 0.0);
        setPair(points.rollingLoad, i, rollingLoadOf(model, road, weights, rollingOf(model.state, weights)));
        setPair(points.slopeLoad, i, slopeLoadOf(model.state, road));
    }
}

void takeThrustPowers(const Model& model, Physics physics, RoadPoints& points)
{
    for (size_t i = 0; i < points.count; i += 2) {
        RoadPair road = {pairAt(points.headWind, i), pairAt(points.airRatio, i), pairAt(points.rollingLoad, i),
                         pairAt(points.slopeLoad, i)};
        setPair(points.thrustPower, i, thrustPowers(model, physics, road, pairAt(points.velocity, i)));
    }
}

void takeStagePowers(const Model& model, int stage, RoadPoints& points)
{
    for (size_t i = 0; i < points.count; i += 2) {
        StagePair stages;
        stagesBack(model.state, stages, pairAt(points.thrustPower, i),
                   angularVelocity(wheelRpmAt(model, pairAt(points.velocity, i))),
                   angularVelocity(pairAt(points.cadence, i)), NoMotor{});
        setPair(points.stagePower, i, powerOf(stages, stage));
    }
}

} // namespace torvane
