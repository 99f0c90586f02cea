// The tool that shifts every absolute time of a file by a fixed offset. Compressed timestamps are relative and stay.
#include "fit/message_fields.h"
#include "fit/tool_support.h"

namespace torvane {

namespace {

bool isTimestamp(uint16_t message, uint8_t field)
{
    switch (message) {
    case messageFileId:
        return field == fileIdTimeCreated;
    case messageSession:
    case messageLap:
    case messageLength: // whose start has the same number
        return field == summaryStartTime || field == timestampField;
    case messageActivity:
        return field == activityLocalTimestamp || field == timestampField;
    default:
        return field == timestampField;
    }
}

void shiftTimestamps(const FitMessage& message, std::span<uint8_t> copy, uint32_t offset)
{
    bool big = message.definition->bigEndian();
    forEachCopiedField(message, copy, [&](const FieldDefinition& field, size_t place, std::span<uint8_t> bytes) {
        if (isTimestamp(message.globalMessage(), field.number))
            writeUint32Field(bytes, readUint32(message.payload, place, big) + offset, big);
    });
}

} // namespace

Verdict checkTimestamp(ToolInputs& inputs, ParameterBlock& options)
{
    return checkSameSizeTool(inputs, options.timestampOutput);
}

int32_t timestampShift(const ParameterBlock& options)
{
    return options.timestampTruncate != 0 ? options.timestampOffset & ~0xFF : options.timestampOffset;
}

ToolOutcome runTimestamp(const ToolInputs& inputs, const ParameterBlock& options, Progress* progress)
{
    uint32_t offset = static_cast<uint32_t>(timestampShift(options));
    return rewriteSameSize(inputs, options.timestampOutput, progress,
                           [&](const FitMessage& message, std::span<uint8_t> copy) {
                               if (message.isDefinition)
                                   return;
                               shiftTimestamps(message, copy, offset);
                               markManufacturer(message, copy);
                               applySport(message, copy, options.timestampOutput);
                           });
}

} // namespace torvane
