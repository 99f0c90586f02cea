// Acceleration from startVelocity to endVelocity on a constant inclination, by a reference power or by any of
// the reference factors that lead to one.
// Dry and logged run are the same physics to the last bit; the dry run only counts.
#pragma once

#include "ride/pedaled_run.h"
#include "ride/ride_records.h"

namespace torvane {

// Counts the rows into log.sampleCount. Status: statusIllegalValue for a negative power, a start not below the end or
// an unusable interval; statusTooShortPower when the power cannot hold the starting velocity; statusNoAcceleration;
// statusNotConverged when cut at 900 s or lost in numbers that are none; warnings statusEndNotReached, statusWheelSpin,
// statusOverReach.
ResultStatus accelerateDryRun(RideRun& ride, PowerLaw law);

// The same run into the log and, when wanted, the curves, after a dry run that was not fatal. Returns the normalized
// power in W.
double accelerateLoggedRun(RideRun& ride, PowerLaw law);

// Each seeks the power whose run has the figure wanted, and leaves it in found.power. Status: as seekTarget,
// statusIllegalValue, and where even the power for the ending velocity is too strong statusTooLongTime,
// statusTooLongDistance or statusTooHighAccele, with found.seekLow and seekHigh as the limits.
ResultStatus seekMeanPower(RideRun& ride, double wanted);  // W
ResultStatus seekSectorTime(RideRun& ride, double wanted); // s
ResultStatus seekDistance(RideRun& ride, double wanted);   // m
ResultStatus seekAccele(RideRun& ride, double wanted);     // m/s2

} // namespace torvane
