// The power that brings a ride to what is wanted of it.
#pragma once

#include <cmath>
#include <optional>

namespace torvane {

constexpr double leastSolved = 5, mostSolved = 3000; // W

// A factor on a first power of `watts` at which valueOf(factor) is `wanted`, to one part in 20,000; none where no power
// within the limits has it. The value rises with the power, or falls, by small leaps where a rider gets off the
// bicycle: at such a leap it may be off by a part in 300.
template <class ValueOf>
std::optional<double> solveFactor(double watts, double wanted, bool rises, ValueOf valueOf)
{
    constexpr double close = 5e-5, ofLeap = 3e-3;
    constexpr int rounds = 40;
    double low = leastSolved / watts, high = mostSolved / watts; // factors on either side
    double factor = 1, last = 0, lastOff = 0, nearest = 1, nearestOff = 1;
    for (int round = 0; round < rounds; ++round) {
        double off = std::log(valueOf(factor) / wanted) * (rises ? 1 : -1); // above 0: too much power
        if (std::fabs(off) < close)
            return factor;
        if (std::fabs(off) < nearestOff) {
            nearest = factor;
            nearestOff = std::fabs(off);
        }
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
    return nearestOff < ofLeap ? std::optional(nearest) : std::nullopt;
}

} // namespace torvane
