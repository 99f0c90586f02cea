#include "gps/analysed_fields.h"

#include <utility>

namespace torvane {

namespace {

// A field that is added to the definition of a message. Base types are stored without the bit that marks them as
// depending on the byte order.
struct AddedField {
    uint16_t message;
    AddedFields flag;
    FieldDefinition definition;
};

// In the order in which they are written, behind the source's own fields.
constexpr AddedField addedFieldRows[] = {
    {messageRecord, addSpeed, {6, 2, 4}},     {messageRecord, addDistance, {5, 4, 6}},
    {messageRecord, addCadence, {4, 1, 2}},   {messageRecord, addPower, {7, 2, 4}},
    {messageSession, addSpeed, {14, 2, 4}},   {messageSession, addSpeed, {15, 2, 4}},
    {messageSession, addDistance, {9, 4, 6}}, {messageSession, addCadence, {18, 1, 2}},
    {messageSession, addCadence, {19, 1, 2}}, {messageSession, addPower, {20, 2, 4}},
    {messageSession, addPower, {21, 2, 4}},   {messageLap, addSpeed, {13, 2, 4}},
    {messageLap, addSpeed, {14, 2, 4}},       {messageLap, addDistance, {9, 4, 6}},
    {messageLap, addCadence, {17, 1, 2}},     {messageLap, addCadence, {18, 1, 2}},
    {messageLap, addPower, {19, 2, 4}},       {messageLap, addPower, {20, 2, 4}},
};

// A moving time (59, and 52 of laps) is the timer as well.
constexpr EntryField sessionFieldRows[] = {
    TORVANE_ENTRY_FIELD(2, startTime),       TORVANE_ENTRY_FIELD(3, startLatitude),
    TORVANE_ENTRY_FIELD(4, startLongitude),  TORVANE_ENTRY_FIELD(7, totalElapsed),
    TORVANE_ENTRY_FIELD(8, totalTimer),      TORVANE_ENTRY_FIELD(59, totalTimer),
    TORVANE_ENTRY_FIELD(9, totalDistance),   TORVANE_ENTRY_FIELD(10, totalCycles),
    TORVANE_ENTRY_FIELD(11, totalCalories),  TORVANE_ENTRY_FIELD(14, avgSpeed),
    TORVANE_ENTRY_FIELD(15, maxSpeed),       TORVANE_ENTRY_FIELD(16, avgHeartRate),
    TORVANE_ENTRY_FIELD(17, maxHeartRate),   TORVANE_ENTRY_FIELD(18, avgCadence),
    TORVANE_ENTRY_FIELD(19, maxCadence),     TORVANE_ENTRY_FIELD(20, avgPower),
    TORVANE_ENTRY_FIELD(21, maxPower),       TORVANE_ENTRY_FIELD(49, avgAltitude),
    TORVANE_ENTRY_FIELD(50, maxAltitude),    TORVANE_ENTRY_FIELD(51, gpsAccuracy),
    TORVANE_ENTRY_FIELD(57, avgTemperature), TORVANE_ENTRY_FIELD(58, maxTemperature),
    TORVANE_ENTRY_FIELD(64, minHeartRate),   TORVANE_ENTRY_FIELD(71, minAltitude),
    TORVANE_ENTRY_FIELD(253, timestamp),
};

constexpr EntryField lapFieldRows[] = {
    TORVANE_ENTRY_FIELD(2, startTime),       TORVANE_ENTRY_FIELD(3, startLatitude),
    TORVANE_ENTRY_FIELD(4, startLongitude),  TORVANE_ENTRY_FIELD(5, endLatitude),
    TORVANE_ENTRY_FIELD(6, endLongitude),    TORVANE_ENTRY_FIELD(7, totalElapsed),
    TORVANE_ENTRY_FIELD(8, totalTimer),      TORVANE_ENTRY_FIELD(52, totalTimer),
    TORVANE_ENTRY_FIELD(9, totalDistance),   TORVANE_ENTRY_FIELD(10, totalCycles),
    TORVANE_ENTRY_FIELD(11, totalCalories),  TORVANE_ENTRY_FIELD(13, avgSpeed),
    TORVANE_ENTRY_FIELD(14, maxSpeed),       TORVANE_ENTRY_FIELD(15, avgHeartRate),
    TORVANE_ENTRY_FIELD(16, maxHeartRate),   TORVANE_ENTRY_FIELD(17, avgCadence),
    TORVANE_ENTRY_FIELD(18, maxCadence),     TORVANE_ENTRY_FIELD(19, avgPower),
    TORVANE_ENTRY_FIELD(20, maxPower),       TORVANE_ENTRY_FIELD(42, avgAltitude),
    TORVANE_ENTRY_FIELD(43, maxAltitude),    TORVANE_ENTRY_FIELD(44, gpsAccuracy),
    TORVANE_ENTRY_FIELD(50, avgTemperature), TORVANE_ENTRY_FIELD(51, maxTemperature),
    TORVANE_ENTRY_FIELD(62, minAltitude),    TORVANE_ENTRY_FIELD(63, minHeartRate),
    TORVANE_ENTRY_FIELD(253, timestamp),
};

// Of several bytes: how the profile marks that.
uint8_t profileType(uint8_t baseType)
{
    constexpr uint8_t wide = 0x80, firstWide = 3;
    return baseType >= firstWide ? baseType | wide : baseType;
}

Growth growthBy(std::vector<FieldDefinition> fields)
{
    size_t bytes = 0;
    for (const FieldDefinition& field : fields)
        bytes += field.size;
    return {std::move(fields), bytes};
}

Growth growthOf(uint16_t message, uint32_t addedFields)
{
    std::vector<FieldDefinition> fields;
    for (const AddedField& row : addedFieldRows) {
        if (row.message != message || (addedFields & row.flag) == 0)
            continue;
        fields.push_back(row.definition);
        if (addedFields & writeByProfile)
            fields.back().baseType = profileType(fields.back().baseType);
    }
    return growthBy(std::move(fields));
}

} // namespace

Growths::Growths(uint32_t addedFields, const RecordFields& recordFields)
    : byProfile((addedFields & writeByProfile) != 0), fields(recordFields),
      record(growthOf(messageRecord, addedFields)), session(growthOf(messageSession, addedFields)),
      lap(growthOf(messageLap, addedFields)), others()
{
}

void Growths::define(const FitMessage& message)
{
    bool isSummary = message.globalMessage() == messageSession || message.globalMessage() == messageLap;
    if (byProfile && isSummary)
        summaries[message.localType] = growthBy(lackingSummaryFields(*message.definition, fields));
}

const Growth& Growths::of(const FitMessage& message) const
{
    std::uint16_t kind = message.globalMessage();
    if (kind == messageRecord)
        return record;
    if (kind != messageSession && kind != messageLap)
        return others;
    if (byProfile)
        return summaries[message.localType];
    return kind == messageSession ? session : lap;
}

RecordFields recordFieldsOf(const FitImage& source, uint32_t addedFields)
{
    RecordFields fields = {};
    if ((addedFields & writeByProfile) == 0)
        return fields;
    for (const FieldDefinition& added : growthOf(messageRecord, addedFields).fields)
        fields[added.number] = true;
    FitWalk walk = startWalk(source);
    walk.progress = nullptr;
    FitMessage message;
    while (nextMessage(walk, message) == WalkStep::message)
        if (message.defines(messageRecord))
            for (const FieldDefinition& field : message.definition->fieldList())
                fields[field.number] = true;
    return fields;
}

constinit const EntryFieldIndex analysedSessionFields = indexEntryFields(sessionFieldRows);
constinit const EntryFieldIndex analysedLapFields = indexEntryFields(lapFieldRows);

} // namespace torvane
