// The commands of a recorded ride: load steps, analysis, file and report joined. Each starts from the file on disk,
// or from the ride in memory, and keeps no track between commands; runs on the worker and answers with a status code of
// fit_codes.h, 0 for success. Loading itself is a command of its own.
#pragma once

#include "command/session.h"
#include "fit/fit_codes.h"

namespace torvane {

// The track of the loaded file as it is, without the records under the threshold speed: summary and table.
StatusCode expressSourceData(Session& session);

// The same with cadence, power and brake heat predicted.
StatusCode analyseAndPredict(Session& session);

// The analysis again, written to the destination of the session's inputs; no report but the status line.
StatusCode createAnalysedFile(Session& session);

// The same into memory; the bytes of the file are of the image.
StatusCode createAnalysedImage(Session& session, FitImage& destination);

// Loads the source of the session's inputs, analyses, reports and writes their destination. What was written is the
// loaded ride from now on; where that fails, a ride loaded before stays as it was.
StatusCode atOneStroke(Session& session);

} // namespace torvane
