// What a series of powers comes to: mean, normalised power, the highest means over a while, work.
#pragma once

#include "gps/ridden_rows.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace torvane {

constexpr std::array<uint32_t, 5> bestDurations = {5, 60, 300, 1200, 3600}; // s

// Powers in W. Time is that in which the ride moved and has a power; who coasts counts with 0 W.
struct PowerFigures {
    uint32_t seconds = 0;
    double mean = 0;
    std::optional<double> normalised = {}; // fourth root of the mean fourth power of means over 30 s
    // Highest mean over each of the durations; time in which the bicycle stands counts with 0 W. None where the ride is
    // shorter.
    std::array<std::optional<double>, bestDurations.size()> best = {};
    double kiloJoule = 0; // over these seconds
};

// No figures where no row has a power of this source.
std::optional<PowerFigures> powerFiguresOf(RiddenRows rows, FigureSource source);

// The highest mean in W over each of the durations in s, as in PowerFigures; none where the ride is shorter.
std::vector<std::optional<double>> bestMeansOf(RiddenRows rows, FigureSource source,
                                               std::span<const uint32_t> durations);

// Means over time of the rows that were added.
class RowMeans {
public:
    explicit RowMeans(FigureSource of) : source(of) {}
    void add(const RiddenRow& row);
    std::optional<double> power() const;   // W over the rows that have a power; none without
    std::optional<double> cadence() const; // rpm over the rows in which the rider pedals; none without

private:
    FigureSource source;
    double joules = 0, turns = 0;
    uint32_t powered = 0, pedalled = 0; // s
};
RowMeans meansOf(RiddenRows rows, FigureSource source);

} // namespace torvane
