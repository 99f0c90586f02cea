#include "plan/plan_course.h"

#include "gps/track_geometry.h"
#include "plan/pacing.h"
#include "plan/power_solving.h"
#include "plan/ridden_power.h"
#include "plan/stretches.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

double firstPower(const RideConditions& conditions)
{
    const PlanOptions& options = conditions.options;
    double ofThreshold = conditions.model.state.ftp * options.ftpShare / 100;
    return std::clamp(options.effort == effortFtpShare ? ofThreshold : options.power, leastSolved, mostSolved);
}

Aim aimOf(const RideConditions& conditions)
{
    bool time = conditions.options.effort == effortTime;
    return {time, time ? conditions.options.time : firstPower(conditions)};
}

StatusCode fault(const Aim& aim)
{
    return aim.time ? planTimeOutOfReach : planPowerOutOfReach;
}

StatusCode planEven(Planning& planning, PlannedCourse& planned)
{
    double watts = firstPower(planning.conditions());
    Aim aim = aimOf(planning.conditions());
    planned.profile = constantPower(watts);
    if (planning.conditions().options.effort != effortPower && !planning.solve(planned.profile, aim, watts))
        return fault(aim);
    planned.power = planned.profile.watts[0];
    return fitOk;
}

// As even power would do it, whose normalised power then is what is spent otherwise.
StatusCode aimByEven(Planning& planning, PlannedCourse& planned, Aim& aim)
{
    if (StatusCode code = planEven(planning, planned))
        return code;
    planned.even = planning.ride(planned.profile);
    planned.evenPower = planned.power;
    aim = aimOf(planning.conditions());
    if (!aim.time)
        aim.wanted = planned.even.normalisedPower;
    return fitOk;
}

PowerProfile pacedAt(Planning& planning, double watts)
{
    bool three = planning.conditions().options.pacing == pacingThree;
    return three ? threePowers(planning.conditions(), watts) : leastTimeAt(planning, watts);
}

// Even power at the normalised power that was found, where that is another than it was solved for.
bool evenBeside(Planning& planning, PlannedCourse& planned)
{
    PowerProfile even = constantPower(planned.power);
    if (!planning.solve(even, {false, planned.power}, planned.power))
        return false;
    planned.even = planning.ride(even);
    planned.evenPower = even.watts[0];
    return true;
}

// Where the price of steady states has led astray, as on a course that is mostly walked, even power stands.
void keepFaster(Planning& planning, PlannedCourse& planned)
{
    if (planning.ride(planned.profile).seconds > planned.even.seconds)
        planned.profile = constantPower(planned.evenPower);
}

// Of a plan and even power that meet a time the one with less normalised power.
bool keepEvenIfCheaper(PlannedCourse& planned)
{
    if (planned.power < planned.even.normalisedPower)
        return false;
    planned.profile = constantPower(planned.evenPower);
    planned.power = planned.even.normalisedPower;
    return true;
}

StatusCode planPaced(Planning& planning, PlannedCourse& planned)
{
    Aim aim;
    if (StatusCode code = aimByEven(planning, planned, aim))
        return code;
    planned.power = planned.even.normalisedPower;
    int rounds = aim.time ? 2 : 1; // a time that is met with less power wants that power's plan
    for (int round = 0; round < rounds; ++round) {
        planned.profile = pacedAt(planning, planned.power);
        if (!planning.solve(planned.profile, aim, planned.power)) {
            if (planning.conditions().options.pacing == pacingThree)
                return fault(aim);
            planned.profile = constantPower(planned.evenPower); // which was solved for
        }
        planned.power = planning.ride(planned.profile).normalisedPower;
    }
    bool plans = planning.conditions().options.pacing == pacingPlan;
    if (aim.time && !(plans && keepEvenIfCheaper(planned)) && !evenBeside(planning, planned))
        return planPowerOutOfReach;
    if (plans && !aim.time)
        keepFaster(planning, planned);
    return fitOk;
}

// Most of the course lies farther from the ride than two recordings of one road do. As far as both have positions.
bool onAnotherRoad(const Course& course, const std::vector<RiddenPlace>& places)
{
    constexpr double apart = 200, degrees = 0.002; // m, which are less than so much of latitude
    constexpr size_t looks = 1000;
    if (!course.findings.hasPlaces || places.empty())
        return false;
    size_t every = course.points.size() / looks + 1, looked = 0, near = 0;
    for (size_t i = 0; i < course.points.size(); i += every, ++looked) {
        const CoursePoint& point = course.points[i];
        near += std::ranges::any_of(places, [&](const RiddenPlace& place) {
            return std::fabs(place.latitude - point.latitude) < degrees &&
                   greatCircleDistance(place.latitude, place.longitude, point.latitude, point.longitude) < apart;
        });
    }
    return 2 * near < looked;
}

StatusCode planAsRidden(Planning& planning, PlannedCourse& planned, Progress* progress)
{
    const RideConditions& conditions = planning.conditions();
    RiddenPower ridden;
    if (StatusCode code = readRiddenPower(conditions.options.asRidden, ridden, progress))
        return code;
    planned.onAnotherRoad = onAnotherRoad(conditions.course, ridden.places);
    double length = conditions.course.length;
    constexpr double same = 0.05; // two recordings of one road differ by less
    bool sameRoad = std::fabs(ridden.length / length - 1) < same;
    planned.profile = ridden.profile;
    planned.profile.step *= sameRoad ? length / ridden.length : 1;
    planned.coveredShare = sameRoad ? 1 : std::min(1.0, ridden.length / length);
    constexpr double most = 0.5;
    return planned.coveredShare < most ? planWithoutPower : fitOk;
}

void tellThree(const RideConditions& conditions, PlannedCourse& planned)
{
    for (size_t i = 0; i < conditions.course.points.size(); ++i)
        planned.threePowers[static_cast<size_t>(slopeClassOf(conditions.options, conditions.course.points[i].slope))] =
            planned.profile.watts[i];
}

double mostOf(const PowerProfile& profile)
{
    return *std::ranges::max_element(profile.watts);
}

void scalePowers(std::vector<Stretch>& stretches, double factor)
{
    for (Stretch& stretch : stretches)
        stretch.power *= factor;
}

// Where its own stretches are faster than a plan, they are the plan; a time that is wanted stays met, with less power.
void followStretches(Planning& planning, PlannedCourse& planned, const PowerProfile& profile)
{
    PlannedCourse followed = planned;
    followed.profile = profile;
    Aim aim = aimOf(planning.conditions());
    if (aim.time && !planning.solve(followed.profile, aim, planned.power))
        return;
    followed.ride = planning.ride(followed.profile, true);
    followed.power = followed.ride.normalisedPower;
    followed.stretchSeconds = followed.ride.movingSeconds;
    if (aim.time && !evenBeside(planning, followed))
        return;
    scalePowers(followed.stretches, mostOf(followed.profile) / mostOf(profile));
    planned = std::move(followed);
}

// The stretches with the powers that, kept to, come to the same normalised power.
void tellStretches(Planning& planning, PlannedCourse& planned)
{
    const RideConditions& conditions = planning.conditions();
    size_t most = static_cast<size_t>(conditions.options.stretches);
    double leastPower = conditions.options.least / 100 * planned.ride.normalisedPower;
    planned.stretches = stretchesOf(planned.ride, conditions.course.length, most, leastPower);
    PowerProfile profile = profileOf(planned.stretches);
    double before = mostOf(profile);
    if (before > 0 && planning.solve(profile, {false, planned.ride.normalisedPower}, planned.power)) {
        planned.stretchSeconds = planning.ride(profile).movingSeconds;
        scalePowers(planned.stretches, mostOf(profile) / before);
    }
    if (planned.stretchSeconds == 0 || planned.stretchSeconds >= planned.even.movingSeconds) {
        planned.stretches = {{0, conditions.course.length, planned.even.pedalSeconds, planned.evenPower}};
        planned.stretchSeconds = planned.even.movingSeconds;
    } else if (planned.stretchSeconds < planned.ride.movingSeconds) {
        followStretches(planning, planned, profile);
    }
}

// Riders give a power as the mean of a ride or as its normalised power, and do not always know which.
void tellBand(Planning& planning, PlannedCourse& planned)
{
    constexpr double leastRatio = 1.02, calibrated = 0.05, uncalibrated = 0.10;
    const CourseRide& ride = planned.ride;
    double ratio = ride.meanPower > 0 ? std::max(leastRatio, ride.normalisedPower / ride.meanPower) : leastRatio;
    int32_t effort = planning.conditions().options.effort;
    bool isNormalised = effort == effortNormalised || effort == effortFtpShare ||
                        (planning.conditions().options.pacing != pacingEven && effort != effortAsRidden);
    double other = planning.ride(scaled(planned.profile, isNormalised ? ratio : 1 / ratio)).movingSeconds;
    double wider = isTaught(planning.conditions().model.calibration) ? calibrated : uncalibrated;
    planned.fastest = std::min(other, ride.movingSeconds) * (1 - wider);
    planned.slowest = std::max(other, ride.movingSeconds) * (1 + wider);
}

StatusCode planEffort(Planning& planning, PlannedCourse& planned, Progress* progress)
{
    const PlanOptions& options = planning.conditions().options;
    if (options.effort == effortAsRidden) {
        StatusCode code = planAsRidden(planning, planned, progress);
        planned.unfitRide = code != fitOk ? options.asRidden : std::string();
        return code;
    }
    return options.pacing == pacingEven ? planEven(planning, planned) : planPaced(planning, planned);
}

} // namespace

StatusCode planCourse(const Model& model, const ParameterBlock& settings, const Course& course,
                      const PlanOptions& options, PlannedCourse& planned, Progress* progress)
{
    planned = {};
    Planning planning(model, settings, course, options, progress);
    if (StatusCode code = planEffort(planning, planned, progress))
        return code;
    planned.ride = planning.ride(planned.profile, true);
    planned.stopsLeftOut = static_cast<size_t>(
        std::ranges::count_if(options.stops, [&](const Stop& stop) { return stop.distance >= course.length; }));
    if (options.effort == effortAsRidden)
        planned.power = planned.ride.normalisedPower;
    else if (options.pacing == pacingThree)
        tellThree(planning.conditions(), planned);
    else if (options.pacing == pacingPlan)
        tellStretches(planning, planned);
    tellBand(planning, planned);
    return planning.fault;
}

} // namespace torvane
