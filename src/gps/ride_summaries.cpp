#include "gps/ride_summaries.h"

#include "fit/base_type.h"
#include "fit/fit_bytes.h"
#include "fit/fit_walk.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr size_t definitionHead = 6; // header, reserved, architecture, message number, field count
constexpr size_t fieldCountOffset = 5;
constexpr size_t tripleSize = 3;
constexpr uint8_t unsigned16 = 0x84, unsigned32 = 0x86, enumeration = 0x00;
constexpr uint8_t timestampField = 253, sessionSport = 5, lapSport = 25;

// A wider field and the plain one in the same unit.
struct EnhancedField {
    uint16_t message;
    uint8_t enhanced, plain;
};

// Average and maximum speed; average, minimum and maximum altitude.
constexpr EnhancedField enhancedFields[] = {
    {messageSession, 124, 14}, {messageSession, 125, 15}, {messageSession, 126, 49}, {messageSession, 127, 71},
    {messageSession, 128, 50}, {messageLap, 110, 13},     {messageLap, 111, 14},     {messageLap, 112, 42},
    {messageLap, 113, 62},     {messageLap, 114, 43},
};

enum class Sensor : uint8_t { power, cadence };

// Fields that sum up what a sensor measured.
struct MeasuredField {
    uint16_t message;
    uint8_t number;
    Sensor sensor;
};

using enum Sensor;

// Average, maximum and normalised power, work, training stress and intensity; average and maximum cadence, whole and
// fractional, and cycles.
constexpr MeasuredField measuredFields[] = {
    {messageSession, 20, power},   {messageSession, 21, power},   {messageSession, 34, power},
    {messageSession, 48, power},   {messageSession, 35, power},   {messageSession, 36, power},
    {messageSession, 18, cadence}, {messageSession, 19, cadence}, {messageSession, 92, cadence},
    {messageSession, 93, cadence}, {messageSession, 10, cadence}, {messageLap, 19, power},
    {messageLap, 20, power},       {messageLap, 33, power},       {messageLap, 41, power},
    {messageLap, 17, cadence},     {messageLap, 18, cadence},     {messageLap, 80, cadence},
    {messageLap, 81, cadence},     {messageLap, 10, cadence},
};

// One message, taken apart.
struct Parts {
    uint16_t global;
    bool bigEndian;
    std::vector<FieldDefinition> fields;
    std::vector<std::span<const uint8_t>> values; // of each field
    std::span<const uint8_t> developerPart;       // of the definition, with its count; empty without
    std::span<const uint8_t> developerValues;
};

Parts takeApart(const OtherMessage& message)
{
    std::span<const uint8_t> definition = message.definition;
    Parts parts = {message.global, definition[2] != 0, {}, {}, {}, {}};
    size_t offset = 0;
    for (size_t i = 0; i < definition[fieldCountOffset]; ++i) {
        const uint8_t* triple = definition.data() + definitionHead + i * tripleSize;
        parts.fields.push_back({triple[0], triple[1], triple[2]});
        parts.values.push_back(message.payload.subspan(offset, triple[1]));
        offset += triple[1];
    }
    parts.developerPart = definition.subspan(definitionHead + parts.fields.size() * tripleSize);
    parts.developerValues = message.payload.subspan(offset);
    return parts;
}

bool isEmpty(const Parts& parts, size_t i)
{
    return holdsNothing(parts.values[i], parts.fields[i].baseType, parts.bigEndian);
}

bool hasValue(const Parts& parts, uint8_t number)
{
    for (size_t i = 0; i < parts.fields.size(); ++i)
        if (parts.fields[i].number == number && !isEmpty(parts, i))
            return true;
    return false;
}

// The message as it is put together again.
struct Rewriting {
    RewrittenMessage& out;
    bool bigEndian;
    size_t fieldCount = 0;
};

void addField(Rewriting& work, const FieldDefinition& field, std::span<const uint8_t> value)
{
    if (work.fieldCount == maxFieldCount)
        return;
    ++work.fieldCount;
    work.out.definition.insert(work.out.definition.end(), {field.number, field.size, field.baseType});
    work.out.payload.insert(work.out.payload.end(), value.begin(), value.end());
}

void addNumber(Rewriting& work, uint8_t number, uint8_t width, uint8_t baseType, uint64_t value)
{
    uint8_t bytes[8] = {};
    std::span<uint8_t> field(bytes, width);
    writeField(field, value, work.bigEndian);
    addField(work, {number, width, baseType}, field);
}

const EnhancedField* findEnhanced(uint16_t global, uint8_t number)
{
    for (const EnhancedField& row : enhancedFields)
        if (row.message == global && row.enhanced == number)
            return &row;
    return nullptr;
}

bool goesWithSensor(uint16_t global, uint8_t number, const SummaryRules& rules)
{
    return std::ranges::any_of(measuredFields, [&](const MeasuredField& row) {
        bool dropped = row.sensor == power ? rules.dropPower : rules.dropCadence;
        return dropped && row.message == global && row.number == number;
    });
}

// A value that the plain field cannot hold is none.
void movePlain(Rewriting& work, const Parts& parts, size_t i, uint8_t plain, PrepareFindings& findings)
{
    constexpr int64_t most = 65534;
    NumberReader reader = numberReader(parts.fields[i], 0, parts.bigEndian, false);
    std::optional<int64_t> value = readValue(parts.values[i], reader);
    if (!value || *value < 0 || *value > most || hasValue(parts, plain))
        return;
    addNumber(work, plain, 2, unsigned16, static_cast<uint64_t>(*value));
    ++findings.summaryEnhanced;
}

// The one sport that the summary is to have, if it is to have a certain one.
std::optional<uint8_t> sportFor(uint16_t global, const SummaryRules& rules)
{
    return global == messageSession ? rules.sessionSport : global == messageLap ? rules.lapSport : std::nullopt;
}

uint8_t sportFieldOf(uint16_t global)
{
    return global == messageSession ? sessionSport : lapSport;
}

void addSport(Rewriting& work, const Parts& parts, const SummaryRules& rules)
{
    std::optional<uint8_t> sport = sportFor(parts.global, rules);
    uint8_t number = sportFieldOf(parts.global);
    if (sport && !hasValue(parts, number))
        addNumber(work, number, 1, enumeration, *sport);
}

void putSport(Rewriting& work, const FieldDefinition& field, uint8_t sport)
{
    std::vector<uint8_t> bytes(field.size);
    writeField(bytes, sport, work.bigEndian);
    addField(work, field, bytes);
}

void rewriteField(Rewriting& work, const Parts& parts, size_t i, const SummaryRules& rules, PrepareFindings& findings)
{
    const FieldDefinition& field = parts.fields[i];
    if (isEmpty(parts, i))
        ++findings.summaryEmpty;
    else if (goesWithSensor(parts.global, field.number, rules))
        ++findings.summaryMeasured;
    else if (const EnhancedField* row = findEnhanced(parts.global, field.number))
        movePlain(work, parts, i, row->plain, findings);
    else if (std::optional<uint8_t> sport = sportFor(parts.global, rules);
             sport && field.number == sportFieldOf(parts.global))
        putSport(work, field, *sport);
    else
        addField(work, field, parts.values[i]);
}

bool isSummary(uint16_t global)
{
    return global == messageSession || global == messageLap || global == messageActivity;
}

void addFields(Rewriting& work, const Parts& parts, const SummaryRules& rules, PrepareFindings& findings)
{
    for (size_t i = 0; i < parts.fields.size(); ++i)
        if (isSummary(parts.global))
            rewriteField(work, parts, i, rules, findings);
        else
            addField(work, parts.fields[i], parts.values[i]);
    addSport(work, parts, rules);
}

} // namespace

bool needsRewriting(const OtherMessage& message)
{
    return isSummary(message.global) || message.compressed;
}

void rewriteMessage(const OtherMessage& message, const SummaryRules& rules, RewrittenMessage& rewritten,
                    PrepareFindings& findings)
{
    Parts parts = takeApart(message);
    std::span<const uint8_t> head = message.definition.first(definitionHead);
    rewritten.definition.assign(head.begin(), head.end());
    rewritten.payload.clear();
    Rewriting work = {rewritten, parts.bigEndian};
    if (message.compressed && message.timestamp != 0 && !hasValue(parts, timestampField))
        addNumber(work, timestampField, 4, unsigned32, message.timestamp);
    addFields(work, parts, rules, findings);
    rewritten.definition[fieldCountOffset] = static_cast<uint8_t>(work.fieldCount);
    rewritten.definition.insert(rewritten.definition.end(), parts.developerPart.begin(), parts.developerPart.end());
    rewritten.payload.insert(rewritten.payload.end(), parts.developerValues.begin(), parts.developerValues.end());
}

} // namespace torvane
