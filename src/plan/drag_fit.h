// One factor of air drag for all windows of a rider's rides, and a wind for each ride, so that their energy balances as
// well as it can.
#pragma once

#include "plan/energy_windows.h"

#include <span>
#include <vector>

namespace torvane {

// What the fit is told of one ride.
struct RideWindows {
    std::vector<EnergyWindow> windows;
    bool findsWind = true; // else it stays as it is given
    Wind wind = {};
};

struct DragFit {
    double factor = 1;
    std::vector<Wind> winds; // by ride
    double spread = 0;       // W, of what the windows miss by
};

// Gauss-Newton from a factor of 1: Huber's weights first, Tukey's then. Who knows nothing expects 1 +- 0.6, and 0 +- 2
// m/s of wind.
DragFit fitDrag(std::span<const RideWindows> rides, double rollingShare = 1);

// Standard error of the factor by what the windows tell alone: drawn anew by blocks of five minutes, the same numbers
// each time.
double drawnError(std::span<const RideWindows> rides, const DragFit& fit);

} // namespace torvane
