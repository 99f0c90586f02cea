// Two rides with power on one axis of time: how the one stands to the other. Serves to hold a prediction against a
// power meter.
#pragma once

#include "core/progress.h"
#include "fit/fit_codes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace torvane {

constexpr uint32_t comparisonWindow = 30; // s, of means and of normalised power
constexpr uint32_t leastWindows = 3;      // fewer tell nothing of a correlation

// What both rides say over the same seconds. Powers in W.
struct PowerComparison {
    uint32_t start = 0;   // FIT seconds
    uint32_t seconds = 0; // in which both have a power
    double mean[2] = {};
    double normalised[2] = {}; // fourth root of the mean fourth power of means over 30 s; 0 for less than 30 s
    double correlation = 0;    // of means over 30 s that follow one another, -1 to 1
    uint32_t windows = 0;      // of those means; the correlation is told for three or more
};

// A second in which both have a power.
struct CommonSecond {
    uint32_t timestamp; // FIT seconds
    double metres;      // of the first ride since its start; no number where it does not say so
    double watts[2];
};

struct RideComparison {
    std::vector<CommonSecond> common; // rising by time
    PowerComparison whole;
    std::vector<PowerComparison> sectors; // runs of seconds without a hole, of a minute or more
    uint32_t alone[2] = {};               // seconds of one ride that the other does not have
};

struct ComparisonOutcome {
    StatusCode code = fitOk;
    bool second = false; // which ride the code is about
};

// fitOk, a code of loading, or fitNotComparable when no second has a power in both.
ComparisonOutcome compareRides(const std::string& first, const std::string& second, RideComparison& comparison,
                               Progress* progress = nullptr);

// The powers of one ride by time: rising, one for each second that has one.
struct TimedPower {
    uint32_t timestamp; // FIT seconds
    double watts;
    double metres = std::numeric_limits<double>::quiet_NaN(); // since the start of the ride, where it is known
};
StatusCode comparePowers(const std::vector<TimedPower>& first, const std::vector<TimedPower>& second,
                         RideComparison& comparison);

// Between which correlations the means over 30 s lie, when they begin 0, 5, ... 25 s into each run: a single figure
// hangs on where they begin.
struct CorrelationBand {
    double least, most;
};

// Sums of products of the means of two rides.
struct CorrelationSums {
    double x = 0, y = 0, xx = 0, yy = 0, xy = 0;
    uint32_t windows = 0;

    void add(double a, double b);
    double correlation() const;
};

// Two powers of common seconds that come one after the other, rising by time; no second is held for longer than its
// means ask for.
class CommonMeans {
public:
    void add(uint32_t timestamp, const std::array<double, 2>& watts);
    uint32_t seconds() const
    {
        return count;
    }
    double mean(size_t ride) const // W, 0 of none
    {
        return count != 0 ? sums[ride] / count : 0;
    }
    std::optional<CorrelationBand> band() const; // none with fewer than three means in a row of them

private:
    static constexpr uint32_t shift = 5; // s
    double windowMean(size_t ride) const;

    uint32_t count = 0, last = 0;
    size_t inRun = 0; // seconds without a hole
    std::array<double, 2> sums = {};
    std::array<std::array<double, 2>, comparisonWindow> latest = {};
    std::array<CorrelationSums, comparisonWindow / shift> shifted = {};
};

} // namespace torvane
