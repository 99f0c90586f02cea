#include "fit/fit_passes.h"

#include "fit/message_fields.h"
#include "fit/session_lap_fields.h"

#include <algorithm>

namespace torvane {

FitInventory fitInventory;
FitSummary fitSummary;

void clearFitBlocks()
{
    fitInventory = {};
    fitSummary = {};
}

namespace {

// Follows the smallest step between the timestamps of consecutive records, until it is known to be a second or less.
struct IntervalSearch {
    uint32_t previous;

    void take(uint32_t timestamp)
    {
        if (fitSummary.recordInterval <= 1)
            return;
        uint32_t step = timestamp - previous; // huge when time runs backwards
        previous = timestamp;
        if (step < fitSummary.recordInterval)
            fitSummary.recordInterval = step;
    }
};

void scanTimestamp(uint32_t timestamp, bool first, IntervalSearch& interval)
{
    if (first) {
        fitSummary.startTimestamp = static_cast<int32_t>(timestamp);
        interval.previous = timestamp;
    } else {
        fitSummary.endTimestamp = static_cast<int32_t>(timestamp);
        interval.take(timestamp);
    }
}

void scanRecord(const FitMessage& message, IntervalSearch& interval)
{
    bool first = fitInventory.recordCount == 0;
    bool bigEndian = message.definition->bigEndian();
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        if (field.number != recordLatitude && field.number != recordLongitude && field.number != recordTimestamp)
            return;
        uint32_t value = readUint32(message.payload, offset, bigEndian);
        if (field.number == recordTimestamp)
            scanTimestamp(value, first, interval);
        else if (field.number == recordLatitude)
            (first ? fitSummary.firstLatitude : fitSummary.lastLatitude) = static_cast<int32_t>(value);
        else
            (first ? fitSummary.firstLongitude : fitSummary.lastLongitude) = static_cast<int32_t>(value);
    });
    ++fitInventory.recordCount;
}

void scanDefinition(const FitMessage& message, RecordDefinitions& recordDefinitions)
{
    ++fitInventory.definitionCount;
    if (message.globalMessage() != messageRecord)
        return;
    std::span<const FieldDefinition> fields = message.definition->fieldList();
    recordDefinitions.emplace_back(fields.begin(), fields.end());
    ++fitInventory.recordDefinitionCount;
}

void scanData(const FitMessage& message, IntervalSearch& interval)
{
    ++(message.compressed ? fitInventory.compressedTimestampCount : fitInventory.normalDataCount);
    switch (message.globalMessage()) {
    case messageSession:
        fitInventory.sessionSport.push_back(lastUint8(message, sessionSport).value_or(0));
        ++fitInventory.sessionCount;
        break;
    case messageLap:
        fitInventory.lapSport.push_back(lastUint8(message, lapSport).value_or(0));
        ++fitInventory.lapCount;
        break;
    case messageRecord:
        scanRecord(message, interval);
        break;
    case messageActivity:
        ++fitInventory.activityCount;
        break;
    }
}

void scanEnd(const LocalDefinitions& definitions)
{
    auto isRecord = [](const LocalDefinition& slot) { return slot.globalMessage == messageRecord; };
    auto record = std::ranges::find_if(definitions, isRecord);
    if (record == definitions.end())
        return;
    for (const FieldDefinition& field : record->fieldList())
        fitInventory.recordFields.push_back(field.number);
}

constexpr EntryField sessionFieldRows[] = {
    TORVANE_ENTRY_FIELD(5, sport),
    TORVANE_ENTRY_FIELD(253, timestamp),
    TORVANE_ENTRY_FIELD(2, startTime),
    TORVANE_ENTRY_FIELD(7, totalElapsed),
    TORVANE_ENTRY_FIELD(8, totalTimer),
    TORVANE_ENTRY_FIELD(59, totalMovingTime),
    TORVANE_ENTRY_FIELD(3, startLatitude),
    TORVANE_ENTRY_FIELD(4, startLongitude),
    TORVANE_ENTRY_FIELD(49, avgAltitude),
    TORVANE_ENTRY_FIELD(50, maxAltitude),
    TORVANE_ENTRY_FIELD(71, minAltitude),
    TORVANE_ENTRY_FIELD(10, totalCycles),
    TORVANE_ENTRY_FIELD(11, totalCalories),
    TORVANE_ENTRY_FIELD(13, totalFatCalories),
    TORVANE_ENTRY_FIELD(9, totalDistance),
    TORVANE_ENTRY_FIELD(14, avgSpeed),
    TORVANE_ENTRY_FIELD(15, maxSpeed),
    TORVANE_ENTRY_FIELD(16, avgHeartRate),
    TORVANE_ENTRY_FIELD(17, maxHeartRate),
    TORVANE_ENTRY_FIELD(64, minHeartRate),
    TORVANE_ENTRY_FIELD(18, avgCadence),
    TORVANE_ENTRY_FIELD(19, maxCadence),
    TORVANE_ENTRY_FIELD(20, avgPower),
    TORVANE_ENTRY_FIELD(21, maxPower),
    TORVANE_ENTRY_FIELD(34, normalizedPower),
    TORVANE_ENTRY_FIELD(57, avgTemperature),
    TORVANE_ENTRY_FIELD(58, maxTemperature),
    TORVANE_ENTRY_FIELD(51, gpsAccuracy),
};

constexpr EntryField lapFieldRows[] = {
    TORVANE_ENTRY_FIELD(25, sport),
    TORVANE_ENTRY_FIELD(253, timestamp),
    TORVANE_ENTRY_FIELD(2, startTime),
    TORVANE_ENTRY_FIELD(7, totalElapsed),
    TORVANE_ENTRY_FIELD(8, totalTimer),
    TORVANE_ENTRY_FIELD(52, totalMovingTime),
    TORVANE_ENTRY_FIELD(3, startLatitude),
    TORVANE_ENTRY_FIELD(4, startLongitude),
    TORVANE_ENTRY_FIELD(5, endLatitude),
    TORVANE_ENTRY_FIELD(6, endLongitude),
    TORVANE_ENTRY_FIELD(42, avgAltitude),
    TORVANE_ENTRY_FIELD(43, maxAltitude),
    TORVANE_ENTRY_FIELD(62, minAltitude),
    TORVANE_ENTRY_FIELD(10, totalCycles),
    // Total calories, which in a lap have always shared the place of the cycles: the later field of a message wins.
    TORVANE_ENTRY_FIELD(11, totalCycles),
    TORVANE_ENTRY_FIELD(12, totalFatCalories),
    TORVANE_ENTRY_FIELD(9, totalDistance),
    TORVANE_ENTRY_FIELD(13, avgSpeed),
    TORVANE_ENTRY_FIELD(14, maxSpeed),
    TORVANE_ENTRY_FIELD(15, avgHeartRate),
    TORVANE_ENTRY_FIELD(16, maxHeartRate),
    TORVANE_ENTRY_FIELD(63, minHeartRate),
    TORVANE_ENTRY_FIELD(17, avgCadence),
    TORVANE_ENTRY_FIELD(18, maxCadence),
    TORVANE_ENTRY_FIELD(19, avgPower),
    TORVANE_ENTRY_FIELD(20, maxPower),
    TORVANE_ENTRY_FIELD(33, normalizedPower),
    TORVANE_ENTRY_FIELD(50, avgTemperature),
    TORVANE_ENTRY_FIELD(51, maxTemperature),
    TORVANE_ENTRY_FIELD(44, gpsAccuracy),
};

constexpr EntryFieldIndex sessionFields = indexEntryFields(sessionFieldRows);
constexpr EntryFieldIndex lapFields = indexEntryFields(lapFieldRows);

void extractEntry(const FitMessage& message, const EntryFieldIndex& fields, SessionLapEntry& entry)
{
    bool bigEndian = message.definition->bigEndian();
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        EntryMember member = fields[field.number];
        if (member.width != 0)
            storeMember(entry, member, readNumber(message.payload, offset, member.width, bigEndian));
    });
}

template <class Member>
void add(Member& total, Member value)
{
    total = static_cast<Member>(total + value);
}

void addTotals(const SessionLapEntry& entry)
{
    add(fitSummary.totalElapsed, entry.totalElapsed);
    add(fitSummary.totalDistance, entry.totalDistance);
    add(fitSummary.totalCycles, entry.totalCycles);
    add(fitSummary.totalCalories, entry.totalCalories);
    add(fitSummary.totalFatCalories, entry.totalFatCalories);
    add(fitSummary.totalMovingTime, entry.totalMovingTime);
    if (fitInventory.activityCount == 0)
        add(fitSummary.totalTimer, entry.totalTimer);
}

void widenExtremes(const SessionLapEntry& entry, bool first)
{
    raise(fitSummary.maxSpeed, entry.maxSpeed);
    raise(fitSummary.maxHeartRate, entry.maxHeartRate);
    raise(fitSummary.maxCadence, entry.maxCadence);
    raise(fitSummary.maxPower, entry.maxPower);
    raise(fitSummary.maxAltitude, entry.maxAltitude);
    if (first || entry.maxTemperature > fitSummary.maxTemperature)
        fitSummary.maxTemperature = entry.maxTemperature;
    if (first || entry.minHeartRate < fitSummary.minHeartRate)
        fitSummary.minHeartRate = entry.minHeartRate;
    if (first || entry.minAltitude < fitSummary.minAltitude)
        fitSummary.minAltitude = entry.minAltitude;
}

// Sum of a member over the entries, each as often as it has records. The product is taken in 32 bits and added as an
// unsigned number: a temperature below zero makes the sum huge.
template <class Member>
uint64_t weightedSum(std::span<const SessionLapEntry> entries, Member SessionLapEntry::*member)
{
    uint64_t sum = 0;
    for (const SessionLapEntry& entry : entries) {
        uint32_t value = static_cast<uint32_t>(static_cast<int32_t>(entry.*member));
        sum += static_cast<uint32_t>(entry.recordCount) * value;
    }
    return sum;
}

template <class Member>
Member weightedMean(std::span<const SessionLapEntry> entries, Member SessionLapEntry::*member)
{
    return static_cast<Member>(weightedSum(entries, member) / fitInventory.recordCount);
}

void averageEntries(std::span<const SessionLapEntry> entries)
{
    fitSummary.avgAltitude = weightedMean(entries, &SessionLapEntry::avgAltitude);
    fitSummary.avgHeartRate = weightedMean(entries, &SessionLapEntry::avgHeartRate);
    fitSummary.avgCadence = weightedMean(entries, &SessionLapEntry::avgCadence);
    fitSummary.avgPower = weightedMean(entries, &SessionLapEntry::avgPower);
    fitSummary.gpsAccuracy = weightedMean(entries, &SessionLapEntry::gpsAccuracy);
    int64_t temperatures = static_cast<int64_t>(weightedSum(entries, &SessionLapEntry::avgTemperature));
    fitSummary.avgTemperature = static_cast<int8_t>(temperatures / static_cast<int64_t>(fitInventory.recordCount));
}

// From the whole distance and time; without a time the mean of the entries.
void averageSpeed(std::span<const SessionLapEntry> entries)
{
    if (fitSummary.totalTimer != 0) {
        double speed = (fitSummary.totalDistance * 1000.0 * 1000.0) / (fitSummary.totalTimer * 100.0); // mm/s
        fitSummary.avgSpeed = static_cast<uint16_t>(truncateToInteger(speed));
    } else if (fitInventory.recordCount != 0) {
        fitSummary.avgSpeed = weightedMean(entries, &SessionLapEntry::avgSpeed);
    }
}

} // namespace

StatusCode scanFitMessages(const FitImage& image, RecordDefinitions& recordDefinitions)
{
    fitSummary.recordInterval = 3600;
    IntervalSearch interval = {};
    FitWalk walk = startWalk(image);
    StatusCode code = walkMessages(walk, [&](const FitMessage& message) {
        if (message.isDefinition)
            scanDefinition(message, recordDefinitions);
        else
            scanData(message, interval);
    });
    scanEnd(walk.definitions);
    return code;
}

StatusCode extractFitMessages(const FitImage& image, std::vector<SessionLapEntry>& sessions,
                              std::vector<SessionLapEntry>& laps)
{
    size_t session = 0;
    size_t lap = 0;
    StatusCode code = walkMessages(image, [&](const FitMessage& message) {
        if (message.isDefinition)
            return;
        switch (message.globalMessage()) {
        case messageFileId:
            fitInventory.fileType = fileTypeOf(message).value_or(fitInventory.fileType);
            break;
        case messageSession:
            extractEntry(message, sessionFields, sessions[session++]);
            break;
        case messageLap:
            extractEntry(message, lapFields, laps[lap++]);
            break;
        case messageRecord:
            ++sessions[session].recordCount;
            ++laps[lap].recordCount;
            break;
        case messageActivity:
            fitSummary.totalTimer = lastUint32(message, activityTotalTimer).value_or(fitSummary.totalTimer);
            break;
        }
    });
    fitSummary.sessionTotal = static_cast<uint16_t>(session);
    fitSummary.lapTotal = static_cast<uint16_t>(lap);
    return code;
}

StatusCode summariseFitMessages(const std::vector<SessionLapEntry>& sessions, const std::vector<SessionLapEntry>& laps)
{
    bool bySessions = fitInventory.sessionCount != 0;
    size_t count = bySessions ? fitInventory.sessionCount : fitInventory.lapCount;
    if (count == 0)
        return fitOk;
    std::span<const SessionLapEntry> entries = std::span(bySessions ? sessions : laps).first(count);
    std::vector<uint8_t>& sports = bySessions ? fitInventory.sessionSport : fitInventory.lapSport;
    for (size_t i = 0; i < count; ++i) {
        sports[i] = entries[i].sport;
        addTotals(entries[i]);
        widenExtremes(entries[i], i == 0);
    }
    if (fitInventory.recordCount != 0)
        averageEntries(entries);
    averageSpeed(entries);
    return fitOk;
}

} // namespace torvane
