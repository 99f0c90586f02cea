// The flag word in which solvers, simulations and commands answer. 0 is success; what a bit says to the user depends on
// the command and stands with the reports.
#pragma once

#include <cstdint>

namespace torvane {

using ResultStatus = uint32_t;

constexpr ResultStatus fatalBits = 0x0000FFFF;   // the report ends after the alert lines
constexpr ResultStatus warningBits = 0x7FFF0000; // the report goes on

// Of any command, whatever it answers in: it was asked to stop, and has written nothing.
constexpr ResultStatus statusStopped = 1u << 31;

constexpr bool isFatal(ResultStatus status)
{
    return (status & fatalBits) != 0;
}

enum StatusBit : ResultStatus {
    statusDone = 0,

    // Of the physical model
    statusIllegalValue = 1u << 0,        // theory: power above its maximum; rides: illegal initial value
    statusNotConverged = 1u << 1,        // 5,000 rounds, or 900 simulated seconds
    statusBeyondTolerance = 1u << 2,     // converged, but beyond the wide tolerance
    statusTooShortPower = 1u << 3,       // a velocity solver ended below zero
    statusNoAssistedVelocity = 1u << 14, // no velocity for the power inside the assist ranges
    statusLooseTolerance = 1u << 17,     // between the narrow and the wide tolerance
    statusOverReach = 1u << 20,          // velocity above reachVelocity

    // Of the simulations
    statusTooLargePower = 1u << 4,    // holds or raises the velocity that is to fall
    statusNoAcceleration = 1u << 5,   // slows down while pedaling
    statusNoDeceleration = 1u << 6,   // rolls at the starting velocity without power
    statusTooSmallGradient = 1u << 7, // does not beat the rolling resistance
    statusTooSmallVelocity = 1u << 8, // no velocity to roll at
    statusTooLongTime = 1u << 9,      // this and the next two: beyond what seekLow and seekHigh tell
    statusTooLongDistance = 1u << 10,
    statusTooHighAccele = 1u << 11,
    statusNoBrakingNeeded = 1u << 12,  // rolls no faster than the velocity asked for
    statusTooShortInterval = 1u << 13, // one brake application takes more
    statusWheelSpin = 1u << 18,        // thrust beyond the grip of the rear tyre
    statusSlip = 1u << 19,             // braking beyond the grip of both tyres
    statusEndNotReached = 1u << 22,    // acceleration faded before the ending velocity
    statusDeclineMayStop = 1u << 23,   // power holds a velocity above the ending one

    // Of the calculators
    statusZeroValue = 1u << 18,          // a zero where a value is needed
    statusTheoryNotConverged = 1u << 21, // no operation sets this one and those below
    statusTheoryTooShortPower = 1u << 22,

    // The reports have a line for these
    statusUnknownFault = 1u << 15,
    statusNonsense = 1u << 16,
    statusTooLargeRatio = 1u << 21,
};

} // namespace torvane
