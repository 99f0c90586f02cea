// What takes the power along a ride.
#pragma once

#include <array>
#include <cstdint>

namespace torvane {

enum PowerSink : uint8_t {
    sinkAir,
    sinkRolling,
    sinkSlope,
    sinkAcceleration,
    sinkDrivetrain,
    sinkBrakes,
    powerSinkCount
};
// W; negative what the wind, the slope or the bicycle's own motion gives back. Their sum is the power at the stage that
// the settings tell power for, with that of a motor.
using PowerSplit = std::array<double, powerSinkCount>;

} // namespace torvane
