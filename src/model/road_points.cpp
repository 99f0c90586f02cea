#include "model/road_points.h"

#include "model/loads.h"
#include "model/thrust_pair.h"

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

} // namespace

void setRoad(RoadPoints& points, size_t point, Evaluation& e)
{
    const Slope& slope = slopeOf(e);
    points.headWind[point] = e.headWind;
    points.airRatio[point] = e.airRatio;
    points.sine[point] = slope.sine;
    points.cosine[point] = slope.cosine;
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
