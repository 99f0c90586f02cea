// The flag word in which solvers, simulations and commands answer. 0 is success; what a bit says to the user depends on
// the command and stands with the reports.
#pragma once

#include <cstdint>

namespace torvane {

using ResultStatus = uint32_t;

constexpr ResultStatus fatalBits = 0x0000FFFF;   // the report ends after the alert lines
constexpr ResultStatus warningBits = 0x7FFF0000; // the report goes on

constexpr bool isFatal(ResultStatus status)
{
    return (status & fatalBits) != 0;
}

// Bits that the physical model sets.
constexpr ResultStatus statusIllegalValue = 0x1;    // theory: power above its maximum; rides: illegal initial value
constexpr ResultStatus statusNotConverged = 0x2;    // 5,000 rounds, or 900 simulated seconds
constexpr ResultStatus statusBeyondTolerance = 0x4; // converged, but beyond the wide tolerance
constexpr ResultStatus statusTooShortPower = 0x8;   // a velocity solver ended below zero
constexpr ResultStatus statusNoAssistedVelocity = 0x4000; // no velocity for the power inside the assist ranges
constexpr ResultStatus statusLooseTolerance = 0x20000;    // between the narrow and the wide tolerance
constexpr ResultStatus statusZeroValue = 0x40000;         // theory: a zero where a value is needed
constexpr ResultStatus statusOverReach = 0x100000;        // velocity above reachVelocity

} // namespace torvane
