// What the checks and runs of the FIT tools share. For the tools alone; others include fit_tools.h.
#pragma once

#include "fit/fit_output.h"
#include "fit/fit_tools.h"
#include "fit/size_limits.h"

namespace torvane {

// Checks. Each adds its box, with the file that it is about, and returns false where the command must not run.
bool refuse(Verdict& verdict, const char* title, const char* text, size_t file = 0);
// The first three steps of every tool with one source: forget earlier surveys, find the source, read its header.
bool checkSourceHeader(ToolInputs& inputs, FitImage& source, Verdict& verdict, const char* headerFault);
// Surveys the source, and wants it to be an activity.
bool checkActivity(ToolInputs& inputs, FitImage& source, Verdict& verdict, const char* surveyFault);
// Whether some local type stands defined for this message, not file_id, at the end of a surveyed file.
bool endsWithDefinitionOf(const SourceFileInfo& info, uint16_t message);
// The check of all tools that keep the size of the data block, by their own format choice.
Verdict checkSameSizeTool(ToolInputs& inputs, const OutputChoice& output);

// Loads and surveys a source for a run, whose progress its walks move.
StatusCode openSource(FitImage& source, SourceFileInfo& info, Progress* progress);
// Header and CRC for the data that stand in destination, then the file. The header's form is that of `output`.
bool saveDestination(FitImage& destination, const FitImage& source, const OutputChoice& output, const std::string& path,
                     Flush flush = Flush::each);

// What a tool answers where the destination was written, and where it could not be.
struct RunCodes {
    StatusCode saved;
    StatusCode notSaved;
};

// The run of a tool with one source and one destination: opens the source, lets `fill` make the data block, saves.
// fill(destination, source) answers 0 or the code of a fault, which is reported for the source as all faults are.
template <class Fill>
ToolOutcome rewriteSource(const ToolInputs& inputs, const OutputChoice& output, Progress* progress, RunCodes codes,
                          Fill&& fill)
{
    SourceFileInfo info = inputs.files[0];
    const std::string& path = inputs.files[toolDestination].path;
    FitImage source = {};
    if (StatusCode code = openSource(source, info, progress); code != fitOk)
        return {code, info.path};
    FitImage destination = {};
    if (StatusCode code = fill(destination, static_cast<const FitImage&>(source)); code != fitOk)
        return {code, info.path};
    if (!saveDestination(destination, source, output, path, inputs.flush))
        return {codes.notSaved, info.path};
    return {codes.saved, path};
}

// The run of all tools that keep the size of the data block: `rewrite` changes the copy of each message. Answers as the
// conversion does.
template <class Rewrite>
ToolOutcome rewriteSameSize(const ToolInputs& inputs, const OutputChoice& output, Progress* progress, Rewrite&& rewrite)
{
    auto fill = [&](FitImage& destination, const FitImage& source) {
        destination.data = source.data;
        std::span<uint8_t> copy = destination.data;
        return walkMessages(source, [&](const FitMessage& message) {
            rewrite(message, copy.subspan(message.offset, message.bytes.size()));
        });
    };
    return rewriteSource(inputs, output, progress, {fitConverted, fitConvertFailed}, fill);
}

// Writes the chosen sport into the copy of a session or lap, if the choice says so.
void applySport(const FitMessage& message, std::span<uint8_t> copy, const OutputChoice& output);

// Visits the fields of a data message together with their bytes in its copy, which are empty where the output ended
// before: visit(field definition, offset in the payload, bytes of the copy).
template <class Visit>
void forEachCopiedField(const FitMessage& message, std::span<uint8_t> copy, Visit&& visit)
{
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        visit(field, offset, fieldOf(copy, offset, field.size));
    });
}

} // namespace torvane
