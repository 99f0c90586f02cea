#include "plan/least_time.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace torvane {

namespace {

constexpr double partLength = 50; // m

double fourth(double share)
{
    return share * share * share * share;
}

// m/s, mean of what the road allows there; nobody plans to pedal where a stop is.
double limitOver(const RideConditions& ride, const std::vector<double>& limits, double from, double to)
{
    size_t first = pointAt(ride.course, from), last = pointAt(ride.course, to);
    double sum = 0;
    for (size_t i = first; i <= last; ++i)
        sum += limits[i];
    return std::max(1.0, sum / static_cast<double>(last - first + 1));
}

// Vertex of the parabola through three values one apart, from the middle one.
double vertexOf(double before, double middle, double behind)
{
    double bend = before - 2 * middle + behind;
    return bend > 0 ? std::clamp((before - behind) / (2 * bend), -0.5, 0.5) : 0;
}

double parabolaAt(double before, double middle, double behind, double offset)
{
    return middle + offset * ((behind - before) / 2 + offset * (before - 2 * middle + behind) / 2);
}

} // namespace

LeastTime::LeastTime(const RideConditions& ride, double power, double slopesOver)
    : watts(power), least(ride.options.least / 100), most(ride.options.most / 100)
{
    SteadyRoad road(ride);
    std::vector<double> limits = speedLimits(ride);
    double length = ride.course.length, way = std::min(slopesOver, length);
    for (double from = 0; from < length; from += partLength) {
        double metres = std::min(partLength, length - from);
        road.go(std::clamp(from + (metres - way) / 2, 0.0, length - way), way);
        parts.push_back(partOf(road, metres, limitOver(ride, limits, from, from + metres), ride.model.reachVelocity));
    }
}

LeastTime::Part LeastTime::partOf(SteadyRoad& road, double metres, double limit, double reach) const
{
    constexpr double guess = 8; // m/s
    double high = road.speedFor(most * watts, guess);
    double low = std::max(road.speedFor(least * watts, high), std::min(road.slowest(), high));
    double coasting = road.speedFor(0, low);
    double fastest = std::min(limit, std::max(coasting, reach));
    Part part;
    part.share[0] = 0;
    part.seconds[0] =
        coasting >= fastDescent ? metres / std::min(coasting, limit) : std::numeric_limits<double>::infinity();
    for (size_t i = 1; i < choices; ++i) {
        double speed = low + (high - low) * static_cast<double>(i - 1) / (choices - 2);
        part.share[i] = std::clamp(road.powerAt(speed) / watts, least, most);
        part.seconds[i] = metres / std::min(speed, fastest);
    }
    return part;
}

// The price of a share of the fourth power is in the time that the part takes.
LeastTime::Choice LeastTime::bestOf(const Part& part, double price)
{
    std::array<double, choices> costs;
    for (size_t i = 0; i < choices; ++i)
        costs[i] = part.seconds[i] * (1 + price * (fourth(part.share[i]) - 1));
    size_t best = static_cast<size_t>(std::ranges::min_element(costs) - costs.begin());
    if (best < 2 || best + 1 == choices)
        return {part.seconds[best], part.share[best]};
    double offset = vertexOf(costs[best - 1], costs[best], costs[best + 1]);
    return {parabolaAt(part.seconds[best - 1], part.seconds[best], part.seconds[best + 1], offset),
            parabolaAt(part.share[best - 1], part.share[best], part.share[best + 1], offset)};
}

double LeastTime::excessAt(double price) const
{
    double excess = 0;
    for (const Part& part : parts) {
        Choice choice = bestOf(part, price);
        excess += choice.seconds * (fourth(choice.share) - 1);
    }
    return excess;
}

PowerProfile LeastTime::solve() const
{
    double low = 1e-3, high = 1; // prices; on the level it comes to 1/12, on a wall to 1/4
    for (int round = 0; round < 40; ++round) {
        double middle = std::sqrt(low * high);
        (excessAt(middle) > 0 ? low : high) = middle;
    }
    PowerProfile profile = {partLength, {}};
    for (const Part& part : parts)
        profile.watts.push_back(watts * bestOf(part, high).share);
    return profile;
}

} // namespace torvane
