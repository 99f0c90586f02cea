// FIT's seconds against those that other programs count.
#pragma once

#include <cstdint>

namespace torvane {

constexpr int64_t fitEpoch = 631065600; // s from 1970 to the zero of FIT's timestamps, 31 December 1989, UTC

// s since 1970.
constexpr double unixTime(uint32_t timestamp)
{
    return static_cast<double>(timestamp + fitEpoch);
}

} // namespace torvane
