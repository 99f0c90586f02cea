// A made ride as the file of a device.
#pragma once

#include "plan/measured_ride.h"
#include "rides/fit_builder.h"

#include <cmath>

namespace torvane {

inline int64_t semicirclesOf(double degrees)
{
    return std::llround(degrees * 2147483648.0 / 180);
}

inline Bytes fileOf(const MeasuredRide& ride)
{
    FitBuilder fit;
    fit.define(0, 0, {{0, 1, 0}}).message(0, {4});
    fit.define(
        1, 20,
        {{253, 4, 0x86}, {0, 4, 0x85}, {1, 4, 0x85}, {2, 2, 0x84}, {6, 2, 0x84}, {7, 2, 0x84}, {4, 1, 2}, {13, 1, 1}});
    for (const MeasuredSecond& s : ride.seconds)
        fit.message(1, {s.timestamp, semicirclesOf(s.latitude), semicirclesOf(s.longitude),
                        std::llround((s.altitude + 500) * 5), std::llround(s.speed * 1000), std::llround(s.power),
                        std::llround(s.cadence), std::llround(ride.temperature)});
    return fit.file();
}

} // namespace torvane
