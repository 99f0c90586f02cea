#include "gps/ride_comparison.h"

#include "gps/activity.h"
#include "gps/ride_source.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace torvane {

namespace {

constexpr uint32_t leastSector = 60; // s

using CommonSeconds = std::span<const CommonSecond>;

double metresOf(const RideSample& sample)
{
    constexpr double perMetre = 100; // as FIT files store it
    return sample.has(rideDistance) ? sample.values[rideDistance] / perMetre : std::numeric_limits<double>::quiet_NaN();
}

StatusCode readPowers(const std::string& path, std::vector<TimedPower>& powers, Progress* progress)
{
    FitImage image = {};
    constexpr uint8_t cycling = 2;
    PrepareFindings findings;
    if (StatusCode code = loadRideSource(image, path, cycling, findings.source))
        return code;
    image.progress = progress;
    Activity activity;
    if (StatusCode code = readActivity(image, activity, findings))
        return code;
    for (const RideSample& sample : activity.samples)
        if (sample.has(ridePower))
            powers.push_back({sample.timestamp, static_cast<double>(sample.values[ridePower]), metresOf(sample)});
    return fitOk;
}

std::vector<CommonSecond> commonSeconds(const std::vector<TimedPower>& first, const std::vector<TimedPower>& second,
                                        uint32_t (&alone)[2])
{
    std::vector<CommonSecond> common;
    common.reserve(std::min(first.size(), second.size()));
    size_t i = 0, j = 0;
    while (i < first.size() && j < second.size()) {
        if (first[i].timestamp == second[j].timestamp) {
            common.push_back({first[i].timestamp, first[i].metres, {first[i].watts, second[j].watts}});
            ++i;
            ++j;
        } else {
            ++(first[i].timestamp < second[j].timestamp ? i : j);
        }
    }
    alone[0] = static_cast<uint32_t>(first.size() - common.size());
    alone[1] = static_cast<uint32_t>(second.size() - common.size());
    return common;
}

// Ends of the runs of seconds that follow one another.
std::vector<size_t> endsOfRuns(CommonSeconds seconds)
{
    std::vector<size_t> ends;
    for (size_t i = 1; i <= seconds.size(); ++i)
        if (i == seconds.size() || seconds[i].timestamp != seconds[i - 1].timestamp + 1)
            ends.push_back(i);
    return ends;
}

double meanOf(CommonSeconds seconds, int ride)
{
    double sum = 0;
    for (const CommonSecond& second : seconds)
        sum += second.watts[ride];
    return seconds.empty() ? 0 : sum / static_cast<double>(seconds.size());
}

// Sums for a correlation, and for normalised powers. Windows never reach across the end of a run.
struct WindowSums : CorrelationSums {
    double fourth[2] = {};
    uint32_t moving = 0;

    double normalised(int ride) const
    {
        return moving != 0 ? std::pow(fourth[ride] / moving, 0.25) : 0;
    }
};

void addMoving(CommonSeconds run, WindowSums& sums)
{
    for (size_t end = comparisonWindow; end <= run.size(); ++end) {
        CommonSeconds window = run.subspan(end - comparisonWindow, comparisonWindow);
        for (int ride : {0, 1})
            sums.fourth[ride] += std::pow(meanOf(window, ride), 4);
        ++sums.moving;
    }
}

void addWindows(CommonSeconds run, WindowSums& sums)
{
    for (size_t at = 0; at + comparisonWindow <= run.size(); at += comparisonWindow) {
        CommonSeconds window = run.subspan(at, comparisonWindow);
        sums.add(meanOf(window, 0), meanOf(window, 1));
    }
}

void addRun(CommonSeconds run, WindowSums& sums)
{
    addWindows(run, sums);
    addMoving(run, sums);
}

PowerComparison compareSeconds(CommonSeconds seconds, const WindowSums& sums)
{
    PowerComparison result;
    result.start = seconds[0].timestamp;
    result.seconds = static_cast<uint32_t>(seconds.size());
    result.windows = sums.windows;
    result.correlation = sums.correlation();
    for (int ride : {0, 1}) {
        result.mean[ride] = meanOf(seconds, ride);
        result.normalised[ride] = sums.normalised(ride);
    }
    return result;
}

void compareRuns(CommonSeconds seconds, RideComparison& comparison)
{
    WindowSums whole;
    size_t start = 0;
    for (size_t end : endsOfRuns(seconds)) {
        CommonSeconds run = seconds.subspan(start, end - start);
        WindowSums own;
        addRun(run, own);
        addRun(run, whole);
        if (run.size() >= leastSector)
            comparison.sectors.push_back(compareSeconds(run, own));
        start = end;
    }
    comparison.whole = compareSeconds(seconds, whole);
}

} // namespace

void CorrelationSums::add(double a, double b)
{
    x += a;
    y += b;
    xx += a * a;
    yy += b * b;
    xy += a * b;
    ++windows;
}

double CorrelationSums::correlation() const
{
    double n = windows;
    double spread = std::sqrt((n * xx - x * x) * (n * yy - y * y));
    return spread > 0 ? (n * xy - x * y) / spread : 0;
}

StatusCode comparePowers(const std::vector<TimedPower>& first, const std::vector<TimedPower>& second,
                         RideComparison& comparison)
{
    comparison = {};
    comparison.common = commonSeconds(first, second, comparison.alone);
    if (comparison.common.empty())
        return fitNotComparable;
    compareRuns(comparison.common, comparison);
    return fitOk;
}

void CommonMeans::add(uint32_t timestamp, const std::array<double, 2>& watts)
{
    if (count == 0 || timestamp != last + 1)
        inRun = 0;
    last = timestamp;
    ++count;
    for (size_t ride : {0, 1})
        sums[ride] += watts[ride];
    latest[inRun++ % comparisonWindow] = watts;
    if (inRun >= comparisonWindow && inRun % shift == 0)
        shifted[inRun % comparisonWindow / shift].add(windowMean(0), windowMean(1));
}

// Over the latest seconds, the oldest first.
double CommonMeans::windowMean(size_t ride) const
{
    double sum = 0;
    for (size_t i = 0; i < comparisonWindow; ++i)
        sum += latest[(inRun + i) % comparisonWindow][ride];
    return sum / comparisonWindow;
}

std::optional<CorrelationBand> CommonMeans::band() const
{
    std::optional<CorrelationBand> band;
    for (const CorrelationSums& own : shifted) {
        if (own.windows < leastWindows)
            continue;
        double correlation = own.correlation();
        if (!band)
            band = {correlation, correlation};
        band = {std::min(band->least, correlation), std::max(band->most, correlation)};
    }
    return band;
}

ComparisonOutcome compareRides(const std::string& first, const std::string& second, RideComparison& comparison,
                               Progress* progress)
{
    std::vector<TimedPower> powers[2];
    if (StatusCode code = readPowers(first, powers[0], progress))
        return {code, false};
    if (StatusCode code = readPowers(second, powers[1], progress))
        return {code, true};
    return {comparePowers(powers[0], powers[1], comparison), true};
}

} // namespace torvane
