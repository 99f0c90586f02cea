// Rows of numbers along a road or a ride.
#pragma once

#include <cstddef>
#include <vector>

namespace torvane {

// What lies at a share of the way from one value to another.
constexpr double between(double from, double to, double share)
{
    return from + (to - from) * share;
}

// Means over `half` values on either side; near the ends over as many as both sides have, so that a slope stays one.
std::vector<double> centredMeans(const std::vector<double>& values, size_t half);

} // namespace torvane
