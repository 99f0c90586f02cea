// Durations and the distance and time of a ride as reports write them.
#pragma once

#include "ride/physiology.h"

#include <cstdint>
#include <string>

namespace torvane {

// Whole seconds of a duration, truncated; what is no number or not above 0 gives 0.
int32_t wholeSeconds(double seconds);

// Hours, minutes and seconds with two digits each: "00:10:05h".
std::string hms(int32_t seconds);

// Distance and time of the physical intension: "40.000km per 01:00:00h", or in metres below 1 km.
std::string intensionText(const RideLength& length);

} // namespace torvane
