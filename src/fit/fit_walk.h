// The one walk over the messages of a data block. Every pass, the writer and every tool go through it, so what a header
// byte means and where a block ends is decided here. It decodes no field.
//
// Bit 6 of a header byte is looked at first: a compressed timestamp header of local type 2 or 3 is taken for a
// definition, so only local types 0 and 1 can carry compressed timestamps.
// A local type that was never defined has no fields: its data messages are one byte long.
// A message that runs past the end of the block is a fault; no byte outside the block is ever read.
#pragma once

#include "fit/fit_bytes.h"
#include "fit/fit_image.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace torvane {

// Global message numbers that a walk acts on.
enum GlobalMessage : uint16_t {
    messageFileId = 0,
    messageSession = 18,
    messageLap = 19,
    messageRecord = 20,
    messageEvent = 21,
    messageCourse = 31,
    messageCoursePoint = 32,
    messageActivity = 34,
    messageLength = 101,
};

// Bits of a message's header byte.
constexpr uint8_t headerDefinition = 0b0100'0000;
constexpr uint8_t headerCompressed = 0b1000'0000;    // of a data message
constexpr uint8_t headerDeveloperPart = 0b0010'0000; // of a definition
constexpr uint8_t headerLocalType = 0b0000'1111;

struct FieldDefinition {
    uint8_t number;
    uint8_t size; // bytes
    uint8_t baseType;
};

constexpr int localTypeCount = 16;
constexpr int maxFieldCount = 255;

// The present meaning of a local message type. Overwritten in place by a new definition: triples behind fieldCount are
// what longer earlier definitions left there.
struct LocalDefinition {
    uint8_t header; // of the definition message
    uint8_t localType;
    uint8_t architecture; // 0 little-endian, any other value big-endian
    uint16_t globalMessage;
    uint8_t fieldCount;
    uint8_t developerFieldCount; // 0 without headerDeveloperPart
    std::array<FieldDefinition, maxFieldCount> fields;
    std::array<FieldDefinition, maxFieldCount> developerFields;
    uint32_t fieldBytes;              // sum of the sizes of fields
    uint32_t developerBytes;          // sum of the sizes of developerFields
    std::span<const uint8_t> message; // the definition message itself, a view into the block; empty where undefined

    bool bigEndian() const
    {
        return architecture != 0;
    }
    bool defined() const
    {
        return (header & headerDefinition) != 0;
    }
    std::span<const FieldDefinition> fieldList() const
    {
        return {fields.data(), fieldCount};
    }
};

using LocalDefinitions = std::array<LocalDefinition, localTypeCount>;

// One message, as a view into the block. Valid as long as the block; `definition` as long as the walk, until its slot
// is overwritten.
struct FitMessage {
    bool isDefinition;
    bool compressed; // a data message with a compressed timestamp header
    uint8_t header;
    uint8_t localType;
    size_t offset;                     // of the header byte in the block
    std::span<const uint8_t> bytes;    // the whole message
    std::span<const uint8_t> payload;  // of a data message: behind the header byte, developer bytes at its end
    const LocalDefinition* definition; // its slot; for a definition message already with the new content

    uint16_t globalMessage() const
    {
        return definition->globalMessage;
    }
    bool isData(uint16_t global) const
    {
        return !isDefinition && definition->globalMessage == global;
    }
    bool defines(uint16_t global) const
    {
        return isDefinition && definition->globalMessage == global;
    }
};

enum class WalkStep { message, end, fault };

// Knows what each local type means at its place. A copy goes on by itself.
struct FitWalk {
    std::span<const uint8_t> block;
    size_t position = 0;   // of the next message
    size_t progressAt = 0; // position at which the progress moves on by a whole percent
    Progress* progress = nullptr;
    // Bit 7 of a header byte is looked at first: compressed timestamps of local types 2 and 3 are what they are.
    bool compressedFirst = false;
    LocalDefinitions definitions = {}; // of each local type the last one; undefined at the start
};

// A walk from the first message on.
FitWalk startWalk(const FitImage& image);

// Local type that the header byte of a data message names.
constexpr uint8_t dataLocalType(uint8_t header)
{
    return (header & headerCompressed) != 0 ? header >> 5 & 3 : header & headerLocalType;
}

// The parts of a step, which is taken by every pass for every message: what is rare stands elsewhere.
bool takeDefinition(LocalDefinitions& definitions, std::span<const uint8_t> rest, FitMessage& message);
void showWalkProgress(FitWalk& walk);

inline bool takeData(const LocalDefinitions& definitions, std::span<const uint8_t> rest, FitMessage& message)
{
    message.compressed = (message.header & headerCompressed) != 0;
    message.localType = dataLocalType(message.header);
    const LocalDefinition& slot = definitions[message.localType];
    size_t length = 1 + size_t{slot.fieldBytes} + slot.developerBytes;
    if (length > rest.size())
        return false;
    message.bytes = rest.first(length);
    message.payload = message.bytes.subspan(1);
    message.definition = &slot;
    return true;
}

// Takes the next message and moves on behind it, the image's progress with it; a definition is put into its slot. On a
// fault the position stays and the slots are unchanged.
inline WalkStep nextMessage(FitWalk& walk, FitMessage& message)
{
    if (walk.position >= walk.block.size())
        return walk.position == walk.block.size() ? WalkStep::end : WalkStep::fault;
    std::span<const uint8_t> rest = walk.block.subspan(walk.position);
    message.header = rest[0];
    message.offset = walk.position;
    bool compressed = walk.compressedFirst && (message.header & headerCompressed) != 0;
    message.isDefinition = (message.header & headerDefinition) != 0 && !compressed;
    bool taken = message.isDefinition ? takeDefinition(walk.definitions, rest, message)
                                      : takeData(walk.definitions, rest, message);
    if (!taken)
        return WalkStep::fault;
    walk.position += message.bytes.size();
    if (walk.position >= walk.progressAt)
        showWalkProgress(walk);
    return WalkStep::message;
}

// Where messages end, by their lengths alone: faster than to take them.
class MessageLengths {
public:
    MessageLengths()
    {
        lengths.fill(1);
    }
    // Goes on over the next piece of a data block. False unless it ends where a message does.
    bool walk(std::span<const uint8_t> piece);

private:
    std::array<size_t, localTypeCount> lengths; // of data messages, by local type
};

// Whether a walk over this block ends on its end.
inline bool walksToItsEnd(std::span<const uint8_t> block)
{
    return MessageLengths().walk(block);
}

// Visits the messages of a walk from its place on. 0, or fitInvalid when it does not end on the end of the block.
template <class Visit>
StatusCode walkMessages(FitWalk& walk, Visit&& visit)
{
    FitMessage message;
    WalkStep step;
    while ((step = nextMessage(walk, message)) == WalkStep::message)
        visit(static_cast<const FitMessage&>(message));
    return step == WalkStep::end ? fitOk : fitInvalid;
}

// Visits all messages of an image.
template <class Visit>
StatusCode walkMessages(const FitImage& image, Visit&& visit)
{
    FitWalk walk = startWalk(image);
    return walkMessages(walk, visit);
}

// Visits the fields of a data message in the order of its definition: visit(field definition, offset in the payload).
template <class Visit>
void forEachField(const FitMessage& message, Visit&& visit)
{
    size_t offset = 0;
    for (const FieldDefinition& field : message.definition->fieldList()) {
        visit(field, offset);
        offset += field.size;
    }
}

} // namespace torvane
