#include "plan/point_mass.h"

#include "plan/road_ahead.h"
#include "plan/steady_road.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double stepLength = 10; // m
constexpr auto stepsPerCell = static_cast<size_t>(PointMass::cellLength / stepLength);
constexpr double leastSpeed = 1; // m/s; nobody is slower, on foot
constexpr double window = 30;    // s, of normalised power

double fourth(double value)
{
    return value * value * value * value;
}

} // namespace

PointMass::PointMass(const RideConditions& ride, double watts)
    : mass(ride.model.state.inertialWeight), reach(ride.model.reachVelocity), topSpeed(ride.options.topSpeed)
{
    constexpr double slow = 4, middle = 8, fast = 14; // m/s, that the parabola goes through
    RoadAhead road(ride);
    PlanOptions rolling = ride.options;
    rolling.stops.clear(); // who sets off is paced as anywhere else
    std::vector<double> limits = speedLimits({ride.model, ride.settings, ride.course, rolling});
    steps.resize(std::max<size_t>(1, static_cast<size_t>(ride.course.length / stepLength)));
    for (size_t i = 0; i < steps.size(); ++i) {
        double at = static_cast<double>(i) * stepLength;
        road.go(at, stepLength);
        auto force = [&](double speed) { return road.resistance(speed) / speed; };
        double rise = (force(middle) - force(slow)) / (middle - slow);
        double square = ((force(fast) - force(middle)) / (fast - middle) - rise) / (fast - slow);
        double linear = rise - square * (middle + slow);
        double still = force(slow) - slow * (linear + slow * square);
        double limit = std::max(leastSpeed, limits[pointAt(ride.course, at + stepLength)]);
        steps[i] = {still, linear, square, limit, road.now.slopeLoad < 0, 0, 0, 0, 0, 0};
    }
    SteadyRoad start(ride);
    start.go(0, stepLength);
    startSpeed = std::clamp(start.speedFor(watts, middle), leastSpeed, steps[0].limit);
    road.go(0, stepLength);
    passed = road.thrustFor(watts, middle) / watts;
    slowest = road.slowest();
}

size_t PointMass::cells() const
{
    return (steps.size() + stepsPerCell - 1) / stepsPerCell;
}

// As in the ride over time: legs rest in front of brakes, where the road alone leads to the top speed, and beyond the
// highest gear's reach.
double PointMass::legsLeft(size_t index, double wanted) const
{
    constexpr double soon = 2, last = 0.05, beyondReach = 0.02; // s, shares
    const Step& step = steps[index];
    double speed = step.from;
    size_t ahead = std::min(index + static_cast<size_t>(speed * soon / stepLength), steps.size() - 1);
    double allowed = std::min(step.limit, steps[ahead].limit);
    double left = std::clamp((allowed / speed - 1) / last, 0.0, 1.0);
    left *= std::clamp((1 - speed / reach) / beyondReach + 1, 0.0, 1.0);
    if (step.down && wanted > 0)
        left *= std::clamp(2 * step.resistance(topSpeed) * topSpeed / wanted, 0.0, 1.0);
    return left;
}

// The speed at the end by energy: first with the forces at the start, then with those of the mean speed.
void PointMass::roll(Step& step, double power)
{
    double mean = step.from;
    for (int round = 0; round < 2; ++round) {
        double force = passed * power / std::max(mean, slowest) - step.resistance(mean);
        double square = step.from * step.from + 2 * stepLength * force / mass;
        step.to = std::min(step.limit, std::sqrt(std::max(leastSpeed * leastSpeed, square)));
        mean = (step.from + step.to) / 2;
    }
    step.power = power;
}

void PointMass::ride(const std::vector<double>& powers)
{
    double speed = startSpeed, time = 0;
    for (size_t i = 0; i < steps.size(); ++i) {
        Step& step = steps[i];
        double wanted = powers[i / stepsPerCell];
        step.from = speed;
        roll(step, wanted * legsLeft(i, wanted));
        speed = step.to;
        step.time = time += 2 * stepLength / (step.from + step.to);
    }
    seconds = time;
    tellNormalised();
}

void PointMass::tellNormalised()
{
    double held = 0, fourths = 0, last = 0, lost = 0; // J in the window; s where the window begins
    size_t first = 0;
    for (Step& step : steps) {
        double span = step.time - last;
        held += step.power * span;
        last = step.time;
        while (steps[first].time < step.time - window) {
            held -= steps[first].power * (steps[first].time - lost);
            lost = steps[first++].time;
        }
        if (double begin = step.time - window; begin > lost) {
            held -= steps[first].power * (begin - lost);
            lost = begin;
        }
        step.mean30 = held / std::min(step.time, window);
        fourths += fourth(step.mean30) * span;
    }
    normalisedPower = std::sqrt(std::sqrt(fourths / seconds));
}

// J/kg of kinetic energy that a m/s more of a step's mean speed leaves less at its end.
double PointMass::bendOf(const Step& step) const
{
    double mean = (step.from + step.to) / 2;
    double drive = mean > slowest ? passed * step.power / (mean * mean) : 0;
    return stepLength / mass * (drive + step.linear + 2 * mean * step.square);
}

// Of what is wanted in a step what is pedalled there.
double PointMass::shareOf(const Step& step, double wanted)
{
    return wanted > 0 ? step.power / wanted : 1;
}

// s that a m/s more at either end of a step saves.
double PointMass::savedBy(const Step& step)
{
    double mean = (step.from + step.to) / 2;
    return stepLength / (2 * mean * mean);
}

// Back from the end: what a J/kg more of kinetic energy saves of the seconds that are left. At the end it is worth what
// it would be if the road went on as it is there, so that nobody rests in front of a finish.
void PointMass::addTime(const std::vector<double>& powers, Gradient& gradient) const
{
    double worth = 2 * savedBy(steps.back()) / std::max(bendOf(steps.back()), 1e-3); // s per J/kg
    for (size_t i = steps.size(); i-- > 0;) {
        const Step& step = steps[i];
        bool braked = step.to >= step.limit || step.to <= leastSpeed;
        double saved = savedBy(step), half = bendOf(step) / 2, own = 1 + half / step.to;
        double behind = braked ? 0 : worth + saved / step.to;
        double share = shareOf(step, powers[i / stepsPerCell]);
        double driven = std::max((step.from + step.to) / 2, slowest);
        gradient.seconds[i / stepsPerCell] -= behind * stepLength * passed / (driven * mass) / own * share;
        worth = behind * (1 - half / step.from) / own + saved / step.from;
    }
}

// A W more in a step is in all windows that end within the next 30 s; beyond the end these go on as the last one is. A
// little is by the step alone: else powers that change faster than the window would cost nothing, and nobody pedals so.
void PointMass::addNormalised(const std::vector<double>& powers, Gradient& gradient) const
{
    constexpr double ofStep = 0.03;
    double cubes = 0, last = 0; // W3s of the means that end in the window ahead; s
    size_t next = 0;
    double perShare = fourth(normalisedPower) * seconds * window;
    double lastMean = steps.back().mean30, lastCube = lastMean * lastMean * lastMean;
    auto cubeTime = [this](size_t i) {
        double mean = steps[i].mean30;
        return mean * mean * mean * (steps[i].time - (i > 0 ? steps[i - 1].time : 0));
    };
    for (size_t i = 0; i < steps.size(); ++i) {
        for (; next < steps.size() && steps[next].time < last + window; ++next)
            cubes += cubeTime(next);
        double span = steps[i].time - last, beyond = std::max(0.0, last + window - seconds);
        double power = steps[i].power, alone = power * power * power * window;
        double inWindows = (1 - ofStep) * (cubes + beyond * lastCube) + ofStep * alone;
        double share = shareOf(steps[i], powers[i / stepsPerCell]);
        gradient.normalised[i / stepsPerCell] += inWindows * span / perShare * share;
        gradient.pedalled[i / stepsPerCell] += span * share;
        cubes -= cubeTime(i);
        last = steps[i].time;
    }
}

PointMass::Gradient PointMass::gradient(const std::vector<double>& powers) const
{
    std::vector<double> none(cells(), 0);
    Gradient gradient = {none, none, none};
    addTime(powers, gradient);
    addNormalised(powers, gradient);
    return gradient;
}

} // namespace torvane
