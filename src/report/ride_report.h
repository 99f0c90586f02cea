// The reports of the six ride simulations, into the lower pane and the status line. They read runState, modelState, the
// physiology figures and, for mode and target, workingBlock; they change nothing.
#pragma once

#include "core/result_status.h"
#include "core/screens.h"

#include <string>

namespace torvane {

struct SampleLog;

// Clears the lower pane, sets the status line and prints the report of workingBlock.rideMode. A fatal status ends the
// report after its alert lines; any other report ends with an empty line.
void reportRide(Screens& screens, ResultStatus status);

// Heading of the process table for an acceleration, a deceleration or, with runState.thrustMode, a braking run.
void reportProcessHeading(Screens& screens);
// The same table for a run that rolls without power.
void reportRollingHeading(Screens& screens);
// One line for each row of the log; the progress bar follows the rows.
void reportProcessRows(Screens& screens, const SampleLog& log);

// Table of intermittent braking: one line for each sector.
void reportSectorHeading(Screens& screens);
void reportSectorRows(Screens& screens, const SampleLog& log);

// The value of the reference factor of an acceleration or deceleration, with its unit, as the title quotes it. Empty
// for an index that has none.
std::string reportReference();

} // namespace torvane
