// Least time at a normalised power, on steady states: what each part of the road gives for more power there, against
// what it costs in the mean fourth power.
#pragma once

#include "core/units.h"
#include "plan/course_ride.h"
#include "plan/steady_road.h"

#include <array>
#include <cstddef>

namespace torvane {

constexpr double fastDescent = 40 / kphPerMps; // m/s of coasting, from which one may rest

class LeastTime {
public:
    // Tabulates the road for powers between the options' least and most of `watts`; slopes are means over a length.
    LeastTime(const RideConditions& conditions, double watts, double slopesOver);

    // The power of each part, such that the steady ride has `watts` as its normalised power and takes least time.
    PowerProfile solve() const;

private:
    static constexpr size_t choices = 16;

    // A part of the road at speeds from that of the least to that of the most power.
    struct Part {
        std::array<double, choices> seconds; // infinite in place 0 where nobody coasts; else coasting
        std::array<double, choices> share;   // power in `watts`
    };
    struct Choice {
        double seconds, share;
    };
    Part partOf(SteadyRoad& road, double metres, double limit, double reach) const;
    static Choice bestOf(const Part& part, double price);
    double excessAt(double price) const;

    double watts, least, most;
    std::vector<Part> parts;
};

} // namespace torvane
