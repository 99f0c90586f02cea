// The preparing tool: an activity as its device wrote it becomes one that the analysis reads well, with one record
// definition, a record each second, and fields that hold what they define. Nothing is repaired in silence: what was
// found is counted.
#pragma once

#include "core/fit_choices.h"
#include "core/verdict.h"
#include "fit/fit_image.h"
#include "fit/fit_tools.h"
#include "gps/prepare_findings.h"

namespace torvane {

struct PrepareOptions {
    int32_t gapLimit = 30; // s, longer steps stay as they are
    double jumpSpeed = 40; // m/s, faster no position follows another
    int32_t dropPower = 0; // leave out what was measured, so that it is predicted
    int32_t dropCadence = 0;
    int32_t sport = rideCycling; // RideSport, of a recording of several
};
constexpr int32_t leastGapLimit = 1, mostGapLimit = 300;    // s
constexpr double leastJumpSpeed = 10, mostJumpSpeed = 1000; // m/s

// Whether a ride is prepared before it is loaded, analysed and written at one stroke, and how. The tool's own dialog
// asks for the options alone.
struct Preparation {
    int32_t enabled = 0;
    PrepareOptions options = {};
};

// Makes the prepared file out of a loaded one, header and CRC included. Preparing a prepared file gives it back to the
// byte. What findings.source says of the file is read: a broken one gets the summaries that it lacks. fitOk;
// fitInvalid; fitSessionSportsDiffer where none of several sports is the one asked for; fitPrepareFailed without a
// record that has its time; fitTooLarge where the result or its tables would be.
StatusCode prepareActivity(const FitImage& source, const PrepareOptions& options, FitImage& prepared,
                           PrepareFindings& findings);

// Loads a file, of whatever kind, and prepares it. The codes of loadRideSource and those above.
StatusCode loadPrepared(FitImage& prepared, const std::string& path, const PrepareOptions& options,
                        PrepareFindings& findings, Progress* progress = nullptr);

// What a check says of a ride that cannot be prepared; none for fitOk.
const char* preparingFault(StatusCode code);

// The tool's check and run, as those of fit_tools.h.
Verdict checkPrepare(ToolInputs& inputs, const PrepareOptions& options);
struct PrepareOutcome {
    ToolOutcome tool;
    PrepareFindings findings = {};
};
PrepareOutcome runPrepare(const ToolInputs& inputs, const PrepareOptions& options, Progress* progress = nullptr);

} // namespace torvane
