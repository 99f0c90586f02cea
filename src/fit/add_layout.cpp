// The tables of the added messages.
#include "fit/add_layout.h"

#include "fit/message_fields.h"

#include <type_traits>

namespace torvane {

namespace {

// The member in its own width: a wider field gets zeros in front, also of a negative value.
template <auto Member>
uint32_t valueOf(const SessionLapEntry& entry)
{
    using Value = std::remove_cvref_t<decltype(entry.*Member)>;
    return static_cast<std::make_unsigned_t<Value>>(entry.*Member);
}

// In seconds although the field is one of milliseconds: added messages have always had it so.
uint32_t elapsedSeconds(const SessionLapEntry& entry)
{
    return entry.timestamp - entry.startTime;
}

using Entry = SessionLapEntry;

constexpr AddedField lapFields[] = {
    {0, 3, valueOf<&Entry::startLatitude>},
    {0, 5, valueOf<&Entry::endLatitude>},
    {1, 4, valueOf<&Entry::startLongitude>},
    {1, 6, valueOf<&Entry::endLongitude>},
    {2, 42, valueOf<&Entry::avgAltitude>},
    {2, 62, valueOf<&Entry::minAltitude>},
    {2, 43, valueOf<&Entry::maxAltitude>},
    {3, 15, valueOf<&Entry::avgHeartRate>},
    {3, 63, valueOf<&Entry::minHeartRate>},
    {3, 16, valueOf<&Entry::maxHeartRate>},
    {4, 17, valueOf<&Entry::avgCadence>},
    {4, 18, valueOf<&Entry::maxCadence>},
    {5, 9, valueOf<&Entry::totalDistance>},
    {6, 13, valueOf<&Entry::avgSpeed>},
    {6, 14, valueOf<&Entry::maxSpeed>},
    {7, 19, valueOf<&Entry::avgPower>},
    {7, 20, valueOf<&Entry::maxPower>},
    {13, 50, valueOf<&Entry::avgTemperature>},
    {13, 51, valueOf<&Entry::maxTemperature>},
    {18, 10, valueOf<&Entry::totalCycles>},
    {31, 44, valueOf<&Entry::gpsAccuracy>},
    {33, 11, valueOf<&Entry::totalCalories>},
    {253, 253, valueOf<&Entry::timestamp>},
    {253, 2, valueOf<&Entry::startTime>},
    {253, 7, elapsedSeconds},
    {253, 8, valueOf<&Entry::totalTimer>},
};

constexpr AddedField sessionFields[] = {
    {0, 3, valueOf<&Entry::startLatitude>},
    {1, 4, valueOf<&Entry::startLongitude>},
    {2, 49, valueOf<&Entry::avgAltitude>},
    {2, 71, valueOf<&Entry::minAltitude>},
    {2, 50, valueOf<&Entry::maxAltitude>},
    {3, 16, valueOf<&Entry::avgHeartRate>},
    {3, 64, valueOf<&Entry::minHeartRate>},
    {3, 17, valueOf<&Entry::maxHeartRate>},
    {4, 18, valueOf<&Entry::avgCadence>},
    {4, 19, valueOf<&Entry::maxCadence>},
    {5, 9, valueOf<&Entry::totalDistance>},
    {6, 14, valueOf<&Entry::avgSpeed>},
    {6, 15, valueOf<&Entry::maxSpeed>},
    {7, 20, valueOf<&Entry::avgPower>},
    {7, 21, valueOf<&Entry::maxPower>},
    {13, 57, valueOf<&Entry::avgTemperature>},
    {13, 58, valueOf<&Entry::maxTemperature>},
    {18, 10, valueOf<&Entry::totalCycles>},
    {31, 51, valueOf<&Entry::gpsAccuracy>},
    {33, 11, valueOf<&Entry::totalCalories>},
    {253, 253, valueOf<&Entry::timestamp>},
    {253, 2, valueOf<&Entry::startTime>},
    {253, 7, elapsedSeconds},
    {253, 8, valueOf<&Entry::totalTimer>},
};

constexpr AddedField activityFields[] = {
    {253, 253, valueOf<&Entry::timestamp>},
    {253, 0, valueOf<&Entry::totalTimer>},
    {253, 5, valueOf<&Entry::timestamp>}, // local time
};

constexpr size_t definitionHeadSize = 6; // header, reserved, architecture, message number (2), field count
constexpr size_t definitionTripleSize = 3;

FieldDefinition placed(const AddedField& added, const FieldDefinition& recordField)
{
    if (added.recordField == recordCycles) // one byte in a record, summed up in four
        return {added.number, 4, 6};
    return {added.number, recordField.size, recordField.baseType};
}

} // namespace

const std::array<AddedMessage, addedKindCount> addedMessages = {{
    {messageLap, &ParameterBlock::addLap, lapFields, {25, 1, 2}, "lap message is already existing in a source file"},
    {messageSession,
     &ParameterBlock::addSession,
     sessionFields,
     {5, 1, 2},
     "session message is already existing in a source file"},
    {messageActivity,
     &ParameterBlock::addActivity,
     activityFields,
     {1, 2, 4},
     "activity message is already existing in a source file"},
}};

std::vector<PlacedField> placeFields(const AddedMessage& added, const LocalDefinition& record)
{
    std::vector<PlacedField> fields;
    for (const FieldDefinition& recordField : record.fieldList())
        for (const AddedField& row : added.fields)
            if (row.recordField == recordField.number)
                fields.push_back({placed(row, recordField), row.value});
    fields.push_back({added.last, nullptr});
    return fields;
}

size_t addedSize(const std::vector<PlacedField>& fields)
{
    size_t size = definitionHeadSize + 1; // and the header byte of the data message
    for (const PlacedField& field : fields)
        size += definitionTripleSize + field.definition.size;
    return size;
}

} // namespace torvane
