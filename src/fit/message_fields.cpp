#include "fit/message_fields.h"

namespace torvane {

std::optional<size_t> firstFieldOffset(const FitMessage& message, uint8_t number)
{
    size_t offset = 0;
    for (const FieldDefinition& field : message.definition->fieldList()) {
        if (field.number == number)
            return offset;
        offset += field.size;
    }
    return std::nullopt;
}

std::optional<size_t> lastFieldOffset(const FitMessage& message, uint8_t number)
{
    std::optional<size_t> last;
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        if (field.number == number)
            last = offset;
    });
    return last;
}

std::optional<uint8_t> lastUint8(const FitMessage& message, uint8_t number)
{
    std::optional<size_t> offset = lastFieldOffset(message, number);
    return offset ? std::optional(readUint8(message.payload, *offset)) : std::nullopt;
}

std::optional<uint32_t> lastUint32(const FitMessage& message, uint8_t number)
{
    std::optional<size_t> offset = lastFieldOffset(message, number);
    if (!offset)
        return std::nullopt;
    return readUint32(message.payload, *offset, message.definition->bigEndian());
}

std::optional<uint8_t> fileTypeOf(const FitMessage& message)
{
    std::optional<size_t> offset = firstFieldOffset(message, fileIdType);
    return offset ? std::optional(readUint8(message.payload, *offset)) : std::nullopt;
}

} // namespace torvane
