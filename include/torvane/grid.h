// The steady ride asked for many roads at once: all combinations of slopes, winds, and velocities or powers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace torvane::library {

// Answers stand in the order of these lists, the last one running fastest. Every number is finite.
struct RoadGrid {
    std::span<const double> inclinations; // %, + uphill
    std::span<const double> headWinds;    // m/s, + head wind
    std::span<const double> asked;        // velocities in m/s, or powers in W

    std::size_t points() const
    {
        return inclinations.size() * headWinds.size() * asked.size();
    }
};

// Where a power is measured.
enum class Stage { pedals, chainring, hub, road };

struct FoundVelocity {
    double velocity;      // m/s
    std::uint32_t status; // as of "power-and-velocity": 0 where all is well
};

} // namespace torvane::library
