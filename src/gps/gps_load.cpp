#include "gps/gps_load.h"

#include "fit/fit_types.h"
#include "fit/message_fields.h"
#include "fit/size_limits.h"
#include "gps/prepare_writer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <limits>
#include <utility>

namespace torvane {

namespace {

bool sportsDiffer(const std::vector<uint8_t>& sports)
{
    return std::any_of(sports.begin(), sports.end(), [&](uint8_t sport) { return sport != sports[0]; });
}

StatusCode sportsCode(const FitInventory& inventory)
{
    if (inventory.sessionCount != 0)
        return sportsDiffer(inventory.sessionSport) ? fitSessionSportsDiffer : fitOk;
    return sportsDiffer(inventory.lapSport) ? fitLapSportsDiffer : fitOk;
}

uint8_t fieldSignature(const std::vector<FieldDefinition>& fields)
{
    uint8_t signature = 0;
    for (const FieldDefinition& field : fields)
        if (field.number < 8 || field.number == recordTemperature || field.number == recordTimestamp)
            signature |= field.number;
    return signature;
}

constexpr uint8_t ofSecond(PresenceFlag flag)
{
    return static_cast<uint8_t>(flag << secondField);
}

// A summary value and the flag that it sets when it is not 0.
struct PresentValue {
    uint8_t flag;
    bool (*present)(const FitSummary&);
};

// What the definition of a field sets in a flag set.
struct PresenceRow {
    RecordFieldNumber field;
    uint8_t FieldPresence::*flags;
    uint8_t defined;
    PresentValue values[3];
};

constexpr PresenceRow presenceRows[] = {
    {recordTimestamp,
     &FieldPresence::timestampFlags,
     presentInRecords,
     {{secondInRecords, [](const FitSummary& s) { return s.totalElapsed != 0; }}}},
    {recordLatitude,
     &FieldPresence::positionFlags,
     presentInRecords,
     {{presentFirst, [](const FitSummary& s) { return s.firstLatitude != 0; }},
      {presentLast, [](const FitSummary& s) { return s.lastLatitude != 0; }}}},
    {recordLongitude,
     &FieldPresence::positionFlags,
     secondInRecords,
     {{ofSecond(presentFirst), [](const FitSummary& s) { return s.firstLongitude != 0; }},
      {ofSecond(presentLast), [](const FitSummary& s) { return s.lastLongitude != 0; }}}},
    {recordAltitude,
     &FieldPresence::altitudeFlags,
     presentInRecords,
     {{presentAverage, [](const FitSummary& s) { return s.avgAltitude != 0; }},
      {presentMaximum, [](const FitSummary& s) { return s.maxAltitude != 0; }}}},
    {recordDistance,
     &FieldPresence::motionFlags,
     presentInRecords,
     {{presentTotal, [](const FitSummary& s) { return s.totalDistance != 0; }}}},
    {recordSpeed,
     &FieldPresence::motionFlags,
     secondInRecords,
     {{ofSecond(presentAverage), [](const FitSummary& s) { return s.avgSpeed != 0; }},
      {ofSecond(presentMaximum), [](const FitSummary& s) { return s.maxSpeed != 0; }}}},
    {recordTemperature,
     &FieldPresence::temperatureFlags,
     presentInRecords,
     {{presentAverage, [](const FitSummary& s) { return s.avgTemperature != 0; }}}},
    {recordHeartRate,
     &FieldPresence::heartRateFlags,
     presentInRecords,
     {{presentAverage, [](const FitSummary& s) { return s.avgHeartRate != 0; }},
      {presentMaximum, [](const FitSummary& s) { return s.maxHeartRate != 0; }}}},
    {recordCadence,
     &FieldPresence::cadenceFlags,
     presentInRecords,
     {{presentAverage, [](const FitSummary& s) { return s.avgCadence != 0; }},
      {presentMaximum, [](const FitSummary& s) { return s.maxCadence != 0; }}}},
    {recordFractionalCadence, &FieldPresence::cadenceFlags, secondInRecords, {}},
    {recordPower,
     &FieldPresence::powerFlags,
     presentInRecords,
     {{presentAverage, [](const FitSummary& s) { return s.avgPower != 0; }},
      {presentMaximum, [](const FitSummary& s) { return s.maxPower != 0; }},
      {presentNormalized, [](const FitSummary& s) { return s.normalizedPower != 0; }}}},
    {recordAccuracy,
     &FieldPresence::accuracyFlags,
     presentInRecords,
     {{presentAverage, [](const FitSummary& s) { return s.gpsAccuracy != 0; }}}},
};

void setPresenceOf(LoadedRide& ride, uint8_t fieldNumber)
{
    for (const PresenceRow& row : presenceRows) {
        if (row.field != fieldNumber)
            continue;
        uint8_t& flags = ride.presence.*row.flags;
        flags |= row.defined;
        for (const PresentValue& value : row.values)
            if (value.present && value.present(ride.summary))
                flags |= value.flag;
    }
}

// The last full timestamp with its five low bits cleared, and 32 s more unless they were 0: the offset in a compressed
// header has never been taken into account, so all records behind one full timestamp share this one.
uint32_t compressedTimestamp(uint32_t lastFull)
{
    constexpr uint32_t lowBits = 0x1F;
    uint32_t rounded = lastFull & ~lowBits;
    return (lastFull & lowBits) != 0 ? rounded + lowBits + 1 : rounded;
}

// A field that a row takes, and the bytes that are read for it, whatever size is declared.
struct RowField {
    RecordFieldNumber number;
    uint8_t width;
};

enum RowFieldPlace : size_t {
    rowTimestamp,
    rowLatitude,
    rowLongitude,
    rowAltitude,
    rowDistance,
    rowSpeed,
    rowTemperature,
    rowHeartRate,
    rowCadence,
    rowPower,
};
constexpr RowField rowFields[] = {
    {recordTimestamp, 4}, {recordLatitude, 4},    {recordLongitude, 4}, {recordAltitude, 2}, {recordDistance, 4},
    {recordSpeed, 2},     {recordTemperature, 1}, {recordHeartRate, 1}, {recordCadence, 1},  {recordPower, 2},
};

// What record messages of one definition hold for a row: looked up once. Of a repeated field the last one counts.
struct RowForm {
    static constexpr uint32_t nowhere = UINT32_MAX;
    std::array<uint32_t, std::size(rowFields)> offsets; // in the payload
    bool bigEndian;
    bool overhangs; // some field is read beyond the end of the payload
};

RowForm rowFormOf(const LocalDefinition& definition)
{
    RowForm form = {{}, definition.bigEndian(), false};
    form.offsets.fill(RowForm::nowhere);
    uint32_t offset = 0, size = definition.fieldBytes + definition.developerBytes;
    for (const FieldDefinition& field : definition.fieldList()) {
        for (size_t place = 0; place < std::size(rowFields); ++place)
            if (rowFields[place].number == field.number) {
                form.offsets[place] = offset;
                form.overhangs |= offset + rowFields[place].width > size;
            }
        offset += field.size;
    }
    return form;
}

// Straight on, a look at each field: all rows of a definition take the same way, which the processor soon knows.
template <bool bigEndian>
void fillRow(GpsRecord& record, const RowForm& form, const uint8_t* payload)
{
    auto has = [&](RowFieldPlace place) { return form.offsets[place] != RowForm::nowhere; };
    auto at = [&](RowFieldPlace place) { return payload + form.offsets[place]; };
    auto bits16 = [&](RowFieldPlace place) { return readUint16(std::span(at(place), 2), 0, bigEndian); };
    auto bits32 = [&](RowFieldPlace place) { return readUint32(std::span(at(place), 4), 0, bigEndian); };
    if (has(rowTimestamp))
        record.timestamp = bits32(rowTimestamp);
    if (has(rowLatitude))
        record.latitude = degreesOf(static_cast<int32_t>(bits32(rowLatitude)));
    if (has(rowLongitude))
        record.longitude = degreesOf(static_cast<int32_t>(bits32(rowLongitude)));
    if (has(rowAltitude))
        record.altitude = metresOf(bits16(rowAltitude));
    if (has(rowDistance))
        record.distance = static_cast<int32_t>(bits32(rowDistance)) / 100.0;
    if (has(rowSpeed))
        record.speed = bits16(rowSpeed) / 1000.0;
    if (has(rowTemperature)) // without a sign, unlike the summary's
        record.temperature = *at(rowTemperature);
    if (has(rowHeartRate))
        record.heartRate = *at(rowHeartRate);
    if (has(rowCadence))
        record.cadence = *at(rowCadence);
    if (has(rowPower))
        record.power = bits16(rowPower);
}

// Rows out of record messages, one after the other.
class RowFiller {
public:
    void define(const FitMessage& message)
    {
        forms[message.localType] = rowFormOf(*message.definition);
    }
    void fill(const FitMessage& message, GpsRecord& record)
    {
        const RowForm& form = forms[message.localType];
        const uint8_t* payload = form.overhangs ? withZeros(message.payload) : message.payload.data();
        if (message.compressed)
            record.timestamp = compressedTimestamp(lastFull);
        if (form.bigEndian)
            fillRow<true>(record, form, payload);
        else
            fillRow<false>(record, form, payload);
        if (form.offsets[rowTimestamp] != RowForm::nowhere)
            lastFull = record.timestamp;
    }

private:
    // Bytes beyond the end read as 0.
    const uint8_t* withZeros(std::span<const uint8_t> payload)
    {
        constexpr size_t widest = 4;
        longer.assign(payload.begin(), payload.end());
        longer.resize(payload.size() + widest);
        return longer.data();
    }

    std::array<RowForm, localTypeCount> forms = {}; // of definitions of records, by local type
    std::vector<uint8_t> longer;
    uint32_t lastFull = 0;
};

// Of the records, sessions and laps that the first pass has counted.
size_t tableBytes(const FitInventory& inventory)
{
    size_t summaries = size_t{inventory.sessionCount} + inventory.lapCount;
    return inventory.recordCount * sizeof(GpsRecord) + summaries * sizeof(SessionLapEntry);
}

StatusCode runPasses(LoadedRide& ride, FitContents& contents)
{
    const FitImage& image = ride.image;
    const FitInventory& inventory = contents.inventory;
    RecordDefinitions recordDefinitions;
    StatusCode code = scanFitMessages(image, contents, recordDefinitions);
    if (code == fitOk)
        code = checkCoherence(inventory, recordDefinitions);
    if (code == fitOk && tableBytes(inventory) > mostTable(image.data.size()))
        code = fitTooLarge;
    if (code != fitOk)
        return code;
    ride.sessions.assign(inventory.sessionCount + 1, {});
    ride.laps.assign(inventory.lapCount + 1, {});
    code = extractFitMessages(image, contents, ride.sessions, ride.laps);
    summariseFitMessages(contents, ride.sessions, ride.laps);
    ride.sessions.pop_back(); // what lies behind the last one
    ride.laps.pop_back();
    return code;
}

} // namespace

StatusCode gatherActivity(LoadedRide& ride)
{
    FitContents contents;
    if (StatusCode code = runPasses(ride, contents))
        return code;
    ride.inventory = std::move(contents.inventory);
    ride.summary = contents.summary;
    setFieldPresence(ride);
    setReadiness(ride);
    ride.marksMissing = hasPreparedForm(ride.image);
    return fitOk;
}

StatusCode checkCoherence(const FitInventory& inventory, const RecordDefinitions& recordDefinitions)
{
    StatusCode code = sportsCode(inventory);
    for (const std::vector<FieldDefinition>& fields : recordDefinitions)
        if (fieldSignature(fields) != fieldSignature(recordDefinitions[0]))
            return code | fitRecordFieldsDiffer;
    return code;
}

void setFieldPresence(LoadedRide& ride)
{
    ride.presence = {};
    ride.presence.isActivity = ride.inventory.fileType == fileTypeActivity;
    if (ride.inventory.recordDefinitionCount == 0)
        return;
    ride.presence.hasRecords = 1;
    for (uint8_t field : ride.inventory.recordFields)
        setPresenceOf(ride, field);
}

void setReadiness(LoadedRide& ride)
{
    const FieldPresence& p = ride.presence;
    bool hasDistance = (p.motionFlags & presentInRecords) != 0;
    bool hasSpeed = (p.motionFlags & secondInRecords) != 0;
    bool hasFix = (p.timestampFlags & presentInRecords) != 0 && (p.positionFlags & presentInRecords) != 0 &&
                  (p.positionFlags & secondInRecords) != 0;
    ride.readiness = p.hasRecords ? readyForAnalysis : analysisImpossible;
    if ((p.cadenceFlags & presentInRecords) != 0 && (p.powerFlags & presentInRecords) != 0)
        ride.readiness = nothingToPredict;
    if (!hasSpeed && !hasDistance)
        ride.readiness = analysisImpossible;
    if (hasDistance && !hasSpeed && !hasFix)
        ride.readiness = analysisImpossible;
}

StatusCode fillRecords(const FitImage& image, GpsRecords& records)
{
    size_t index = 0;
    RowFiller rows;
    StatusCode code = walkMessages(image, [&](const FitMessage& message) {
        if (message.defines(messageRecord))
            rows.define(message);
        else if (message.isData(messageRecord) && index < records.size())
            rows.fill(message, records[index++]);
    });
    records.resize(index);
    return code;
}

void forgetMarkers(GpsRecords& records)
{
    constexpr double noCadence = UINT8_MAX, noPower = UINT16_MAX;
    for (GpsRecord& record : records) {
        if (record.cadence == noCadence)
            record.cadence = std::numeric_limits<double>::quiet_NaN();
        if (record.power == noPower)
            record.power = std::numeric_limits<double>::quiet_NaN();
    }
}

} // namespace torvane
