#include "plan/planning.h"

#include <algorithm>

namespace torvane {

namespace {

// The planned power on another bicycle, or in another wind, against the plan.
WhatIfAnswer answerOf(const Model& model, const ParameterBlock& settings, const Course& course,
                      const PlanOptions& options, const PlannedCourse& planned, double moreWatts = 0,
                      double headWind = 0)
{
    Planning planning(model, settings, course, options, nullptr, headWind);
    PowerProfile profile = planned.profile;
    for (double& watts : profile.watts)
        watts += watts > 0 ? moreWatts : 0; // who rests there goes on resting
    CourseRide ride = planning.ride(profile);
    return {.seconds = ride.seconds - planned.ride.seconds,
            .lowestCadence = ride.lowestCadence,
            .walkMetres = ride.walkMetres};
}

// The largest sprocket larger by as much as it leads the one before.
int32_t largerSprocket(const ModelState& m)
{
    constexpr int32_t largest = 60; // teeth; as many as there are
    int32_t last = m.sprocket[m.sprocketCount - 1];
    int32_t lead = m.sprocketCount > 1 ? last - m.sprocket[m.sprocketCount - 2] : 2;
    return std::min(largest, last + std::max(2, lead));
}

} // namespace

std::array<WhatIfAnswer, whatIfCount> whatIfs(const Model& model, const ParameterBlock& settings, const Course& course,
                                              const PlanOptions& options, const PlannedCourse& planned)
{
    constexpr double watts = 10, kilograms = 1, wind = 2, dragLeft = 0.95;
    auto with = [&](const Model& other) { return answerOf(other, settings, course, options, planned); };
    std::array<WhatIfAnswer, whatIfCount> answers;
    answers[ifMorePower] = answerOf(model, settings, course, options, planned, watts);
    answers[ifHeadWind] = answerOf(model, settings, course, options, planned, 0, wind);

    Model lighter = model;
    lighter.state.bikeWeight -= kilograms;
    lighter.state.bikeWeightExceptWheels -= kilograms;
    rebuildModel(lighter);
    answers[ifLessWeight] = with(lighter);

    Model slippery = model;
    slippery.dragFactor[static_cast<int>(Physics::ofTheRoad)] *= dragLeft;
    answers[ifLessDrag] = with(slippery);

    Model geared = model;
    int32_t& sprocket = geared.state.sprocket[geared.state.sprocketCount - 1];
    sprocket = largerSprocket(model.state);
    rebuildModel(geared);
    answers[ifLowerGear] = with(geared);
    answers[ifLowerGear].teeth = sprocket;
    return answers;
}

} // namespace torvane
