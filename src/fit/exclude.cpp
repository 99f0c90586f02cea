// The exclude tool: leaves out all laps, sessions or activities of a file, definitions included.
// Alone among the tools it does not mark the manufacturer.
#include "fit/message_fields.h"
#include "fit/tool_support.h"

namespace torvane {

namespace {

struct Exclusion {
    int32_t ParameterBlock::*option;
    uint16_t message;
    const char* missing;
};

constexpr Exclusion exclusions[] = {
    {&ParameterBlock::excludeLap, messageLap, "lap message is not existing in a source file"},
    {&ParameterBlock::excludeSession, messageSession, "session message is not existing in a source file"},
    {&ParameterBlock::excludeActivity, messageActivity, "activity message is not existing in a source file"},
};

bool isExcluded(const ParameterBlock& options, uint16_t message)
{
    for (const Exclusion& row : exclusions)
        if (row.message == message && options.*row.option != 0)
            return true;
    return false;
}

bool checkExclusions(const SourceFileInfo& info, ParameterBlock& options, Verdict& verdict)
{
    for (const Exclusion& row : exclusions) {
        if (options.*row.option == 0 || endsWithDefinitionOf(info, row.message))
            continue;
        options.*row.option = 0;
        return refuse(verdict, "warning", row.missing);
    }
    return true;
}

void clearSessionTotal(const FitMessage& message, std::span<uint8_t> copy)
{
    if (!message.isData(messageActivity))
        return;
    forEachCopiedField(message, copy, [&](const FieldDefinition& field, size_t, std::span<uint8_t> bytes) {
        if (field.number == activitySessionCount)
            writeUint32Field(bytes, 0, message.definition->bigEndian());
    });
}

// Leaves in destination.data what stays of the source. 0, or fitInvalid as every walk.
StatusCode excludeFitMessages(FitImage& destination, const FitImage& source, const ParameterBlock& options)
{
    destination.data.assign(source.data.size(), 0);
    FitOutput out = {destination.data};
    StatusCode code = walkMessages(source, [&](const FitMessage& message) {
        if (isExcluded(options, message.globalMessage()))
            return;
        std::span<uint8_t> copy = copyMessage(out, message);
        applySport(message, copy, options.excludeOutput);
        if (options.excludeSession != 0)
            clearSessionTotal(message, copy);
    });
    destination.data.resize(out.position);
    return code;
}

} // namespace

Verdict checkExclude(ToolInputs& inputs, ParameterBlock& options)
{
    Verdict verdict;
    FitImage source = {};
    if (checkSourceHeader(inputs, source, verdict, "detect an invalid source file structure") &&
        checkActivity(inputs, source, verdict, "failed to read a source file which might be an invalid structure") &&
        checkExclusions(inputs.files[0], options, verdict))
        checkDestination(inputs, verdict);
    return verdict;
}

ToolOutcome runExclude(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress)
{
    auto fill = [&](FitImage& destination, const FitImage& source) {
        return excludeFitMessages(destination, source, options);
    };
    // In the words of the add tool, as ever.
    return rewriteSource(inputs, options.excludeOutput, progress, {fitAdded, fitAddFailed}, fill);
}

} // namespace torvane
