#include "gps/speed_noise.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace torvane {

namespace {

constexpr double noiseOfNothing = 1; // m/s

// Third difference: what is left of four speeds in a row that lie on no parabola.
double unevenness(const GpsRecord* row)
{
    return std::fabs(row[0].speed - row[-3].speed - 3 * (row[-1].speed - row[-2].speed));
}

// Standard deviation by the median, which the few seconds around brakes do not move.
double deviationOf(std::vector<double>& uneven)
{
    constexpr double normalMedian = 0.6745, ofThirdDifference = 4.472; // root of 1 + 9 + 9 + 1
    auto middle = uneven.begin() + static_cast<std::ptrdiff_t>(uneven.size() / 2);
    std::ranges::nth_element(uneven, middle);
    return *middle / normalMedian / ofThirdDifference;
}

} // namespace

double noiseOfSpeed(std::span<const GpsRecord> records)
{
    std::vector<double> uneven;
    double leastStep = std::numeric_limits<double>::infinity();
    for (size_t i = 3; i < records.size(); ++i) {
        const GpsRecord* row = &records[i];
        if (row->sector == 0 || row->sector != row[-3].sector)
            continue;
        uneven.push_back(unevenness(row));
        if (double step = std::fabs(row[0].speed - row[-1].speed); step > 0)
            leastStep = std::min(leastStep, step);
    }
    if (uneven.empty())
        return noiseOfNothing;
    constexpr double ofEvenSteps = 3.464; // root of 12
    double deviation = deviationOf(uneven);
    return std::isfinite(leastStep) ? std::max(deviation, leastStep / ofEvenSteps) : deviation;
}

} // namespace torvane
