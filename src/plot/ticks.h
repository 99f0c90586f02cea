// Round values along an axis.
#pragma once

#include <string>

namespace torvane {

// Values first, first + step ... last, all within the axis.
struct Ticks {
    double least = 0, most = 1; // of the axis
    double step = 1;
    int first = 0, last = 1; // in steps

    int count() const
    {
        return last - first + 1;
    }
    double value(int n) const
    {
        return n * step;
    }
    // With as many decimals as the step has.
    std::string label(int n) const;
};

// An axis from least to most, with a step of 1, 2 or 5 times a power of ten and at most so many steps. Values without a
// range get one around them. `rounded` widens the axis to whole steps.
Ticks chooseTicks(double least, double most, int mostSteps, bool rounded);

} // namespace torvane
