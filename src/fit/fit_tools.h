// The FIT tools: each a check, which the dialog runs when its confirming button is pressed, and a run for the worker.
// A check answers in message boxes; a run answers in a code for the report. Neither shows anything itself.
#pragma once

#include "core/files.h"
#include "core/parameter_block.h"
#include "core/progress.h"
#include "core/verdict.h"
#include "fit/fit_codes.h"
#include "fit/fit_survey.h"

#include <array>
#include <string>

namespace torvane {

constexpr size_t toolSourceCount = 12;    // most tools have the first alone
constexpr size_t combinedSourceCount = 5; // of the combination
constexpr size_t toolDestination = toolSourceCount;

// The paths of one tool. The dialog fills in the paths; the check fills in the rest, which the run reads.
struct ToolInputs {
    std::array<SourceFileInfo, toolSourceCount + 1> files;
    Flush flush = Flush::each; // of the destination
};

// What a run came to: the code and the file it is reported for.
struct ToolOutcome {
    StatusCode code = fitOk;
    std::string path = {};       // whose name the report shows
    bool reported = true;        // false: the panes stay as they are
    std::vector<Box> boxes = {}; // to show at once
};

// Checks may complete the destination path with its extension, blank a source that is given twice, and clear an option
// that the source does not allow (addLap ..., excludeLap ...): the form then shows the options again.
// `options` are the form's own values. Boxes are to be shown in their order.
Verdict checkCombine(ToolInputs& inputs, ParameterBlock& options);
Verdict checkConvert(ToolInputs& inputs, ParameterBlock& options);
Verdict checkAddMessages(ToolInputs& inputs, ParameterBlock& options);
Verdict checkDivide(ToolInputs& inputs, ParameterBlock& options);
Verdict checkExclude(ToolInputs& inputs, ParameterBlock& options);
Verdict checkTimestamp(ToolInputs& inputs, ParameterBlock& options);
Verdict checkFieldDump(ToolInputs& inputs, ParameterBlock& options);

// Runs read the inputs that a passed check left, and the stored options. A destination is replaced whole or not at all.
// They move the progress, where somebody looks.
ToolOutcome runCombine(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress = nullptr);
ToolOutcome runConvert(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress = nullptr);
ToolOutcome runAddMessages(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress = nullptr);
ToolOutcome runDivide(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress = nullptr);
ToolOutcome runExclude(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress = nullptr);
ToolOutcome runTimestamp(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress = nullptr);
ToolOutcome runFieldDump(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress = nullptr);

// By how much the timestamps move, in s: the stored offset, without its low byte when timestampTruncate is set.
int32_t timestampShift(const ParameterBlock& options);

// A destination needs an existing folder and a name; a name that does not end in ".fit" or ".FIT" gets ".fit" appended
// (".csv" for a dump, ".pro" for a profile). On a fault the box is added to verdict and false comes back.
bool checkDestinationPath(std::string& path, Verdict& verdict);
// The same for the destination of a tool, which is none of its sources either.
bool checkDestination(ToolInputs& inputs, Verdict& verdict);
bool checkDumpDestination(ToolInputs& inputs, Verdict& verdict);
bool checkProfileDestination(ToolInputs& inputs, Verdict& verdict);
// The same of a course, which may be a GPX file as well.
bool checkCourseDestination(ToolInputs& inputs, Verdict& verdict);
// For a division, by the survey that its check made: the path is only what the names of the parts are made of.
bool checkPartDestinations(ToolInputs& inputs, Verdict& verdict);
// That a file to be written is not the source, by whatever names, links and spellings the two go.
bool checkNoSource(const std::string& path, const std::string& source, Verdict& verdict);

// Path of a part of a division, counted from 0: "_" and the number with at least three digits, in front of the
// extension of the base path.
std::string dividedFileName(const std::string& basePath, int32_t part);
// How many parts a source gives, by the survey that its check made.
int32_t dividedPartCount(const SourceFileInfo& source);

} // namespace torvane
