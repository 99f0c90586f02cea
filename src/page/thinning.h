// Fewer points where there are more than anyone sees.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace torvane {

constexpr size_t mostPagePoints = 20000;

// Places of the points that stay, rising: all up to `most`; of more the first, the last, and where each series is
// lowest and highest within each of equally long pieces. All series are equally long; what is no number counts nowhere.
std::vector<size_t> thinnedPoints(size_t points, std::span<const std::vector<double>* const> series,
                                  size_t most = mostPagePoints);

std::vector<double> valuesAt(const std::vector<double>& values, std::span<const size_t> places);

} // namespace torvane
