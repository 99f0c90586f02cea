// The constant braking force that a figure of the run asks for. Leaves it in found.force, with the run's results.
// Status: as seekTarget; statusIllegalValue for a start not above the end, or a wanted power or acceleration that is
// not negative, or a time or distance that is not positive.
#pragma once

#include "ride/ride_records.h"

namespace torvane {

ResultStatus seekBrakeForPeakPower(RideRun& ride);                 // the power as entered, at the road
ResultStatus seekBrakeForMeanPower(RideRun& ride);                 // the same, mean over the time
ResultStatus seekBrakeForSectorTime(RideRun& ride, double wanted); // s; it reads as wanted afterwards
ResultStatus seekBrakeForDistance(RideRun& ride, double wanted);   // m
ResultStatus seekBrakeForAccele(RideRun& ride, double wanted);     // m/s2

} // namespace torvane
