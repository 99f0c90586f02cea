// The figures of the ride simulations.
#pragma once

#include "report/figures.h"
#include "ride/ride_records.h"

namespace torvane {

constexpr double leastAcceleration = 0.00025; // m/s2, at which a run is at its end

// None of a run whose status is fatal.
Figures rideFigures(const RideRun& ride);
std::vector<FigureInfo> rideFigureInfos(int rideMode);

} // namespace torvane
