#include "plan/series.h"

#include <algorithm>

namespace torvane {

std::vector<double> centredMeans(const std::vector<double>& values, size_t half)
{
    std::vector<double> sums(values.size() + 1, 0);
    for (size_t i = 0; i < values.size(); ++i)
        sums[i + 1] = sums[i] + values[i];
    std::vector<double> means(values.size());
    for (size_t i = 0; i < values.size(); ++i) {
        size_t reach = std::min({half, i, values.size() - 1 - i});
        means[i] = (sums[i + reach + 1] - sums[i - reach]) / static_cast<double>(2 * reach + 1);
    }
    return means;
}

} // namespace torvane
