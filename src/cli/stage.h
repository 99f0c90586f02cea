// The console as a stage of a pipe that others run: rides come in by lines, and for each an answer goes out.
#pragma once

#include "cli/batch.h"

#include <istream>

namespace torvane {

// A line is a JSON object with `name` and `bytes`, the ride's file in base64; it is answered by one line, that of
// --json with `source` the name, before the next is read. A line that is none is answered by an error. Until the end of
// `in`, or a signal to end. Each ride starts from the settings of `session`. exitFailed where one failed.
int runStage(const Session& session, const RideOfBatch& run, std::istream& in, Answer& answer, Streams& streams);

} // namespace torvane
