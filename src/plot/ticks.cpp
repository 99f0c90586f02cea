#include "plot/ticks.h"

#include "core/text.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

double stepFor(double range, int mostSteps)
{
    double least = range / std::max(mostSteps, 1);
    double power = std::pow(10.0, std::floor(std::log10(least)));
    for (double times : {1.0, 2.0, 5.0})
        if (times * power >= least)
            return times * power;
    return 10 * power;
}

} // namespace

std::string Ticks::label(int n) const
{
    int decimals = std::clamp(static_cast<int>(-std::floor(std::log10(step) + 1e-9)), 0, 9);
    bool scientific = step >= 1e7 || step < 1e-6;
    return scientific ? formatText("%.3g", value(n)) : formatText("%.*f", decimals, n == 0 ? 0.0 : value(n));
}

Ticks chooseTicks(double least, double most, int mostSteps, bool rounded)
{
    if (!(most - least > 1e-9 * std::max({std::fabs(least), std::fabs(most), 1e-6}))) {
        double around = std::max(std::fabs(least) / 2, 0.5);
        least -= least == 0 ? 0 : around;
        most += around;
    }
    Ticks ticks;
    ticks.step = stepFor(most - least, mostSteps);
    constexpr double slack = 1e-9; // of a step: a limit that is a step up to rounding is one
    if (rounded) {
        ticks.first = static_cast<int>(std::floor(least / ticks.step + slack));
        ticks.last = static_cast<int>(std::ceil(most / ticks.step - slack));
        ticks.least = ticks.value(ticks.first);
        ticks.most = ticks.value(ticks.last);
    } else {
        ticks.first = static_cast<int>(std::ceil(least / ticks.step - slack));
        ticks.last = static_cast<int>(std::floor(most / ticks.step + slack));
        ticks.least = least;
        ticks.most = most;
    }
    return ticks;
}

} // namespace torvane
