// What the checks and runs of the FIT tools share.
#include "fit/tool_support.h"

#include "core/files.h"
#include "fit/fit_types.h"

namespace torvane {

namespace {

bool checkHeaderForm(const FitImage& source, const OutputChoice& output, Verdict& verdict)
{
    int headerSize = source.headerBytes[0];
    if (headerSize == legacyHeaderSize && output.fitFormat == formLegacy)
        return refuse(verdict, "warning", "no need to convert cause the source file is formated as legacy format");
    if (headerSize == modernHeaderSize && output.fitFormat == formModern)
        return refuse(verdict, "warning", "no need to convert cause the source file is formated as modern format");
    if (headerSize != legacyHeaderSize && headerSize != modernHeaderSize)
        return refuse(verdict, "error", "detected an invalid source file structure");
    return true;
}

} // namespace

bool refuse(Verdict& verdict, const char* title, const char* text, size_t file)
{
    verdict.passed = false;
    verdict.file = file;
    verdict.boxes.push_back({title, text});
    return false;
}

bool checkSourceHeader(ToolInputs& inputs, FitImage& source, Verdict& verdict, const char* headerFault)
{
    for (SourceFileInfo& info : inputs.files)
        clearSurvey(info);
    if (!fileExists(inputs.files[0].path))
        return refuse(verdict, "error", "not existing a source file");
    if (readFitHeader(source, inputs.files[0].path) != fitOk)
        return refuse(verdict, "error", headerFault);
    return true;
}

bool checkActivity(ToolInputs& inputs, FitImage& source, Verdict& verdict, const char* surveyFault)
{
    if (surveyFitFile(source, inputs.files[0]) != fitOk)
        return refuse(verdict, "error", surveyFault);
    if (inputs.files[0].fileType != fileTypeActivity)
        return refuse(verdict, "error", "found an invalid file id type of a source file");
    return true;
}

bool endsWithDefinitionOf(const SourceFileInfo& info, uint16_t message)
{
    return std::ranges::find(info.messagesAtEnd, message) != info.messagesAtEnd.end();
}

Verdict checkSameSizeTool(ToolInputs& inputs, const OutputChoice& output)
{
    Verdict verdict;
    FitImage source = {};
    if (!checkSourceHeader(inputs, source, verdict, "detect an invalid source file structure"))
        return verdict;
    if (output.convertEnabled != 0 && !checkHeaderForm(source, output, verdict))
        return verdict;
    checkDestination(inputs, verdict);
    return verdict;
}

StatusCode openSource(FitImage& source, SourceFileInfo& info, Progress* progress)
{
    if (StatusCode code = loadFitImage(source, info.path); code != fitOk)
        return code;
    source.progress = progress;
    return surveyFitMessages(source, info);
}

bool saveDestination(FitImage& destination, const FitImage& source, const OutputChoice& output, const std::string& path,
                     Flush flush)
{
    destination.dataSize = static_cast<int32_t>(destination.data.size());
    buildFitHeader(destination, source, headerForm(output.convertEnabled, output.fitFormat));
    destination.fileCrc = fitCrc(destination);
    return saveFitFile(destination, path, flush);
}

void applySport(const FitMessage& message, std::span<uint8_t> copy, const OutputChoice& output)
{
    if (output.sportEnabled != 0)
        setSport(message, copy, sportValue(output.sportIndex));
}

} // namespace torvane
