// Normalized power: pedaling power averaged over bins of some 30 s, weighted to the fourth, so that hard stretches
// count as hard as they feel.
#pragma once

#include <cstddef>
#include <vector>

namespace torvane {

struct PowerBin {
    double time;   // s
    double energy; // J, of positive power alone
};

struct PowerBins {
    double width = 0; // s
    std::vector<PowerBin> bins;
    size_t present = 0;
};

// Deals a sector time out to equal bins of at most 30 s.
PowerBins makePowerBins(double sectorTime);

// Adds a step; what comes after the last bin is left out.
void addToBins(PowerBins& bins, double power, double dt);

// W; 0 without bins.
double normalizedPower(const PowerBins& bins);

} // namespace torvane
