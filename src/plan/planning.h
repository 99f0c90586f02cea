// A plan on its way: what every part of it reads, and the rides that it tries.
#pragma once

#include "plan/plan_course.h"

namespace torvane {

// What the ride is to come to, by as much power as that takes.
struct Aim {
    bool time = false; // s; else normalised power, W
    double wanted = 0;
};

// The options with all stops in one list, in the order of the way.
PlanOptions withStops(const PlanOptions& options, double length);
// The model in the temperature that the options want.
Model inAirOf(const Model& model, const PlanOptions& options);

class Planning {
public:
    Planning(const Model& model, const ParameterBlock& settings, const Course& course, const PlanOptions& options,
             Progress* moved = nullptr, double extraHeadWind = 0)
        : own(withStops(options, course.length)),
          air(inAirOf(model, options)), ridden{air, settings, course, own, extraHeadWind}, progress(moved)
    {
    }
    Planning(const Planning&) = delete;
    Planning& operator=(const Planning&) = delete;

    const RideConditions& conditions() const
    {
        return ridden;
    }

    CourseRide ride(const PowerProfile& profile, bool keepsSteps = false);

    // Scales a profile until its ride comes to the aim; false where no power of a rider does.
    bool solve(PowerProfile& profile, const Aim& aim, double watts);

    StatusCode fault = fitOk; // of a ride that did not come to its end

private:
    PlanOptions own;
    Model air;
    RideConditions ridden;
    Progress* progress;
    int rides = 0;
};

} // namespace torvane
