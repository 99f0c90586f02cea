// Many rides by one call of the console: several at a time, answered in the order in which they were given.
#pragma once

#include "cli/answer.h"
#include "cli/command_files.h"
#include "cli/request.h"
#include "command/fill.h"

#include <functional>
#include <string>

namespace torvane {

// One ride: its exit code; its answer, and what it has to say at once, go where they are told to.
using RideOfBatch = std::function<int(Session& session, const RunFiles& files, Answer& answer, Streams& streams)>;

// The settings of one session into another, which is new.
void copySettings(const Session& settings, Session& own);

// Each ride has a session of its own, which starts from the settings of `session`; one that fails is named, and the
// rest go on. What became of each stands in the manifest of the folder of --into, under `options`, the hash of all that
// an answer depends on besides its ride; with --resume those are left out that it has as done. A signal to end stops
// those that are begun. Afterwards the session has the settings that the last ride in order which was done has left.
// The exit code of them all; where JSON is asked for, each answer is an object on a line of its own.
int runBatch(Session& session, const Request& request, const PlannedRuns& planned, const std::string& options,
             const RideOfBatch& run, Answer& answer, Streams& streams);

} // namespace torvane
