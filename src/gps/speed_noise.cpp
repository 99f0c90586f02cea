#include "gps/speed_noise.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
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

template <class Take>
void eachUneven(std::span<const GpsRecord> records, Take&& take)
{
    for (size_t i = 3; i < records.size(); ++i)
        if (records[i].sector != 0 && records[i].sector == records[i - 3].sector)
            take(&records[i]);
}

// The first bits of a number that is not negative: they rise with it, by sixteenths of an octave.
size_t groupOf(double value)
{
    constexpr int shift = 48;
    return static_cast<size_t>(std::bit_cast<uint64_t>(value) >> shift);
}

// Of so many rows. The groups are counted first; a table of all values would be a tenth of what the records take.
double medianUnevenness(std::span<const GpsRecord> records, size_t count)
{
    std::vector<uint32_t> groups(size_t{1} << 15); // without those of the sign
    eachUneven(records, [&](const GpsRecord* row) { ++groups[groupOf(unevenness(row))]; });
    size_t group = 0, place = count / 2; // within the group
    for (; place >= groups[group]; ++group)
        place -= groups[group];
    std::vector<double> own;
    own.reserve(groups[group]);
    eachUneven(records, [&](const GpsRecord* row) {
        if (double value = unevenness(row); groupOf(value) == group)
            own.push_back(value);
    });
    auto middle = own.begin() + static_cast<std::ptrdiff_t>(place);
    std::ranges::nth_element(own, middle);
    return *middle;
}

} // namespace

double noiseOfSpeed(std::span<const GpsRecord> records)
{
    // The median gives the standard deviation: the few seconds around brakes do not move it.
    constexpr double normalMedian = 0.6745, ofThirdDifference = 4.472; // root of 1 + 9 + 9 + 1
    constexpr double ofEvenSteps = 3.464;                              // root of 12
    size_t count = 0;
    double leastStep = std::numeric_limits<double>::infinity();
    eachUneven(records, [&](const GpsRecord* row) {
        ++count;
        if (double step = std::fabs(row[0].speed - row[-1].speed); step > 0)
            leastStep = std::min(leastStep, step);
    });
    if (count == 0)
        return noiseOfNothing;
    double deviation = medianUnevenness(records, count) / normalMedian / ofThirdDifference;
    return std::isfinite(leastStep) ? std::max(deviation, leastStep / ofEvenSteps) : deviation;
}

} // namespace torvane
