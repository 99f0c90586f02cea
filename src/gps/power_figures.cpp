#include "gps/power_figures.h"

#include "gps/ride_comparison.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace torvane {

namespace {

// A step that has a power, on the axis of time.
struct PowerStep {
    uint32_t end; // FIT seconds
    uint32_t seconds;
    double joules; // since the start of the ride, up to the end
    double watts;
};

std::vector<PowerStep> powerSteps(RiddenRows rows, FigureSource source)
{
    std::vector<PowerStep> steps;
    double joules = 0;
    for (const RiddenRow& row : rows) {
        double watts = row.power[source];
        if (row.seconds == 0 || !std::isfinite(watts))
            continue;
        joules += watts * row.seconds;
        steps.push_back({row.timestamp, row.seconds, joules, watts});
    }
    return steps;
}

// Energy in J up to a time, of which `step` is the first step that ends at it or later.
double joulesUpTo(uint32_t time, const PowerStep& step)
{
    uint32_t after = step.end - time;
    return step.joules - step.watts * std::min(after, step.seconds);
}

// The highest mean ends with a step: later it would lose at its front and gain nothing.
std::optional<double> bestMean(const std::vector<PowerStep>& steps, uint32_t duration)
{
    uint32_t start = steps.front().end - steps.front().seconds;
    if (steps.back().end - start < duration)
        return std::nullopt;
    double most = 0;
    size_t first = 0;
    for (const PowerStep& last : steps) {
        uint32_t from = last.end - std::min(duration, last.end - start);
        while (steps[first].end < from)
            ++first;
        most = std::max(most, last.joules - joulesUpTo(from, steps[first]));
    }
    return most / duration;
}

// Means over the 30 s of riding that end with each step; stops are left out.
std::optional<double> normalisedPower(const std::vector<PowerStep>& steps)
{
    double fourth = 0;
    uint32_t weight = 0, held = 0; // s: of the means; of the window
    size_t first = 0;
    for (const PowerStep& last : steps) {
        held += last.seconds;
        while (held - steps[first].seconds >= comparisonWindow)
            held -= steps[first++].seconds;
        if (held < comparisonWindow)
            continue;
        double before = steps[first].joules - steps[first].watts * steps[first].seconds;
        fourth += std::pow((last.joules - before) / held, 4) * last.seconds;
        weight += last.seconds;
    }
    return weight != 0 ? std::optional(std::pow(fourth / weight, 0.25)) : std::nullopt;
}

} // namespace

std::optional<PowerFigures> powerFiguresOf(RiddenRows rows, FigureSource source)
{
    std::vector<PowerStep> steps = powerSteps(rows, source);
    if (steps.empty())
        return std::nullopt;
    PowerFigures figures;
    for (const PowerStep& step : steps)
        figures.seconds += step.seconds;
    figures.mean = steps.back().joules / figures.seconds;
    figures.kiloJoule = steps.back().joules / 1000;
    figures.normalised = normalisedPower(steps);
    for (size_t i = 0; i < bestDurations.size(); ++i)
        figures.best[i] = bestMean(steps, bestDurations[i]);
    return figures;
}

std::vector<std::optional<double>> bestMeansOf(RiddenRows rows, FigureSource source,
                                               std::span<const uint32_t> durations)
{
    std::vector<PowerStep> steps = powerSteps(rows, source);
    std::vector<std::optional<double>> best;
    for (uint32_t duration : durations)
        best.push_back(steps.empty() ? std::nullopt : bestMean(steps, duration));
    return best;
}

std::optional<double> meanPowerOf(RiddenRows rows, FigureSource source)
{
    double joules = 0;
    uint32_t seconds = 0;
    for (const RiddenRow& row : rows) {
        if (!std::isfinite(row.power[source]))
            continue;
        joules += row.power[source] * row.seconds;
        seconds += row.seconds;
    }
    return seconds != 0 ? std::optional(joules / seconds) : std::nullopt;
}

std::optional<double> meanCadenceOf(RiddenRows rows, FigureSource source)
{
    double turns = 0;
    uint32_t seconds = 0;
    for (const RiddenRow& row : rows) {
        if (!(row.cadence[source] > 0))
            continue;
        turns += row.cadence[source] * row.seconds;
        seconds += row.seconds;
    }
    return seconds != 0 ? std::optional(turns / seconds) : std::nullopt;
}

} // namespace torvane
