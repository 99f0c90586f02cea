#include "fit/fit_output.h"

#include "fit/message_fields.h"

#include <algorithm>

namespace torvane {

std::span<uint8_t> reserveBytes(FitOutput& output, size_t count)
{
    size_t start = output.position;
    output.position += count;
    if (output.position > output.block.size())
        return {};
    return std::span(output.block).subspan(start, count);
}

std::span<uint8_t> copyBytes(FitOutput& output, std::span<const uint8_t> bytes)
{
    std::span<uint8_t> copy = reserveBytes(output, bytes.size());
    std::copy_n(bytes.begin(), copy.size(), copy.begin());
    return copy;
}

void markManufacturer(const FitMessage& message, std::span<uint8_t> copy)
{
    if (!message.isData(messageFileId))
        return;
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        if (field.number == fileIdManufacturer)
            writeField(fieldOf(copy, offset, field.size), 0xFF, false);
    });
}

bool saveFitFile(const FitImage& image, const std::string& path, Flush flush)
{
    return walksToItsEnd(image.data) && writeFitFile(image, path, flush) == 0;
}

void setSport(const FitMessage& message, std::span<uint8_t> copy, uint8_t sport)
{
    if (!message.isData(messageSession) && !message.isData(messageLap))
        return;
    uint8_t sportField = message.globalMessage() == messageSession ? sessionSport : lapSport;
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        if (field.number == sportField)
            writeField(fieldOf(copy, offset, field.size), sport, message.definition->bigEndian());
    });
}

} // namespace torvane
