#include "plan/planning.h"

#include "plan/pacing.h"
#include "plan/power_solving.h"

#include <algorithm>

namespace torvane {

PlanOptions withStops(const PlanOptions& options, double length)
{
    PlanOptions all = options;
    for (int32_t i = 0; i < options.evenStops; ++i)
        all.stops.push_back({length * (i + 1) / (options.evenStops + 1), options.evenStopSeconds});
    std::ranges::sort(all.stops, {}, &Stop::distance);
    all.evenStops = 0;
    return all;
}

Model inAirOf(const Model& model, const PlanOptions& options)
{
    Model air = model;
    air.state.temperature = options.temperature.value_or(model.state.temperature);
    return air;
}

CourseRide Planning::ride(const PowerProfile& profile, bool keepsSteps)
{
    constexpr int most = 40; // rides, of a plan that solves for everything
    CourseRide done;
    if (StatusCode code = rideCourse(ridden, profile, done, keepsSteps))
        fault = code;
    reportProgress(progress, std::min(100, 100 * ++rides / most));
    return done;
}

bool Planning::solve(PowerProfile& profile, const Aim& aim, double watts)
{
    auto factor = solveFactor(watts, aim.wanted, !aim.time, [&](double by) {
        CourseRide done = ride(scaled(profile, by));
        return aim.time ? done.seconds : done.normalisedPower;
    });
    if (factor)
        profile = scaled(profile, *factor);
    return factor.has_value();
}

} // namespace torvane
