#include "plan/energy_windows.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double leastSpeed = 3;      // m/s
constexpr double mostPower = 1500;    // W
constexpr double coastingPower = 20;  // W, mean below which nobody pedals
constexpr double brakingPower = -150; // W that the model would ask for there
constexpr size_t coastingReach = 2;   // s to both sides, of a mean over 5 s
constexpr size_t brakingReach = 4;    // s, of one over 9 s
constexpr size_t aroundBraking = 5;   // s left out on both sides

double kineticEnergy(const Bicycle& bicycle, const ThrustSecond& second)
{
    return bicycle.inertia * second.speed * second.speed / 2;
}

double energyOf(const Bicycle& bicycle, const ThrustSecond& second)
{
    return kineticEnergy(bicycle, second) + bicycle.weight * second.altitude;
}

double headWindAt(const ThrustSecond& second, const Wind& wind)
{
    return wind.east * second.east + wind.north * second.north;
}

double roadPower(const Bicycle& bicycle, const ThrustSecond& second, double factor, const Wind& wind)
{
    double air = second.speed + headWindAt(second, wind);
    return bicycle.rollingForce * second.speed + factor * second.airPower * second.speed * air * air;
}

// Net power over the seconds from one to another, energy by its ends.
double netPower(const ThrustRide& ride, size_t from, size_t to, double factor, const Wind& wind)
{
    double sum = 0;
    for (size_t i = from; i <= to; ++i)
        sum += roadPower(ride.bicycle, ride.seconds[i], factor, wind);
    double stored = energyOf(ride.bicycle, ride.seconds[to]) - energyOf(ride.bicycle, ride.seconds[from]);
    return sum / static_cast<double>(to - from + 1) + stored / static_cast<double>(std::max<size_t>(1, to - from));
}

double meanMeasured(const ThrustRide& ride, size_t from, size_t to)
{
    double sum = 0, count = 0;
    for (size_t i = from; i <= to; ++i)
        if (std::isfinite(ride.seconds[i].measured)) {
            sum += ride.seconds[i].measured;
            ++count;
        }
    return count > 0 ? sum / count : 0;
}

bool brakesAt(const ThrustRide& ride, const SecondRange& range, size_t i, double factor, const Wind& wind)
{
    auto before = [&](size_t reach) { return i - std::min(reach, i - range.first); };
    auto behind = [&](size_t reach) { return std::min(i + reach, range.last - 1); };
    if (meanMeasured(ride, before(coastingReach), behind(coastingReach)) >= coastingPower)
        return false;
    return netPower(ride, before(brakingReach), behind(brakingReach), factor, wind) < brakingPower;
}

void markBraking(const ThrustRide& ride, const SecondRange& range, double factor, const Wind& wind, SecondUse& use)
{
    for (size_t i = range.first; i < range.last; ++i) {
        if (!brakesAt(ride, range, i, factor, wind))
            continue;
        size_t from = i - std::min(aroundBraking, i - range.first);
        for (size_t j = from; j < std::min(i + aroundBraking + 1, range.last); ++j)
            if (use[j] == used)
                use[j] = leftBraking;
    }
}

LeftOut useAlone(const ThrustSecond& second)
{
    if (second.speed < leastSpeed)
        return leftSlow;
    if (!std::isfinite(second.measured))
        return leftWithoutPower;
    return second.measured > mostPower ? leftStrong : used;
}

void add(EnergyWindow& window, const Bicycle& bicycle, const ThrustSecond& second, double share)
{
    double v = second.speed, air = second.airPower * v * share;
    window.measured += second.measured * share;
    window.thrust += second.thrust * share;
    window.rolling += bicycle.rollingForce * v * share;
    window.calm += air * v * v;
    window.east += air * v * second.east;
    window.north += air * v * second.north;
    window.eastEast += air * second.east * second.east;
    window.eastNorth += air * second.east * second.north;
    window.northNorth += air * second.north * second.north;
}

// Both ends belong to it, each with half a second.
EnergyWindow windowOver(const ThrustRide& ride, size_t first, size_t last)
{
    EnergyWindow window;
    const ThrustSecond& from = ride.seconds[first];
    const ThrustSecond& to = ride.seconds[last];
    window.from = from.time;
    window.seconds = static_cast<double>(last - first);
    window.metres = (from.metres + to.metres) / 2;
    for (size_t i = first; i <= last; ++i)
        add(window, ride.bicycle, ride.seconds[i], (i == first || i == last ? 0.5 : 1) / window.seconds);
    window.stored = (energyOf(ride.bicycle, to) - energyOf(ride.bicycle, from)) / window.seconds;
    return window;
}

void appendRun(const ThrustRide& ride, size_t first, size_t last, size_t length, std::vector<EnergyWindow>& windows,
               SecondUse& use)
{
    size_t steps = last - first - 1;
    if (last == first || steps < length / 2) {
        std::fill(use.begin() + static_cast<ptrdiff_t>(first), use.begin() + static_cast<ptrdiff_t>(last), leftShort);
        return;
    }
    size_t count = std::max<size_t>(1, (steps + length / 2) / length);
    for (size_t i = 0; i < count; ++i)
        windows.push_back(windowOver(ride, first + steps * i / count, first + steps * (i + 1) / count));
}

} // namespace

SecondUse markSeconds(const ThrustRide& ride, double factor, const Wind& wind)
{
    SecondUse use(ride.seconds.size());
    std::ranges::transform(ride.seconds, use.begin(), useAlone);
    for (const SecondRange& range : ride.stretches)
        markBraking(ride, range, factor, wind, use);
    return use;
}

std::vector<EnergyWindow> windowsOf(const ThrustRide& ride, SecondUse& use, size_t length)
{
    std::vector<EnergyWindow> windows;
    for (const SecondRange& range : ride.stretches)
        for (size_t first = range.first, last; first < range.last; first = last) {
            for (last = first; last < range.last && use[last] == used; ++last) {
            }
            if (last > first)
                appendRun(ride, first, last, length, windows, use);
            else
                ++last;
        }
    return windows;
}

} // namespace torvane
