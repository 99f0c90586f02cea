#include "page/thinning.h"

#include <algorithm>
#include <numeric>

namespace torvane {

namespace {

// A comparison with what is no number is false, so such a value never stays for itself.
void keepExtremes(const std::vector<double>& values, size_t from, size_t to, std::vector<size_t>& kept)
{
    size_t low = to, high = to;
    for (size_t i = from; i < to; ++i) {
        if (values[i] != values[i])
            continue;
        if (low == to || values[i] < values[low])
            low = i;
        if (high == to || values[i] > values[high])
            high = i;
    }
    if (low != to)
        kept.insert(kept.end(), {low, high});
}

} // namespace

std::vector<size_t> thinnedPoints(size_t points, std::span<const std::vector<double>* const> series, size_t most)
{
    std::vector<size_t> kept;
    if (points <= most || series.empty()) {
        kept.resize(points);
        std::iota(kept.begin(), kept.end(), size_t{0});
        return kept;
    }
    size_t pieces = std::max<size_t>((most - 2) / (2 * series.size()), 1);
    kept = {0, points - 1};
    for (size_t piece = 0; piece < pieces; ++piece)
        for (const std::vector<double>* values : series)
            keepExtremes(*values, points * piece / pieces, points * (piece + 1) / pieces, kept);
    std::ranges::sort(kept);
    kept.erase(std::unique(kept.begin(), kept.end()), kept.end());
    return kept;
}

std::vector<double> valuesAt(const std::vector<double>& values, std::span<const size_t> places)
{
    std::vector<double> some;
    some.reserve(places.size());
    for (size_t place : places)
        some.push_back(values[place]);
    return some;
}

} // namespace torvane
