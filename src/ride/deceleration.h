// Deceleration from runState.startVelocity to endVelocity while still pedaling at a reduced reference power, or none.
// Where pedaling alone cannot slow so much, runState.thrustMode is set: the run is one of braking (braking_run.h) then.
#pragma once

#include "core/result_status.h"
#include "ride/graph_series.h"
#include "ride/pedaled_run.h"
#include "ride/sample_log.h"

namespace torvane {

// Counts the rows into log.sampleCount. A negative power answers 0 with thrustMode set and nothing run. Status:
// statusIllegalValue for an end not below the start or an unusable interval; statusNoDeceleration when coasting does
// not slow; statusTooLargePower when the power does not let slow; statusNotConverged when cut at 900 s; warning
// statusDeclineMayStop.
ResultStatus decelerateDryRun(PowerLaw law, SampleLog& log);

// The same run into the log and, when not null, the curves. Returns the normalized power in W.
double decelerateLoggedRun(PowerLaw law, SampleLog& log, GraphSeries* graph);

// The reference power that holds the ending velocity, run once. Where the road pushes harder than the drags hold, the
// force that holds it is braked instead.
ResultStatus decelPowerForEndingVelocity(SampleLog& log);

// Each seeks the power whose run has the figure asked for, or, with thrustMode set, the braking force. Status: as
// seekTarget, statusIllegalValue, the dry run's, and where even the power for the ending velocity slows too hard
// statusTooLongTime, statusTooLongDistance or statusTooHighAccele, with seekLow and seekHigh as the limits.
ResultStatus decelSeekMeanPower(SampleLog& log);  // runState.power as entered
ResultStatus decelSeekSectorTime(SampleLog& log); // runState.sectorTime
ResultStatus decelSeekDistance(SampleLog& log);   // runState.distance
ResultStatus decelSeekAccele(SampleLog& log);     // runState.accele

} // namespace torvane
