#include "plan/drag_fit.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace torvane {

namespace {

constexpr double factorPrior = 0.6, windPrior = 2; // standard deviations; m/s
constexpr double huberReach = 1.345, tukeyReach = 4.685;
constexpr double perMedian = 1.4826; // of a normal distribution's absolute values
constexpr double leastFactor = 0.05;
constexpr double wholeWindow = 60; // s, of weight 1

enum class Robust { huber, tukey };

double weightOf(Robust robust, double scaled)
{
    double size = std::fabs(scaled);
    if (robust == Robust::huber)
        return size <= huberReach ? 1 : huberReach / size;
    double inner = 1 - (size / tukeyReach) * (size / tukeyReach);
    return inner > 0 ? inner * inner : 0;
}

double residual(const EnergyWindow& window, double factor, const Wind& wind, double rollingShare)
{
    return window.thrust - window.predicted(factor, wind, rollingShare);
}

double spreadOf(std::span<const RideWindows> rides, const DragFit& fit, double rollingShare)
{
    std::vector<double> sizes;
    for (size_t ride = 0; ride < rides.size(); ++ride)
        for (const EnergyWindow& window : rides[ride].windows)
            sizes.push_back(std::fabs(residual(window, fit.factor, fit.winds[ride], rollingShare)));
    if (sizes.empty())
        return 1;
    auto middle = sizes.begin() + static_cast<ptrdiff_t>(sizes.size() / 2);
    std::ranges::nth_element(sizes, middle);
    return std::max(1.0, perMedian * *middle);
}

// Sums of one ride over its windows: of the factor (f) and the two components of the wind.
struct Normal {
    double ff = 0, fe = 0, fn = 0, ee = 0, en = 0, nn = 0;
    double f = 0, e = 0, n = 0; // right-hand side
};

void add(Normal& normal, const EnergyWindow& window, double factor, const Wind& wind, double missed, double weight)
{
    double df = window.air(wind);
    double de = 2 * factor * (window.east + wind.east * window.eastEast + wind.north * window.eastNorth);
    double dn = 2 * factor * (window.north + wind.east * window.eastNorth + wind.north * window.northNorth);
    normal.ff += weight * df * df;
    normal.fe += weight * df * de;
    normal.fn += weight * df * dn;
    normal.ee += weight * de * de;
    normal.en += weight * de * dn;
    normal.nn += weight * dn * dn;
    normal.f += weight * df * missed;
    normal.e += weight * de * missed;
    normal.n += weight * dn * missed;
}

// One step of Gauss-Newton. Each wind is in its own ride alone: it goes out by what it would be for any factor.
struct Step {
    double ff = 0, f = 0;       // what stays for the factor
    std::vector<Normal> normal; // by ride, prior included

    void addRide(const RideWindows& ride, Normal sums, const Wind& wind, double variance)
    {
        double prior = variance / (windPrior * windPrior);
        sums.ee += prior;
        sums.nn += prior;
        sums.e -= prior * wind.east;
        sums.n -= prior * wind.north;
        ff += sums.ff;
        f += sums.f;
        if (ride.findsWind) {
            Wind slope = solved(sums, sums.fe, sums.fn), at = solved(sums, sums.e, sums.n);
            ff -= sums.fe * slope.east + sums.fn * slope.north;
            f -= sums.fe * at.east + sums.fn * at.north;
        }
        normal.push_back(sums);
    }
    Wind windStep(size_t ride, double factorStep) const
    {
        const Normal& sums = normal[ride];
        return solved(sums, sums.e - sums.fe * factorStep, sums.n - sums.fn * factorStep);
    }

private:
    static Wind solved(const Normal& sums, double east, double north)
    {
        double size = sums.ee * sums.nn - sums.en * sums.en;
        if (!(size > 0))
            return {};
        return {(sums.nn * east - sums.en * north) / size, (sums.ee * north - sums.en * east) / size};
    }
};

// How often each window counts, by ride; empty: once.
using Counts = std::vector<std::vector<double>>;

void improve(std::span<const RideWindows> rides, DragFit& fit, Robust robust, double rollingShare,
             const Counts& counts = {})
{
    double variance = fit.spread * fit.spread;
    Step step;
    for (size_t ride = 0; ride < rides.size(); ++ride) {
        Normal sums;
        const std::vector<EnergyWindow>& windows = rides[ride].windows;
        for (size_t i = 0; i < windows.size(); ++i) {
            double missed = residual(windows[i], fit.factor, fit.winds[ride], rollingShare);
            double weight = weightOf(robust, missed / fit.spread) * windows[i].seconds / wholeWindow;
            add(sums, windows[i], fit.factor, fit.winds[ride], missed,
                counts.empty() ? weight : weight * counts[ride][i]);
        }
        step.addRide(rides[ride], sums, fit.winds[ride], variance);
    }
    double prior = variance / (factorPrior * factorPrior);
    double change = (step.f + prior * (1 - fit.factor)) / (step.ff + prior);
    for (size_t ride = 0; ride < rides.size(); ++ride)
        if (rides[ride].findsWind) {
            Wind more = step.windStep(ride, change);
            fit.winds[ride].east += more.east;
            fit.winds[ride].north += more.north;
        }
    fit.factor = std::max(leastFactor, fit.factor + change);
}

constexpr double blockLength = 300; // s

// The windows of a ride by their blocks: which block each one is in.
struct Blocks {
    std::vector<size_t> ofWindow;
    size_t count = 0;
};

Blocks blocksOf(const std::vector<EnergyWindow>& windows)
{
    Blocks blocks;
    double last = -1;
    for (const EnergyWindow& window : windows) {
        double place = std::floor((window.from + window.seconds / 2) / blockLength);
        blocks.count += place != last;
        last = place;
        blocks.ofWindow.push_back(blocks.count - 1);
    }
    return blocks;
}

// Blocks drawn as often as there are some: how often the windows of each are counted.
std::vector<double> drawnCounts(const Blocks& blocks, std::mt19937& random)
{
    std::vector<double> drawn(blocks.count), counts;
    for (size_t draw = 0; draw < blocks.count; ++draw)
        ++drawn[random() % blocks.count];
    for (size_t block : blocks.ofWindow)
        counts.push_back(drawn[block]);
    return counts;
}

} // namespace

DragFit fitDrag(std::span<const RideWindows> rides, double rollingShare)
{
    constexpr int huberRounds = 8, tukeyRounds = 12;
    DragFit fit;
    for (const RideWindows& ride : rides)
        fit.winds.push_back(ride.wind);
    for (int round = 0; round < huberRounds + tukeyRounds; ++round) {
        fit.spread = spreadOf(rides, fit, rollingShare);
        improve(rides, fit, round < huberRounds ? Robust::huber : Robust::tukey, rollingShare);
    }
    return fit;
}

double drawnError(std::span<const RideWindows> rides, const DragFit& fit)
{
    constexpr int draws = 200, rounds = 3;
    std::mt19937 random(20); // any number, always the same
    std::vector<Blocks> all;
    double blocks = 0, sum = 0, squares = 0;
    for (const RideWindows& ride : rides)
        blocks += static_cast<double>(all.emplace_back(blocksOf(ride.windows)).count);
    for (int draw = 0; draw < draws; ++draw) {
        Counts counts;
        for (const Blocks& own : all)
            counts.push_back(drawnCounts(own, random));
        DragFit drawn = fit;
        for (int round = 0; round < rounds; ++round)
            improve(rides, drawn, Robust::tukey, 1, counts);
        sum += drawn.factor - fit.factor;
        squares += (drawn.factor - fit.factor) * (drawn.factor - fit.factor);
    }
    double variance = squares / draws - sum * sum / draws / draws;
    double fewness = blocks > 1 ? blocks / (blocks - 1) : 2; // few blocks differ too little from each other
    return std::sqrt(std::max(0.0, variance) * fewness);
}

} // namespace torvane
