// A result status in words, for the theory calculators and for the rides; the same bit can mean different things to the
// two.
#pragma once

#include "ride/ride_records.h"

#include <string>

namespace torvane {

// What the status line adds to its title: ", with fatal error", ", with any warning", or nothing.
const char* statusTail(ResultStatus status);

// The alert or warning lines under a title. Warnings are told only where nothing is fatal. A bit without a text of its
// own leaves its heading alone; status 0 gives an empty text.
std::string theoryStatusLines(ResultStatus status);
// Quotes limits and velocities of the run.
std::string rideStatusLines(const RideRun& ride);

} // namespace torvane
