#include "plan/held_out.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace torvane {

namespace {

constexpr double blockLength = 600; // s
constexpr double leastBlock = 240;  // s used; less is no block

int blockOf(const EnergyWindow& window)
{
    return static_cast<int>((window.from + window.seconds / 2) / blockLength);
}

std::vector<RideWindows> halfOf(std::span<const RideWindows> rides, int half)
{
    std::vector<RideWindows> halves;
    for (const RideWindows& ride : rides) {
        RideWindows& own = halves.emplace_back(RideWindows{{}, ride.findsWind, ride.wind});
        for (const EnergyWindow& window : ride.windows)
            if (blockOf(window) % 2 == half)
                own.windows.push_back(window);
    }
    return halves;
}

struct Compared {
    int ride, block;
    double seconds, measured, predicted; // W
};

double medianOf(std::vector<double> values)
{
    if (values.empty())
        return 0;
    auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

std::vector<double> blockErrors(std::span<const Compared> all)
{
    struct Sums {
        double seconds = 0, measured = 0, missed = 0;
    };
    std::map<std::pair<int, int>, Sums> blocks;
    for (const Compared& one : all) {
        Sums& sums = blocks[{one.ride, one.block}];
        sums.seconds += one.seconds;
        sums.measured += one.measured * one.seconds;
        sums.missed += (one.predicted - one.measured) * one.seconds;
    }
    std::vector<double> errors;
    for (const auto& [place, sums] : blocks)
        if (sums.seconds >= leastBlock && sums.measured > 0)
            errors.push_back(std::fabs(sums.missed) / sums.measured);
    return errors;
}

double correlationOf(std::span<const Compared> all)
{
    double n = 0, x = 0, y = 0, xx = 0, yy = 0, xy = 0;
    for (const Compared& one : all) {
        ++n;
        x += one.measured;
        y += one.predicted;
        xx += one.measured * one.measured;
        yy += one.predicted * one.predicted;
        xy += one.measured * one.predicted;
    }
    double spread = (n * xx - x * x) * (n * yy - y * y);
    return spread > 0 ? (n * xy - x * y) / std::sqrt(spread) : 0;
}

PredictionQuality qualityOf(std::span<const Compared> all)
{
    PredictionQuality quality;
    double squares = 0;
    for (const Compared& one : all)
        squares += (one.predicted - one.measured) * (one.predicted - one.measured);
    quality.blockError = medianOf(blockErrors(all));
    quality.shortError = all.empty() ? 0 : std::sqrt(squares / static_cast<double>(all.size()));
    quality.correlation = correlationOf(all);
    return quality;
}

// What a fit, or two by the half that each block belongs to, predicts of all windows.
template <class FitFor>
std::vector<Compared> compare(std::span<const std::vector<EnergyWindow>> rides, FitFor&& fitFor)
{
    std::vector<Compared> all;
    for (size_t ride = 0; ride < rides.size(); ++ride)
        for (const EnergyWindow& window : rides[ride]) {
            const DragFit& fit = fitFor(blockOf(window) % 2);
            all.push_back({static_cast<int>(ride), blockOf(window), window.seconds, window.thrust,
                           window.predicted(fit.factor, fit.winds[ride])});
        }
    return all;
}

bool hasWindows(const std::vector<RideWindows>& rides)
{
    return std::ranges::any_of(rides, [](const RideWindows& ride) { return !ride.windows.empty(); });
}

} // namespace

HeldOut holdOut(std::span<const RideWindows> windows, std::span<const std::vector<EnergyWindow>> shortWindows,
                double factorBefore)
{
    HeldOut out;
    std::array<DragFit, 2> fits;
    for (int half : {0, 1}) {
        std::vector<RideWindows> own = halfOf(windows, half);
        if (!hasWindows(own))
            return out;
        fits[half] = fitDrag(own);
        out.factor[half] = fits[half].factor;
        out.error[half] = drawnError(own, fits[half]);
    }
    DragFit known = {factorBefore, std::vector<Wind>(windows.size()), 0};
    std::vector<Compared> after = compare(shortWindows, [&](int half) -> const DragFit& { return fits[1 - half]; });
    std::vector<Compared> before = compare(shortWindows, [&](int) -> const DragFit& { return known; });
    std::vector<double> errorsBefore = blockErrors(before), errorsAfter = blockErrors(after);
    out.blocks = errorsAfter.size();
    for (size_t i = 0; i < out.blocks; ++i)
        out.better += errorsAfter[i] <= errorsBefore[i];
    out.before = qualityOf(before);
    out.after = qualityOf(after);
    return out;
}

} // namespace torvane
