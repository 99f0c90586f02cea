// The bits that the simulations add to those of the physical model.
#pragma once

#include "core/result_status.h"

namespace torvane {

constexpr ResultStatus statusTooLargePower = 0x10;     // holds or raises the velocity that is to fall
constexpr ResultStatus statusNoAcceleration = 0x20;    // slows down while pedaling
constexpr ResultStatus statusNoDeceleration = 0x40;    // rolls at the starting velocity without power
constexpr ResultStatus statusTooSmallGradient = 0x80;  // does not beat the rolling resistance
constexpr ResultStatus statusTooSmallVelocity = 0x100; // no velocity to roll at
// Beyond what seekLow and seekHigh tell.
constexpr ResultStatus statusTooLongTime = 0x200;
constexpr ResultStatus statusTooLongDistance = 0x400;
constexpr ResultStatus statusTooHighAccele = 0x800;

constexpr ResultStatus statusNoBrakingNeeded = 0x1000;  // rolls no faster than the velocity asked for
constexpr ResultStatus statusTooShortInterval = 0x2000; // one brake application takes more
constexpr ResultStatus statusWheelSpin = 0x40000;       // thrust beyond the grip of the rear tyre
constexpr ResultStatus statusSlip = 0x80000;            // braking beyond the grip of both tyres
constexpr ResultStatus statusEndNotReached = 0x400000;  // acceleration faded before the ending velocity
constexpr ResultStatus statusDeclineMayStop = 0x800000; // power holds a velocity above the ending one

} // namespace torvane
