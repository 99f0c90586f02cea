#include "plan/pacing.h"

namespace torvane {

namespace {

double shareOf(const PlanOptions& options, double slope)
{
    const double shares[] = {options.steepShare, options.flatShare, options.downShare};
    return shares[slopeClassOf(options, slope)] / 100;
}

} // namespace

int slopeClassOf(const PlanOptions& options, double slope)
{
    if (slope > options.steepFrom)
        return 0;
    return slope < options.downBelow ? 2 : 1;
}

PowerProfile threePowers(const RideConditions& conditions, double watts)
{
    PowerProfile profile = {conditions.course.step, {}};
    for (const CoursePoint& point : conditions.course.points)
        profile.watts.push_back(watts * shareOf(conditions.options, point.slope));
    return profile;
}

PowerProfile scaled(const PowerProfile& profile, double factor)
{
    PowerProfile more = profile;
    for (double& watts : more.watts)
        watts *= factor;
    return more;
}

} // namespace torvane
