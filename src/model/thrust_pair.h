// The power of two velocities side by side, each rounded as resistance.h and drivetrain.h round it alone. Internal to
// the model: callers use road_grid.h and road_points.h.
#pragma once

#include "model/drag.h"
#include "model/drivetrain_chain.h"
#include "model/resistance.h"

namespace torvane {

// Road and air of two points, as an Evaluation holds them of one.
struct RoadPair {
    Pair headWind, airRatio, rollingLoad, slopeLoad;
};

inline Pair pelotonRatios(const Model& model, Pair air)
{
    if (model.state.pelotonMode == pelotonEntered)
        return Pair{} + model.state.pelotonRatio;
    return Pair{pelotonRatioAt(model, air[0]), pelotonRatioAt(model, air[1])};
}

// As resistanceAtVelocity. Road: an Evaluation that holds for both, or a RoadPair.
template <class Road>
Pair thrustPowers(const Model& model, Physics physics, const Road& road, Pair velocity)
{
    Pair air = road.headWind + velocity;
    DragForces<Pair> drag = dragOf(model, model.dragFactor[static_cast<int>(physics)], air);
    Pair airDrag = drag.shell + drag.human + drag.wheel;
    Pair density = road.airRatio * pelotonRatios(model, air);
    Pair perForce = dragVelocity(physics, air, velocity) * density * standardGravity;
    Pair rolling = road.rollingLoad * velocity * standardGravity;
    return rolling + airDrag * perForce + road.slopeLoad * velocity * standardGravity;
}

struct StagePair {
    Pair pedalingPower, pedalingTorque, crankPower, crankTorque, hubPower, hubTorque, thrustPower, thrustTorque;
};

inline Pair powerOf(const StagePair& stages, int stage)
{
    if (stage == stagePedaling)
        return stages.pedalingPower;
    if (stage == stageCrank)
        return stages.crankPower;
    return stage == stageHub ? stages.hubPower : stages.thrustPower;
}

inline Pair wheelRpmAt(const Model& model, Pair velocity)
{
    return velocity * mmPerMinute / model.state.rearCircumference;
}

inline Pair angularVelocity(Pair rpm)
{
    return rpm / 60.0 * 2.0 * pi;
}

} // namespace torvane
