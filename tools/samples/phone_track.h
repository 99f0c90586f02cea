// A ridden track as an app on a phone gives it away: GPX with positions, elevation and time, a point every few seconds.
#pragma once

#include "rides/fit_builder.h"
#include "samples/sample_ride.h"

namespace torvane {

Bytes phoneTrack(const RiddenTrack& track);

} // namespace torvane
