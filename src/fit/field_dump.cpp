// The field dump: every message of a FIT file as text, decoded fields beside the raw bytes. The program's own lens for
// the format; values are raw numbers.
#include "core/files.h"
#include "fit/tool_support.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <memory>

namespace torvane {

namespace {

enum class Shown : uint8_t { none, bits8, bits16, bits32 };

struct DumpField {
    uint8_t number;
    const char* name;
    Shown shown; // width of its value; none: shown as unknown
};

constexpr DumpField fileIdFields[] = {
    {0, "fileType", Shown::bits8},
    {1, "manufacturer", Shown::bits16},
    {2, "product", Shown::bits16},
    {4, "timeCreated", Shown::bits32},
};

constexpr DumpField sessionFields[] = {
    {0, "event", Shown::bits8},           {1, "eventType", Shown::bits8},         {2, "startTime", Shown::bits32},
    {3, "startLatitude", Shown::bits32},  {4, "startLongitude", Shown::bits32},   {5, "sport", Shown::bits8},
    {7, "totalElapsed", Shown::bits32},   {8, "totalTimer", Shown::bits32},       {9, "totalDistance", Shown::bits32},
    {11, "totalCalories", Shown::bits16}, {14, "avgSpeed", Shown::bits16},        {15, "maxSpeed", Shown::bits16},
    {18, "avgCadence", Shown::bits8},     {19, "maxCadence", Shown::bits8},       {20, "avgPower", Shown::bits16},
    {21, "maxPower", Shown::bits16},      {22, "totalAscent", Shown::bits16},     {23, "totalDescent", Shown::bits16},
    {25, "firstLapIndex", Shown::bits16}, {26, "numLap", Shown::bits16},          {28, "triggerSession", Shown::bits8},
    {29, "necLatitude", Shown::bits32},   {30, "necLongitude", Shown::bits32},    {31, "swcLatitude", Shown::bits32},
    {32, "swcLongitude", Shown::bits32},  {59, "totalMovingTime", Shown::bits32}, {253, "timestamp", Shown::bits32},
    {254, "messageIndex", Shown::bits16},
};

constexpr DumpField lapFields[] = {
    {0, "event", Shown::bits8},           {1, "eventType", Shown::bits8},
    {2, "startTime", Shown::bits32},      {3, "startLatitude", Shown::bits32},
    {4, "startLongitude", Shown::bits32}, {5, "endLatitude", Shown::bits32},
    {6, "endLongitude", Shown::bits32},   {7, "totalElapsedTime", Shown::bits32},
    {8, "totalTimerTime", Shown::bits32}, {9, "totalDistance", Shown::bits32},
    {11, "totalCalories", Shown::bits16}, {13, "avgSpeed", Shown::bits16},
    {14, "maxSpeed", Shown::bits16},      {17, "avgCadence", Shown::bits8},
    {18, "maxCadence", Shown::bits8},     {19, "avgPower", Shown::bits16},
    {20, "maxPower", Shown::bits16},      {21, "totalAscent", Shown::bits16},
    {22, "totalDescent", Shown::bits16},  {24, "lapTrigger", Shown::bits8},
    {25, "sport", Shown::bits8},          {52, "totalMovingTime", Shown::bits32},
    {253, "timestamp", Shown::bits32},    {254, "messageIndex", Shown::bits16},
};

constexpr DumpField recordFields[] = {
    {0, "latitude", Shown::bits32}, {1, "longitude", Shown::bits32},  {2, "altitude", Shown::bits16},
    {4, "cadence", Shown::bits8},   {5, "distance", Shown::bits32},   {6, "speed", Shown::bits16},
    {7, "power", Shown::bits16},    {51, "ballSpeed", Shown::bits16}, {253, "timestamp", Shown::bits32},
};

constexpr DumpField eventFields[] = {
    {0, "event", Shown::bits8}, {1, "eventType", Shown::bits8},  {2, "data16", Shown::bits16},
    {3, "data", Shown::bits32}, {4, "eventGroup", Shown::bits8}, {253, "timestamp", Shown::bits32},
};

constexpr DumpField activityFields[] = {
    {0, "totalTimerTime", Shown::bits32}, {1, "numSession", Shown::bits16},  {2, "type", Shown::bits8},
    {3, "event", Shown::bits8},           {4, "eventType", Shown::bits8},    {5, "localTimestamp", Shown::bits32},
    {6, "eventGroup", Shown::none},       {253, "timestamp", Shown::bits32},
};

struct DumpMessage {
    uint16_t message;
    const char* tag;
    std::span<const DumpField> fields;  // none: neither names nor values are shown
    std::array<uint8_t, 256> rows = {}; // of a field number, counted from 1; 0 unknown

    constexpr DumpMessage(uint16_t number, const char* shownTag, std::span<const DumpField> known)
        : message(number), tag(shownTag), fields(known)
    {
        for (size_t row = 0; row < fields.size(); ++row)
            rows[fields[row].number] = static_cast<uint8_t>(row + 1);
    }
};

constexpr DumpMessage dumpMessages[] = {
    {messageFileId, "-- file_id --", fileIdFields},
    {messageSession, "-- session --", sessionFields},
    {messageLap, "-- lap --", lapFields},
    {messageRecord, "-- record --", recordFields},
    {messageEvent, "-- event --", eventFields},
    {messageActivity, "-- activity --", activityFields},
    {messageLength, "-- length --", {}},
};

constexpr DumpMessage unknownMessage = {0xFFFF, "-- unknown --", {}};

const DumpMessage& dumpMessage(uint16_t message)
{
    for (const DumpMessage& row : dumpMessages)
        if (row.message == message)
            return row;
    return unknownMessage;
}

const DumpField* dumpField(const DumpMessage& message, uint8_t number)
{
    uint8_t row = message.rows[number];
    return row == 0 ? nullptr : &message.fields[row - 1];
}

using HexText = std::array<char, 4>; // "0A, "

constexpr std::array<HexText, 256> makeHexTexts()
{
    constexpr char digits[] = "0123456789ABCDEF";
    std::array<HexText, 256> texts = {};
    for (size_t byte = 0; byte < texts.size(); ++byte)
        texts[byte] = {digits[byte / 16], digits[byte % 16], ',', ' '};
    return texts;
}

constexpr std::array<HexText, 256> hexTexts = makeHexTexts();

// The text so far. Memory for the longest that the image can have is there from the start, see longestDump: so nothing
// is moved or cleared while it grows.
struct DumpText {
    std::unique_ptr<char[]> block;
    char* end;

    explicit DumpText(size_t longest) : block(std::make_unique_for_overwrite<char[]>(longest)), end(block.get()) {}
    void put(std::string_view text)
    {
        end = std::copy(text.begin(), text.end(), end);
    }
    void put(int32_t number)
    {
        constexpr size_t longestNumber = std::string_view("-2147483648").size();
        end = std::to_chars(end, end + longestNumber, number).ptr;
    }
    std::string_view text() const
    {
        return {block.get(), end};
    }
};

void dumpBytes(DumpText& text, std::span<const uint8_t> bytes)
{
    for (uint8_t byte : bytes) {
        std::memcpy(text.end, &hexTexts[byte], sizeof(HexText));
        text.end += sizeof(HexText);
    }
    text.put("\n");
}

void dumpUnknown(DumpText& text, const FieldDefinition& field)
{
    text.put("unknown-");
    text.put(field.number);
    text.put("-");
    text.put(field.size);
    text.put(", ");
}

void dumpKnown(DumpText& text, std::string_view name, uint8_t size)
{
    text.put(name);
    text.put("-");
    text.put(size);
    text.put(", ");
}

void dumpName(DumpText& text, const DumpMessage& message, const FieldDefinition& field)
{
    if (const DumpField* known = dumpField(message, field.number))
        dumpKnown(text, known->name, field.size);
    else
        dumpUnknown(text, field);
}

// 32-bit values print signed, whatever they are.
int32_t shownValue(const FitMessage& message, size_t offset, Shown shown)
{
    bool bigEndian = message.definition->bigEndian();
    switch (shown) {
    case Shown::bits8:
        return readUint8(message.payload, offset);
    case Shown::bits16:
        return readUint16(message.payload, offset, bigEndian);
    default:
        return static_cast<int32_t>(readUint32(message.payload, offset, bigEndian));
    }
}

void dumpValue(DumpText& text, const DumpMessage& row, const FitMessage& message, const FieldDefinition& field,
               size_t offset)
{
    const DumpField* known = dumpField(row, field.number);
    if (known == nullptr || known->shown == Shown::none)
        return dumpUnknown(text, field);
    text.put(shownValue(message, offset, known->shown));
    text.put(", ");
}

void dumpDefinition(DumpText& text, const FitMessage& message)
{
    const DumpMessage& row = dumpMessage(message.globalMessage());
    text.put(row.tag);
    text.put("\n");
    dumpBytes(text, message.bytes);
    if (!row.fields.empty())
        for (const FieldDefinition& field : message.definition->fieldList())
            dumpName(text, row, field);
    text.put("\n");
}

void dumpData(DumpText& text, const FitMessage& message)
{
    const DumpMessage& row = dumpMessage(message.globalMessage());
    if (!row.fields.empty())
        forEachField(message, [&](const FieldDefinition& field, size_t offset) {
            dumpValue(text, row, message, field, offset);
        });
    text.put("\n");
    dumpBytes(text, message.bytes);
}

// No dump of the image is longer. Memory that is asked for and never written is not taken.
size_t longestDump(const FitImage& image)
{
    constexpr size_t longestName = std::string_view("totalElapsedTime-255, ").size();
    constexpr size_t longestValue = std::string_view("unknown-255-255, ").size();
    constexpr size_t aroundMessage = 32; // its tag and line ends
    constexpr size_t aroundFile = 256;   // header and CRC with their tags
    size_t length = aroundFile;
    walkMessages(image, [&](const FitMessage& message) {
        length += aroundMessage + sizeof(HexText) * message.bytes.size() +
                  (message.isDefinition ? longestName : longestValue) * message.definition->fieldCount;
    });
    return length;
}

// A text that a walk fault cuts off ends with the last whole message.
DumpText dumpFitFile(const FitImage& image)
{
    DumpText text(longestDump(image));
    text.put("-- file header --\n");
    dumpBytes(text, std::span(image.headerBytes).first(std::min<size_t>(image.headerBytes[0], modernHeaderSize)));
    StatusCode code = walkMessages(image, [&](const FitMessage& message) {
        message.isDefinition ? dumpDefinition(text, message) : dumpData(text, message);
    });
    if (code != fitOk)
        return text;
    text.put("-- crc --\n");
    dumpBytes(text, std::array{static_cast<uint8_t>(image.fileCrc & 0xFF), static_cast<uint8_t>(image.fileCrc >> 8)});
    return text;
}

// Overwrites the front of a file: a longer one keeps its tail.
bool writeOverFront(const std::string& path, std::string_view text)
{
    std::vector<uint8_t> tail;
    if (fileExists(path) && readFileFrom(path, text.size(), tail) != FileResult::ok)
        return false;
    std::span<const uint8_t> front(reinterpret_cast<const uint8_t*>(text.data()), text.size());
    return replaceFile(path, {front, tail}) == FileResult::ok;
}

} // namespace

Verdict checkFieldDump(ToolInputs& inputs, ParameterBlock&)
{
    constexpr const char* fault = "detected an invalid source file structure";
    Verdict verdict;
    FitImage source = {};
    if (!checkSourceHeader(inputs, source, verdict, fault))
        return verdict;
    if (source.headerBytes[0] != legacyHeaderSize && source.headerBytes[0] != modernHeaderSize)
        refuse(verdict, "error", fault);
    else
        checkDumpDestination(inputs.files[toolDestination].path, verdict);
    return verdict;
}

// Success leaves the panes and the status line as they are.
ToolOutcome runFieldDump(ToolInputs& inputs, ParameterBlock&)
{
    SourceFileInfo& info = inputs.files[0];
    FitImage source = {};
    if (StatusCode code = openSource(source, info); code != fitOk)
        return {code, info.path};
    if (!writeOverFront(inputs.files[toolDestination].path, dumpFitFile(source).text()))
        return {fitCannotOpen, info.path, false, {{"error", "failed to create a file"}}};
    return {fitOk, info.path, false, {}};
}

} // namespace torvane
