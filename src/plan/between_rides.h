// Whether the rides of a calibration are of one factor, by what each of them says alone. Only rides whose wind was
// found are compared: that of the others explains any difference.
#pragma once

#include "plan/calibrate.h"

#include <span>

namespace torvane {

// Whether two of them are further apart than their intervals allow.
bool ridesDiffer(std::span<const CalibratedRide> rides);

// Standard error that the rides' differences give the factor of a further ride; 0 where they do not differ.
double betweenRidesError(std::span<const CalibratedRide> rides);

} // namespace torvane
