#include "ride/power_bins.h"

#include "ride/motion.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double longestBin = 30.0; // s

double meanPowerOf(const PowerBin& bin)
{
    return bin.time > 0.0 ? bin.energy / bin.time : 0.0;
}

} // namespace

PowerBins makePowerBins(double sectorTime)
{
    PowerBins result;
    if (!(sectorTime > 0.0 && std::isfinite(sectorTime)))
        return result;
    int count = static_cast<int>(std::min(sectorTime, 2.0 * longestRun) / longestBin);
    if (count * longestBin < sectorTime)
        ++count;
    result.width = sectorTime / count;
    result.bins.resize(static_cast<size_t>(count));
    return result;
}

void addToBins(PowerBins& bins, double power, double dt)
{
    if (bins.present < bins.bins.size() && bins.bins[bins.present].time >= bins.width)
        ++bins.present;
    if (bins.present == bins.bins.size())
        return;
    PowerBin& bin = bins.bins[bins.present];
    bin.time += dt;
    if (power > 0.0)
        bin.energy += power * dt;
}

double normalizedPower(const PowerBins& bins)
{
    if (bins.bins.empty())
        return 0.0;
    double sum = 0.0;
    for (const PowerBin& bin : bins.bins) {
        double power = meanPowerOf(bin);
        sum += power * power * power * power;
    }
    return std::sqrt(std::sqrt(sum / static_cast<double>(bins.bins.size())));
}

} // namespace torvane
