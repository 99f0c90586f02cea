// The power that brings a ride to what is wanted of it.
#pragma once

#include <cmath>
#include <optional>

namespace torvane {

constexpr double leastSolved = 5, mostSolved = 3000; // W

// A factor on a first power of `watts` at which valueOf(factor) is `wanted`, to one part in 100,000; none where no
// power within the limits has it. The value rises with the power, or falls.
template <class ValueOf>
std::optional<double> solveFactor(double watts, double wanted, bool rises, ValueOf valueOf)
{
    constexpr double close = 1e-5;
    constexpr int rounds = 40;
    double low = leastSolved / watts, high = mostSolved / watts; // factors on either side
    double factor = 1, last = 0, lastOff = 0;
    for (int round = 0; round < rounds; ++round) {
        double off = std::log(valueOf(factor) / wanted) * (rises ? 1 : -1); // above 0: too much power
        if (std::fabs(off) < close)
            return factor;
        (off > 0 ? high : low) = factor;
        // By the chord of logarithms, which is nearly straight; by halves where that leads out of the two sides.
        double chord = round > 0 ? (off - lastOff) / std::log(factor / last) : (rises ? 1 : 0.6);
        double next = factor * std::exp(-off / chord);
        last = factor;
        lastOff = off;
        bool within = next > low && next < high;
        factor = within ? next : std::sqrt(low * high);
        if (high / low < 1 + close)
            break;
    }
    return std::nullopt;
}

} // namespace torvane
