// Acceleration from runState.startVelocity to endVelocity on a constant inclination, by a reference power or by any of
// the reference factors that lead to one. Results in runState.
// Dry and logged run are the same physics to the last bit; the dry run only counts.
#pragma once

#include "core/result_status.h"
#include "ride/graph_series.h"
#include "ride/pedaled_run.h"
#include "ride/sample_log.h"

namespace torvane {

// Counts the rows into log.sampleCount. Status: statusIllegalValue for a negative power, a start not below the end or
// an unusable interval; statusTooShortPower when the power cannot hold the starting velocity; statusNoAcceleration;
// statusNotConverged when cut at 900 s or lost in numbers that are none; warnings statusEndNotReached, statusWheelSpin,
// statusOverReach.
ResultStatus accelerateDryRun(PowerLaw law, SampleLog& log);

// The same run into the log and, when not null, the curves, after a dry run that was not fatal. Returns the normalized
// power in W.
double accelerateLoggedRun(PowerLaw law, SampleLog& log, GraphSeries* graph);

// Each seeks the power whose run has the figure asked for, and leaves it in runState.power. Status: as seekTarget,
// statusIllegalValue, and where even the power for the ending velocity is too strong statusTooLongTime,
// statusTooLongDistance or statusTooHighAccele, with runState.seekLow and seekHigh as the limits.
ResultStatus seekMeanPower(SampleLog& log);  // runState.power as entered
ResultStatus seekSectorTime(SampleLog& log); // runState.sectorTime
ResultStatus seekDistance(SampleLog& log);   // runState.distance
ResultStatus seekAccele(SampleLog& log);     // runState.accele

} // namespace torvane
