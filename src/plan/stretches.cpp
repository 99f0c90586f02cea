#include "plan/stretches.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace torvane {

namespace {

constexpr double leastCell = 100; // m
constexpr size_t mostCells = 400;
constexpr double leastStretch = 300; // m; nobody looks at a power for less

// Sums from the start to the end of a cell of the road.
struct Sums {
    double seconds = 0, work = 0, squares = 0; // s, J, W2s
};

std::vector<Sums> cellsOf(const CourseRide& ride, double length, size_t count)
{
    std::vector<Sums> sums(count + 1);
    for (size_t i = 1; i < ride.steps.size(); ++i) {
        const CourseStep& step = ride.steps[i];
        if (step.going != Going::pedalling) // who coasts does so in any stretch
            continue;
        double seconds = step.time - ride.steps[i - 1].time;
        size_t cell = static_cast<size_t>(step.distance / length * static_cast<double>(count));
        Sums& sum = sums[std::min(cell, count - 1) + 1];
        sum.seconds += seconds;
        sum.work += step.power * seconds;
        sum.squares += step.power * step.power * seconds;
    }
    for (size_t i = 1; i <= count; ++i) {
        sums[i].seconds += sums[i - 1].seconds;
        sums[i].work += sums[i - 1].work;
        sums[i].squares += sums[i - 1].squares;
    }
    return sums;
}

// Squares about the mean of the cells from one to the one before another.
double spreadOf(const Sums& from, const Sums& to)
{
    double seconds = to.seconds - from.seconds, work = to.work - from.work;
    return seconds > 0 ? to.squares - from.squares - work * work / seconds : 0;
}

// Ends of the cells' best cuts into `pieces` of `shortest` cells or more, the last one at the end.
std::vector<size_t> bestCuts(const std::vector<Sums>& sums, size_t pieces, size_t shortest)
{
    size_t count = sums.size() - 1;
    std::vector<double> costs(count + 1, std::numeric_limits<double>::infinity());
    costs[0] = 0;
    std::vector<std::vector<size_t>> cutBefore(pieces, std::vector<size_t>(count + 1, 0));
    for (size_t piece = 0; piece < pieces; ++piece) {
        std::vector<double> next(count + 1, std::numeric_limits<double>::infinity());
        for (size_t end = (piece + 1) * shortest; end <= count; ++end)
            for (size_t start = piece * shortest; start + shortest <= end; ++start)
                if (double cost = costs[start] + spreadOf(sums[start], sums[end]); cost < next[end]) {
                    next[end] = cost;
                    cutBefore[piece][end] = start;
                }
        costs = std::move(next);
    }
    std::vector<size_t> ends = {count};
    for (size_t piece = pieces; piece-- > 1;)
        ends.push_back(cutBefore[piece][ends.back()]);
    std::ranges::reverse(ends);
    return ends;
}

// Legs that rest now and then, as before bends, make a mean that nobody holds: it is the least power, or a rest.
double heldPower(double mean, double leastPower)
{
    return mean < leastPower / 2 ? 0 : std::max(mean, leastPower);
}

// Neighbours that a rider would not tell apart are one.
void addStretch(std::vector<Stretch>& stretches, const Stretch& stretch)
{
    constexpr double same = 0.03; // of the power
    if (stretches.empty() || std::fabs(stretches.back().power - stretch.power) > same * stretch.power) {
        stretches.push_back(stretch);
        return;
    }
    Stretch& last = stretches.back();
    double work = last.power * last.seconds + stretch.power * stretch.seconds;
    last.seconds += stretch.seconds;
    last.to = stretch.to;
    last.power = last.seconds > 0 ? work / last.seconds : 0;
}

} // namespace

std::vector<Stretch> stretchesOf(const CourseRide& ride, double length, size_t most, double leastPower)
{
    size_t count = std::clamp<size_t>(static_cast<size_t>(length / leastCell), 1, mostCells);
    std::vector<Sums> sums = cellsOf(ride, length, count);
    std::vector<Stretch> stretches;
    double cell = length / static_cast<double>(count);
    size_t shortest = std::min(static_cast<size_t>(std::ceil(leastStretch / cell)), count);
    size_t start = 0;
    for (size_t end : bestCuts(sums, std::min(most, count / shortest), shortest)) {
        double seconds = sums[end].seconds - sums[start].seconds;
        double work = sums[end].work - sums[start].work;
        addStretch(stretches, {static_cast<double>(start) * cell, static_cast<double>(end) * cell, seconds,
                               seconds > 0 ? heldPower(work / seconds, leastPower) : 0});
        start = end;
    }
    return stretches;
}

PowerProfile profileOf(const std::vector<Stretch>& stretches)
{
    constexpr double step = 10; // m
    PowerProfile profile = {step, {}};
    for (const Stretch& stretch : stretches)
        profile.watts.resize(static_cast<size_t>(std::lround(stretch.to / step)), stretch.power);
    return profile;
}

} // namespace torvane
