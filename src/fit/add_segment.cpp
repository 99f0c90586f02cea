// What a record adds to the sums of its segment.
#include "fit/add_segment.h"

#include "fit/message_fields.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace torvane {

namespace {

bool isFirst(const Segment& segment)
{
    return segment.set.recordCount == 0;
}

template <class Value>
void trackRange(const Segment& segment, Value& minimum, Value& maximum, Value value)
{
    if (isFirst(segment))
        minimum = maximum = value;
    minimum = std::min(minimum, value);
    raise(maximum, value);
}

void takeLatitude(Segment& segment, uint32_t value)
{
    segment.set.entry.endLatitude = static_cast<int32_t>(value);
}

void takeLongitude(Segment& segment, uint32_t value)
{
    segment.set.entry.endLongitude = static_cast<int32_t>(value);
}

void takeAltitude(Segment& segment, uint32_t value)
{
    SessionLapEntry& entry = segment.set.entry;
    segment.set.altitude += value;
    trackRange(segment, entry.minAltitude, entry.maxAltitude, static_cast<uint16_t>(value));
}

void takeHeartRate(Segment& segment, uint32_t value)
{
    SessionLapEntry& entry = segment.set.entry;
    segment.set.heartRate += value;
    trackRange(segment, entry.minHeartRate, entry.maxHeartRate, static_cast<uint8_t>(value));
}

void takeCadence(Segment& segment, uint32_t value)
{
    segment.set.cadence += value;
    segment.set.cadenceCount += value != 0;
    raise(segment.set.entry.maxCadence, static_cast<uint8_t>(value));
}

void takeDistance(Segment& segment, uint32_t value)
{
    if (isFirst(segment))
        segment.firstDistance = value;
    segment.set.entry.totalDistance = value - segment.firstDistance;
}

void takeSpeed(Segment& segment, uint32_t value)
{
    segment.set.speed += value;
    raise(segment.set.entry.maxSpeed, static_cast<uint16_t>(value));
}

void takePower(Segment& segment, uint32_t value)
{
    segment.set.power += value;
    segment.set.powerCount += value != 0;
    raise(segment.set.entry.maxPower, static_cast<uint16_t>(value));
}

void takeTemperature(Segment& segment, uint32_t value)
{
    int8_t temperature = static_cast<int8_t>(value);
    segment.set.temperature += temperature;
    raise(segment.set.entry.maxTemperature, temperature);
}

void takeCycles(Segment& segment, uint32_t value)
{
    segment.set.entry.totalCycles += value;
}

void takeAccuracy(Segment& segment, uint32_t value)
{
    segment.set.gpsAccuracy += value;
}

void takeCalories(Segment& segment, uint32_t value)
{
    segment.set.entry.totalCalories = static_cast<uint16_t>(segment.set.entry.totalCalories + value);
}

// The timer runs through steps of exactly the smallest interval so far, so a pause falls out of it.
void takeTimestamp(Segment& segment, uint32_t value)
{
    SessionLapEntry& entry = segment.set.entry;
    if (isFirst(segment)) {
        entry.startTime = entry.timestamp = value;
        return;
    }
    uint32_t step = value - entry.timestamp;
    segment.minimumInterval = std::min(segment.minimumInterval, step);
    if (step == segment.minimumInterval)
        entry.totalTimer += segment.minimumInterval * uint32_t{1000};
    entry.timestamp = value;
}

struct RecordField {
    uint8_t number;
    uint8_t width; // bytes read, whatever size is declared
    void (*take)(Segment& segment, uint32_t value);
};

constexpr RecordField recordFields[] = {
    {recordLatitude, 4, takeLatitude},   {recordLongitude, 4, takeLongitude}, {recordAltitude, 2, takeAltitude},
    {recordHeartRate, 1, takeHeartRate}, {recordCadence, 1, takeCadence},     {recordDistance, 4, takeDistance},
    {recordSpeed, 2, takeSpeed},         {recordPower, 2, takePower},         {recordTemperature, 1, takeTemperature},
    {recordCycles, 1, takeCycles},       {recordAccuracy, 1, takeAccuracy},   {recordCalories, 2, takeCalories},
    {recordTimestamp, 4, takeTimestamp},
};

} // namespace

CountedFields countedFieldsOf(const LocalDefinition& definition)
{
    CountedFields counted;
    counted.bigEndian = definition.bigEndian();
    for (size_t row = 0; row < std::size(recordFields); ++row) {
        uint32_t offset = 0;
        std::optional<uint32_t> last;
        for (const FieldDefinition& field : definition.fieldList()) {
            if (field.number == recordFields[row].number)
                last = offset;
            offset += field.size;
        }
        if (last)
            counted.fields.push_back({static_cast<uint32_t>(row), *last});
        if (recordFields[row].number == recordSpeed)
            counted.speedOffset = last;
    }
    return counted;
}

void countRecord(Segment& segment, const CountedFields& counted, std::span<const uint8_t> payload)
{
    uint32_t speed = counted.speedOffset ? readUint16(payload, *counted.speedOffset, counted.bigEndian) : 0;
    if (speed < segment.threshold)
        return;
    for (const CountedFields::Field& field : counted.fields) {
        const RecordField& row = recordFields[field.row];
        row.take(segment, readNumber(payload, field.offset, row.width, counted.bigEndian));
    }
    segment.set.recordCount++;
}

} // namespace torvane
