// The field dump: every message of a FIT file as text, decoded fields beside the raw bytes. The program's own lens for
// the format; values are raw numbers.
#include "core/files.h"
#include "core/text.h"
#include "fit/base_type.h"
#include "fit/field_rows.h"
#include "fit/fit_image.h"
#include "fit/fit_walk.h"
#include "fit/tool_support.h"

#include <algorithm>
#include <array>
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

// Text on its way into the file, gathered to pieces. The block has room for the text of any message behind a piece that
// is almost full.
struct DumpText {
    const WritePiece& write;
    std::unique_ptr<char[]> block;
    char* end;
    size_t written = 0;
    bool taken = true; // all of them

    explicit DumpText(const WritePiece& writer);
    void put(std::string_view text)
    {
        end = std::copy(text.begin(), text.end(), end);
    }
};

constexpr size_t pieceSize = 1 << 18;

constexpr size_t longestText()
{
    constexpr size_t longestName = std::string_view("totalElapsedTime-255, ").size();
    constexpr size_t aroundMessage = 32; // its tag and line ends
    constexpr size_t longestMessage = 1 + size_t{2} * maxFieldCount * UINT8_MAX;
    return maxFieldCount * longestName + sizeof(HexText) * longestMessage + aroundMessage;
}

DumpText::DumpText(const WritePiece& writer)
    : write(writer), block(std::make_unique_for_overwrite<char[]>(pieceSize + longestText())), end(block.get())
{
}

void handOver(DumpText& text)
{
    size_t length = static_cast<size_t>(text.end - text.block.get());
    text.taken = text.taken && text.write({reinterpret_cast<const uint8_t*>(text.block.get()), length});
    text.written += length;
    text.end = text.block.get();
}

// Between two messages.
void handOverWhenFull(DumpText& text)
{
    if (text.end - text.block.get() >= static_cast<std::ptrdiff_t>(pieceSize))
        handOver(text);
}

void dumpBytes(DumpText& text, std::span<const uint8_t> bytes)
{
    char* to = text.end;
    for (uint8_t byte : bytes) {
        std::memcpy(to, &hexTexts[byte], sizeof(HexText));
        to += sizeof(HexText);
    }
    *to++ = '\n';
    text.end = to;
}

// What the line of values of a local type's data messages is made of: characters that every message shows alike, and
// values. Made once for each definition.
struct LinePart {
    Shown shown;     // none: characters
    uint32_t at;     // of the value in the payload, or of the characters in `text`
    uint32_t length; // of the characters
};

struct DataLine {
    std::vector<LinePart> parts;
    std::string text;
};

using DataLines = std::array<DataLine, localTypeCount>;

void addCharacters(DataLine& line, const std::string& characters)
{
    if (line.parts.empty() || line.parts.back().shown != Shown::none)
        line.parts.push_back({Shown::none, static_cast<uint32_t>(line.text.size()), 0});
    line.parts.back().length += static_cast<uint32_t>(characters.size());
    line.text += characters;
}

std::string unknownName(const FieldDefinition& field)
{
    return formatText("unknown-%d-%d, ", field.number, field.size);
}

std::string definedName(const DumpMessage& message, const FieldDefinition& field)
{
    const DumpField* known = dumpField(message, field.number);
    return known != nullptr ? formatText("%s-%d, ", known->name, field.size) : unknownName(field);
}

DataLine dataLineOf(const DumpMessage& row, const LocalDefinition& definition)
{
    DataLine line;
    if (row.fields.empty())
        return line;
    uint32_t offset = 0;
    for (const FieldDefinition& field : definition.fieldList()) {
        const DumpField* known = dumpField(row, field.number);
        if (known == nullptr || known->shown == Shown::none)
            addCharacters(line, unknownName(field));
        else
            line.parts.push_back({known->shown, offset, 0});
        offset += field.size;
    }
    return line;
}

// 32-bit values print signed, whatever they are.
int32_t shownValue(const FitMessage& message, const LinePart& part)
{
    bool bigEndian = message.definition->bigEndian();
    switch (part.shown) {
    case Shown::bits8:
        return readUint8(message.payload, part.at);
    case Shown::bits16:
        return readUint16(message.payload, part.at, bigEndian);
    default:
        return static_cast<int32_t>(readUint32(message.payload, part.at, bigEndian));
    }
}

void dumpLine(DumpText& text, const FitMessage& message, const DataLine& line)
{
    char* to = text.end;
    for (const LinePart& part : line.parts) {
        if (part.shown == Shown::none) {
            to = std::copy_n(line.text.data() + part.at, part.length, to);
            continue;
        }
        to = writeInt32(to, shownValue(message, part));
        *to++ = ',';
        *to++ = ' ';
    }
    *to++ = '\n';
    text.end = to;
}

void dumpDefinition(DumpText& text, const FitMessage& message, DataLines& lines)
{
    const DumpMessage& row = dumpMessage(message.globalMessage());
    lines[message.localType] = dataLineOf(row, *message.definition);
    text.put(row.tag);
    text.put("\n");
    dumpBytes(text, message.bytes);
    if (!row.fields.empty())
        for (const FieldDefinition& field : message.definition->fieldList())
            text.put(definedName(row, field));
    text.put("\n");
}

// A text that a walk fault cuts off ends with the last whole message.
void dumpFitFile(DumpText& text, const FitImage& image)
{
    DataLines lines;
    text.put("-- file header --\n");
    dumpBytes(text, std::span(image.headerBytes).first(std::min<size_t>(image.headerBytes[0], modernHeaderSize)));
    StatusCode code = walkMessages(image, [&](const FitMessage& message) {
        handOverWhenFull(text);
        if (message.isDefinition)
            return dumpDefinition(text, message, lines);
        dumpLine(text, message, lines[message.localType]);
        dumpBytes(text, message.bytes);
    });
    if (code != fitOk)
        return;
    text.put("-- crc --\n");
    dumpBytes(text, std::array{static_cast<uint8_t>(image.fileCrc & 0xFF), static_cast<uint8_t>(image.fileCrc >> 8)});
}

// Overwrites the front of a file: a longer one keeps its tail.
bool writeOverFront(const std::string& path, const FitImage& image)
{
    auto make = [&](const WritePiece& write) {
        DumpText text(write);
        dumpFitFile(text, image);
        handOver(text);
        std::vector<uint8_t> tail;
        bool kept = !fileExists(path) || readFileFrom(path, text.written, tail) == FileResult::ok;
        return text.taken && kept && write(tail);
    };
    return replaceFile(path, make) == FileResult::ok;
}

// Rows

constexpr RowColumn fieldColumns[] = {{"message", 0}, {"type", 0},   {"typeName"},
                                      {"field", 0},   {"fieldName"}, {"value", 0}};
constexpr uint8_t textType = 7; // of a field, in the low bits of its base type

std::string_view typeName(const DumpMessage& row)
{
    constexpr size_t hyphens = std::string_view("-- ").size();
    std::string_view tag = row.tag;
    return tag.substr(hyphens, tag.size() - 2 * hyphens);
}

// Up to the zero that ends it.
std::string_view textOf(std::span<const uint8_t> bytes)
{
    std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return text.substr(0, text.find('\0'));
}

std::string listOf(const FitMessage& message, const FieldDefinition& field, size_t offset, uint8_t width)
{
    std::string text;
    for (size_t at = 0; at + width <= field.size; at += width) {
        FieldDefinition element = {field.number, width, field.baseType};
        std::optional<int64_t> value =
            readValue(message.payload, numberReader(element, offset + at, message.definition->bigEndian(), false));
        text += text.empty() ? "" : " ";
        text += value ? std::to_string(*value) : "-";
    }
    return text;
}

void writeValue(RowWriter& rows, const FitMessage& message, const FieldDefinition& field, size_t offset)
{
    constexpr uint8_t widths[] = {1, 1, 1, 2, 2, 4, 4, 1, 4, 8, 1, 2, 4, 1, 8, 8, 8}; // by base type
    uint8_t type = field.baseType & 0x1F;
    uint8_t width = type < std::size(widths) ? widths[type] : uint8_t{1};
    if (type == textType)
        return rows.text(textOf(message.payload.subspan(offset, field.size)));
    if (field.size > width)
        return rows.text(listOf(message, field, offset, width));
    NumberReader reader = numberReader(field, offset, message.definition->bigEndian(), false);
    std::optional<int64_t> value = readValue(message.payload, reader);
    if (value)
        rows.number(static_cast<double>(*value));
    else
        rows.empty();
}

void writeMessage(RowWriter& rows, const FitMessage& message, size_t number)
{
    const DumpMessage& row = dumpMessage(message.globalMessage());
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        if (offset + field.size > message.payload.size())
            return;
        const DumpField* known = dumpField(row, field.number);
        rows.number(static_cast<double>(number));
        rows.number(message.globalMessage());
        rows.text(typeName(row));
        rows.number(field.number);
        rows.text(known ? known->name : "");
        writeValue(rows, message, field, offset);
        rows.endRow();
    });
}

} // namespace

StatusCode writeFieldRows(RowWriter& rows, const std::string& path)
{
    FitImage image = {};
    if (StatusCode code = loadFitImage(image, path))
        return code;
    rows.begin(fieldColumns);
    size_t number = 0;
    return walkMessages(image, [&](const FitMessage& message) {
        if (!message.isDefinition && rows.isTaken())
            writeMessage(rows, message, number);
        ++number;
    });
}

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
        checkDumpDestination(inputs, verdict);
    return verdict;
}

// Success leaves the panes and the status line as they are.
ToolOutcome runFieldDump(const ToolInputs& inputs, const ParameterBlock&, Progress* progress)
{
    SourceFileInfo info = inputs.files[0];
    FitImage source = {};
    if (StatusCode code = openSource(source, info, progress); code != fitOk)
        return {code, info.path};
    if (!writeOverFront(inputs.files[toolDestination].path, source))
        return {fitCannotOpen, info.path, false, {{"error", "failed to create a file"}}};
    return {fitOk, info.path, false, {}};
}

} // namespace torvane
