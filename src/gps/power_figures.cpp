#include "gps/power_figures.h"

#include "gps/ride_comparison.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
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

// Steps one after the other; those are held that some mean still reaches back to.
class PowerSteps {
public:
    explicit PowerSteps(FigureSource from) : source(from) {}
    // False where the row has no such step.
    bool take(const RiddenRow& row)
    {
        double watts = row.power[source];
        if (row.seconds == 0 || !std::isfinite(watts))
            return false;
        if (held.empty())
            start = row.timestamp - row.seconds;
        joules += watts * row.seconds;
        held.push_back({row.timestamp, row.seconds, joules, watts});
        return true;
    }
    void forgetBefore(size_t index)
    {
        constexpr size_t worthMoving = 4096;
        if (index - gone < std::max(worthMoving, held.size() / 2))
            return;
        held.erase(held.begin(), held.begin() + static_cast<std::ptrdiff_t>(index - gone));
        gone = index;
    }
    bool empty() const
    {
        return held.empty();
    }
    const PowerStep& operator[](size_t index) const
    {
        return held[index - gone];
    }
    const PowerStep& last() const
    {
        return held.back();
    }
    uint32_t startTime() const
    {
        return start;
    }

private:
    FigureSource source;
    uint32_t start = 0; // FIT seconds, of the first
    double joules = 0;
    size_t gone = 0;
    std::vector<PowerStep> held = {};
};

// Energy in J up to a time, of which `step` is the first step that ends at it or later.
double joulesUpTo(uint32_t time, const PowerStep& step)
{
    uint32_t after = step.end - time;
    return step.joules - step.watts * std::min(after, step.seconds);
}

// The highest mean ends with a step: later it would lose at its front and gain nothing.
struct BestMean {
    uint32_t duration;
    size_t first = 0; // step that the mean begins in
    double most = 0;

    void take(const PowerSteps& steps)
    {
        const PowerStep& last = steps.last();
        uint32_t from = last.end - std::min(duration, last.end - steps.startTime());
        while (steps[first].end < from)
            ++first;
        most = std::max(most, last.joules - joulesUpTo(from, steps[first]));
    }
    std::optional<double> mean(const PowerSteps& steps) const
    {
        bool lasts = !steps.empty() && steps.last().end - steps.startTime() >= duration;
        return lasts ? std::optional(most / duration) : std::nullopt;
    }
};

// Means over the 30 s of riding that end with each step; stops are left out.
struct NormalisedPower {
    size_t first = 0;
    double fourth = 0;
    uint32_t weight = 0, held = 0; // s: of the means; of the window

    void take(const PowerSteps& steps)
    {
        const PowerStep& last = steps.last();
        held += last.seconds;
        while (held - steps[first].seconds >= comparisonWindow)
            held -= steps[first++].seconds;
        if (held < comparisonWindow)
            return;
        double before = steps[first].joules - steps[first].watts * steps[first].seconds;
        fourth += std::pow((last.joules - before) / held, 4) * last.seconds;
        weight += last.seconds;
    }
    std::optional<double> mean() const
    {
        return weight != 0 ? std::optional(std::pow(fourth / weight, 0.25)) : std::nullopt;
    }
};

struct BestMeans {
    std::vector<BestMean> all = {};

    explicit BestMeans(std::span<const uint32_t> durations)
    {
        for (uint32_t duration : durations)
            all.push_back({duration});
    }
    // Returns the first step that is still needed.
    size_t take(const PowerSteps& steps)
    {
        size_t needed = SIZE_MAX;
        for (BestMean& each : all) {
            each.take(steps);
            needed = std::min(needed, each.first);
        }
        return needed;
    }
};

} // namespace

std::optional<PowerFigures> powerFiguresOf(RiddenRows rows, FigureSource source)
{
    PowerSteps steps(source);
    PowerFigures figures;
    NormalisedPower normalised;
    BestMeans best(bestDurations);
    for (const RiddenRow& row : rows) {
        if (!steps.take(row))
            continue;
        figures.seconds += row.seconds;
        normalised.take(steps);
        steps.forgetBefore(std::min(best.take(steps), normalised.first));
    }
    if (steps.empty())
        return std::nullopt;
    figures.mean = steps.last().joules / figures.seconds;
    figures.kiloJoule = steps.last().joules / 1000;
    figures.normalised = normalised.mean();
    for (size_t i = 0; i < bestDurations.size(); ++i)
        figures.best[i] = best.all[i].mean(steps);
    return figures;
}

std::vector<std::optional<double>> bestMeansOf(RiddenRows rows, FigureSource source,
                                               std::span<const uint32_t> durations)
{
    PowerSteps steps(source);
    BestMeans best(durations);
    for (const RiddenRow& row : rows)
        if (steps.take(row))
            steps.forgetBefore(best.take(steps));
    std::vector<std::optional<double>> means;
    for (const BestMean& each : best.all)
        means.push_back(each.mean(steps));
    return means;
}

void RowMeans::add(const RiddenRow& row)
{
    if (std::isfinite(row.power[source])) {
        joules += row.power[source] * row.seconds;
        powered += row.seconds;
    }
    if (row.cadence[source] > 0) {
        turns += row.cadence[source] * row.seconds;
        pedalled += row.seconds;
    }
}

std::optional<double> RowMeans::power() const
{
    return powered != 0 ? std::optional(joules / powered) : std::nullopt;
}

std::optional<double> RowMeans::cadence() const
{
    return pedalled != 0 ? std::optional(turns / pedalled) : std::nullopt;
}

RowMeans meansOf(RiddenRows rows, FigureSource source)
{
    RowMeans means(source);
    for (const RiddenRow& row : rows)
        means.add(row);
    return means;
}

} // namespace torvane
