#include "plan/pacing.h"

#include "plan/least_time.h"
#include "plan/refined_pacing.h"

#include <array>
#include <cmath>

namespace torvane {

namespace {

double shareOf(const PlanOptions& options, double slope)
{
    const double shares[] = {options.steepShare, options.flatShare, options.downShare};
    return shares[slopeClassOf(options, slope)] / 100;
}

// Part of the way from even power to a plan; who coasts there does so.
PowerProfile eased(const PowerProfile& plan, double watts, double part)
{
    PowerProfile profile = plan;
    for (double& power : profile.watts)
        if (power > 0)
            power = watts + (power - watts) * part;
    return profile;
}

struct Manner {
    double slopesOver; // m
    std::array<double, 2> parts;
};
constexpr Manner manners[] = {{100, {1.0, 0.7}}, {400, {1.0, 0.7}}, {800, {1.0, 1.15}}};

// The steady state knows no momentum: on short hills less of it, or the slopes of more road at once, are faster; the
// point of mass knows it, but is a rougher likeness of the rider. Held against each other by what their rides would
// take at the same normalised power.
struct Trials {
    Planning& planning;
    double watts;
    double flatter; // by how much time falls with power, as logarithms
    PowerProfile best = {};
    double bestSeconds = 0;

    void hold(const PowerProfile& profile)
    {
        CourseRide ride = planning.ride(profile);
        double seconds = ride.movingSeconds * std::pow(ride.normalisedPower / watts, flatter);
        if (bestSeconds == 0 || seconds < bestSeconds) {
            bestSeconds = seconds;
            best = profile;
        }
    }
};

double fallOfTime(Planning& planning, double watts, double seconds, double normalised)
{
    constexpr double more = 1.02;
    CourseRide faster = planning.ride(constantPower(watts * more));
    return -std::log(faster.movingSeconds / seconds) / std::log(faster.normalisedPower / normalised);
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

PowerProfile leastTimeAt(Planning& planning, double watts)
{
    CourseRide even = planning.ride(constantPower(watts));
    Trials trials = {planning, watts, fallOfTime(planning, watts, even.movingSeconds, even.normalisedPower)};
    trials.hold(constantPower(watts));
    for (const Manner& manner : manners) {
        PowerProfile plan = LeastTime(planning.conditions(), watts, manner.slopesOver).solve();
        for (double part : manner.parts)
            trials.hold(eased(plan, watts, part));
    }
    trials.hold(refinedPacing(planning.conditions(), watts));
    return trials.best;
}

PowerProfile scaled(const PowerProfile& profile, double factor)
{
    PowerProfile more = profile;
    for (double& watts : more.watts)
        watts *= factor;
    return more;
}

} // namespace torvane
