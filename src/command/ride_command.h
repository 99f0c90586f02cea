// The commands of the ride simulations: sets a run up, runs it, lets the reports write, and leaves the curves.
#pragma once

#include "command/session.h"
#include "core/result_status.h"

namespace torvane {

// A graph that is asked for is drawn, whatever the preference says.
void wantGraph(ParameterBlock& working);

// The ride that the working block's rideMode and rideTarget name; runs on the worker. A mode beyond the last does
// nothing. Leaves its curves in commandGraph where the user wants any and the run has them. Returns the status of the
// run.
ResultStatus dispatchRide(Session& session);

} // namespace torvane
