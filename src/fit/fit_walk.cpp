#include "fit/fit_walk.h"

namespace torvane {

namespace {

constexpr size_t definitionHead = 6; // header, reserved, architecture, message number, field count
constexpr size_t tripleSize = 3;

// Copies triples over the front of a slot's list. Returns the sum of their sizes.
uint32_t takeTriples(std::span<const uint8_t> triples, std::array<FieldDefinition, maxFieldCount>& fields)
{
    uint32_t total = 0;
    for (size_t i = 0; i * tripleSize < triples.size(); ++i) {
        const uint8_t* triple = triples.data() + i * tripleSize;
        fields[i] = {triple[0], triple[1], triple[2]};
        total += triple[1];
    }
    return total;
}

// Length of the definition message that these bytes start with; 0 when they end before it does.
size_t definitionLength(std::span<const uint8_t> bytes)
{
    if (bytes.size() < definitionHead)
        return 0;
    size_t length = definitionHead + tripleSize * bytes[5];
    if ((bytes[0] & headerDeveloperPart) != 0) {
        if (length >= bytes.size())
            return 0;
        length += 1 + tripleSize * bytes[length];
    }
    return length <= bytes.size() ? length : 0;
}

uint32_t sumOfSizes(std::span<const uint8_t> triples)
{
    uint32_t total = 0;
    for (size_t i = 1; i < triples.size(); i += tripleSize)
        total += triples[i];
    return total;
}

// Length of the data messages of a definition message.
size_t dataLength(std::span<const uint8_t> definition)
{
    size_t fieldEnd = definitionHead + tripleSize * definition[5];
    size_t length = 1 + sumOfSizes(definition.subspan(definitionHead, fieldEnd - definitionHead));
    return fieldEnd < definition.size() ? length + sumOfSizes(definition.subspan(fieldEnd + 1)) : length;
}

} // namespace

FitWalk startWalk(const FitImage& image)
{
    FitWalk walk;
    walk.block = image.data;
    walk.progress = image.progress;
    return walk;
}

bool takeDefinition(LocalDefinitions& definitions, std::span<const uint8_t> rest, FitMessage& message)
{
    size_t length = definitionLength(rest);
    if (length == 0)
        return false;
    message.bytes = rest.first(length);
    message.payload = {};
    message.localType = message.header & headerLocalType;
    message.compressed = false;

    LocalDefinition& slot = definitions[message.localType];
    slot.message = message.bytes;
    slot.header = message.header;
    slot.localType = message.localType;
    slot.architecture = rest[2];
    slot.globalMessage = readUint16(rest, 3, slot.bigEndian());
    slot.fieldCount = rest[5];
    size_t fieldEnd = definitionHead + tripleSize * slot.fieldCount;
    slot.fieldBytes = takeTriples(rest.subspan(definitionHead, tripleSize * slot.fieldCount), slot.fields);
    bool developerPart = fieldEnd < length;
    slot.developerFieldCount = developerPart ? rest[fieldEnd] : 0;
    slot.developerBytes = developerPart ? takeTriples(message.bytes.subspan(fieldEnd + 1), slot.developerFields) : 0;
    message.definition = &slot;
    return true;
}

void showWalkProgress(FitWalk& walk)
{
    size_t percent = walk.position * 100 / walk.block.size();
    reportProgress(walk.progress, static_cast<int>(percent));
    walk.progressAt = ((percent + 1) * walk.block.size() + 99) / 100;
}

bool MessageLengths::walk(std::span<const uint8_t> piece)
{
    size_t position = 0;
    while (position < piece.size()) {
        uint8_t header = piece[position];
        if ((header & headerDefinition) == 0) {
            position += lengths[dataLocalType(header)];
            continue;
        }
        std::span<const uint8_t> rest = piece.subspan(position);
        size_t length = definitionLength(rest);
        if (length == 0)
            return false;
        lengths[header & headerLocalType] = dataLength(rest.first(length));
        position += length;
    }
    return position == piece.size();
}

} // namespace torvane
