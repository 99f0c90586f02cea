#include "plan/plan_course.h"

#include "core/calibration.h"
#include "plan/pacing.h"
#include "plan/power_solving.h"
#include "plan/ridden_power.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

// The planned ride on its way; what every part of it reads.
struct Planning {
    RideConditions conditions;
    PlannedCourse& planned;

    const PlanOptions& options() const
    {
        return conditions.options;
    }
    CourseRide ride(const PowerProfile& profile, bool keepsSteps = false) const
    {
        CourseRide ridden;
        rideCourse(conditions, profile, ridden, keepsSteps);
        return ridden;
    }
};

double firstPower(const Planning& planning)
{
    const PlanOptions& options = planning.options();
    if (options.effort == effortFtpShare)
        return std::max(leastSolved, planning.conditions.model.state.ftp * options.ftpShare / 100);
    return options.power;
}

double reachedBy(const CourseRide& ride, bool time)
{
    return time ? ride.seconds : ride.normalisedPower;
}

StatusCode planEven(Planning& planning)
{
    PlannedCourse& planned = planning.planned;
    planned.power = firstPower(planning);
    planned.profile = constantPower(planned.power);
    if (planning.options().effort == effortPower)
        return fitOk;
    bool time = planning.options().effort == effortTime;
    double wanted = time ? planning.options().time : planned.power;
    auto factor = solveFactor(planned.power, wanted, !time,
                              [&](double by) { return reachedBy(planning.ride(scaled(planned.profile, by)), time); });
    if (!factor)
        return time ? planTimeOutOfReach : planPowerOutOfReach;
    planned.power *= *factor;
    planned.profile = scaled(planned.profile, *factor);
    return fitOk;
}

} // namespace

StatusCode planCourse(const Model& model, const ParameterBlock& settings, const Course& course,
                      const PlanOptions& options, PlannedCourse& planned, Progress*)
{
    planned = {};
    Planning planning = {{model, settings, course, options}, planned};
    StatusCode code = planEven(planning);
    if (code == fitOk)
        planned.ride = planning.ride(planned.profile, true);
    return code;
}

std::array<WhatIfAnswer, whatIfCount> whatIfs(const Model&, const ParameterBlock&, const Course&, const PlanOptions&,
                                              const PlannedCourse&)
{
    return {};
}

} // namespace torvane
