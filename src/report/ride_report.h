// The reports of the six ride simulations, into the lower pane and the status line.
#pragma once

#include "core/progress.h"
#include "core/screens.h"
#include "ride/ride_records.h"

#include <string>

namespace torvane {

// Clears the lower pane, sets the status line and prints the report of the mode. A fatal status ends the
// report after its alert lines; any other report ends with an empty line.
void reportRide(Screens& screens, const RideRun& ride);

// Heading of the process table for an acceleration, a deceleration or, with thrustMode, a braking run.
void reportProcessHeading(Screens& screens, const RideRun& ride);
// The same table for a run that rolls without power.
void reportRollingHeading(Screens& screens);
// One line for each row of the log; the progress bar follows the rows.
void reportProcessRows(Screens& screens, const SampleLog& log, Progress* progress = nullptr);

// Table of intermittent braking: one line for each sector.
void reportSectorHeading(Screens& screens);
void reportSectorRows(Screens& screens, const SampleLog& log);

// The value of the reference factor of an acceleration or deceleration, with its unit, as the title quotes it. Empty
// for an index that has none.
std::string reportReference(const RideRun& ride);

} // namespace torvane
