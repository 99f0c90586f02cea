#include "fit/fit_passes.h"

#include "fit/message_fields.h"
#include "fit/session_lap_fields.h"

#include <algorithm>

namespace torvane {

namespace {

// Follows the smallest step between the timestamps of consecutive records, until it is known to be a second or less.
struct IntervalSearch {
    uint32_t& shortest;
    uint32_t previous = 0;

    void take(uint32_t timestamp)
    {
        if (shortest <= 1)
            return;
        uint32_t step = timestamp - previous; // huge when time runs backwards
        previous = timestamp;
        if (step < shortest)
            shortest = step;
    }
};

// The first pass at work.
struct Scan {
    FitInventory& inventory;
    FitSummary& summary;
    RecordDefinitions& recordDefinitions;
    IntervalSearch interval = {summary.recordInterval};
};

void scanTimestamp(Scan& scan, uint32_t timestamp, bool first)
{
    if (first) {
        scan.summary.startTimestamp = static_cast<int32_t>(timestamp);
        scan.interval.previous = timestamp;
    } else {
        scan.summary.endTimestamp = static_cast<int32_t>(timestamp);
        scan.interval.take(timestamp);
    }
}

void scanRecord(Scan& scan, const FitMessage& message)
{
    FitSummary& summary = scan.summary;
    bool first = scan.inventory.recordCount == 0;
    bool bigEndian = message.definition->bigEndian();
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        if (field.number != recordLatitude && field.number != recordLongitude && field.number != recordTimestamp)
            return;
        uint32_t value = readUint32(message.payload, offset, bigEndian);
        if (field.number == recordTimestamp)
            scanTimestamp(scan, value, first);
        else if (field.number == recordLatitude)
            (first ? summary.firstLatitude : summary.lastLatitude) = static_cast<int32_t>(value);
        else
            (first ? summary.firstLongitude : summary.lastLongitude) = static_cast<int32_t>(value);
    });
    ++scan.inventory.recordCount;
}

void scanDefinition(Scan& scan, const FitMessage& message)
{
    ++scan.inventory.definitionCount;
    if (message.globalMessage() != messageRecord)
        return;
    std::span<const FieldDefinition> fields = message.definition->fieldList();
    scan.recordDefinitions.emplace_back(fields.begin(), fields.end());
    ++scan.inventory.recordDefinitionCount;
}

void scanData(Scan& scan, const FitMessage& message)
{
    FitInventory& inventory = scan.inventory;
    ++(message.compressed ? inventory.compressedTimestampCount : inventory.normalDataCount);
    switch (message.globalMessage()) {
    case messageSession:
        inventory.sessionSport.push_back(lastUint8(message, sessionSport).value_or(0));
        ++inventory.sessionCount;
        break;
    case messageLap:
        inventory.lapSport.push_back(lastUint8(message, lapSport).value_or(0));
        ++inventory.lapCount;
        break;
    case messageRecord:
        scanRecord(scan, message);
        break;
    case messageActivity:
        ++inventory.activityCount;
        break;
    }
}

void scanEnd(const LocalDefinitions& definitions, FitInventory& inventory)
{
    auto isRecord = [](const LocalDefinition& slot) { return slot.globalMessage == messageRecord; };
    auto record = std::ranges::find_if(definitions, isRecord);
    if (record == definitions.end())
        return;
    for (const FieldDefinition& field : record->fieldList())
        inventory.recordFields.push_back(field.number);
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

void addTotals(FitContents& contents, const SessionLapEntry& entry)
{
    FitSummary& summary = contents.summary;
    add(summary.totalElapsed, entry.totalElapsed);
    add(summary.totalDistance, entry.totalDistance);
    add(summary.totalCycles, entry.totalCycles);
    add(summary.totalCalories, entry.totalCalories);
    add(summary.totalFatCalories, entry.totalFatCalories);
    add(summary.totalMovingTime, entry.totalMovingTime);
    if (contents.inventory.activityCount == 0)
        add(summary.totalTimer, entry.totalTimer);
}

void widenExtremes(FitSummary& summary, const SessionLapEntry& entry, bool first)
{
    raise(summary.maxSpeed, entry.maxSpeed);
    raise(summary.maxHeartRate, entry.maxHeartRate);
    raise(summary.maxCadence, entry.maxCadence);
    raise(summary.maxPower, entry.maxPower);
    raise(summary.maxAltitude, entry.maxAltitude);
    if (first || entry.maxTemperature > summary.maxTemperature)
        summary.maxTemperature = entry.maxTemperature;
    if (first || entry.minHeartRate < summary.minHeartRate)
        summary.minHeartRate = entry.minHeartRate;
    if (first || entry.minAltitude < summary.minAltitude)
        summary.minAltitude = entry.minAltitude;
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

// The entries, and the records that their means are over.
struct Entries {
    std::span<const SessionLapEntry> list;
    uint32_t recordCount;

    template <class Member>
    Member mean(Member SessionLapEntry::*member) const
    {
        return static_cast<Member>(weightedSum(list, member) / recordCount);
    }
};

void averageEntries(FitSummary& summary, const Entries& entries)
{
    summary.avgAltitude = entries.mean(&SessionLapEntry::avgAltitude);
    summary.avgHeartRate = entries.mean(&SessionLapEntry::avgHeartRate);
    summary.avgCadence = entries.mean(&SessionLapEntry::avgCadence);
    summary.avgPower = entries.mean(&SessionLapEntry::avgPower);
    summary.gpsAccuracy = entries.mean(&SessionLapEntry::gpsAccuracy);
    int64_t temperatures = static_cast<int64_t>(weightedSum(entries.list, &SessionLapEntry::avgTemperature));
    summary.avgTemperature = static_cast<int8_t>(temperatures / static_cast<int64_t>(entries.recordCount));
}

// From the whole distance and time; without a time the mean of the entries.
void averageSpeed(FitSummary& summary, const Entries& entries)
{
    if (summary.totalTimer != 0) {
        double speed = (summary.totalDistance * 1000.0 * 1000.0) / (summary.totalTimer * 100.0); // mm/s
        summary.avgSpeed = static_cast<uint16_t>(truncateToInteger(speed));
    } else if (entries.recordCount != 0) {
        summary.avgSpeed = entries.mean(&SessionLapEntry::avgSpeed);
    }
}

} // namespace

StatusCode scanFitMessages(const FitImage& image, FitContents& contents, RecordDefinitions& recordDefinitions)
{
    contents.summary.recordInterval = 3600;
    Scan scan = {contents.inventory, contents.summary, recordDefinitions};
    FitWalk walk = startWalk(image);
    StatusCode code = walkMessages(walk, [&](const FitMessage& message) {
        if (message.isDefinition)
            scanDefinition(scan, message);
        else
            scanData(scan, message);
    });
    scanEnd(walk.definitions, contents.inventory);
    return code;
}

StatusCode extractFitMessages(const FitImage& image, FitContents& contents, std::vector<SessionLapEntry>& sessions,
                              std::vector<SessionLapEntry>& laps)
{
    FitInventory& inventory = contents.inventory;
    FitSummary& summary = contents.summary;
    size_t session = 0;
    size_t lap = 0;
    StatusCode code = walkMessages(image, [&](const FitMessage& message) {
        if (message.isDefinition)
            return;
        switch (message.globalMessage()) {
        case messageFileId:
            inventory.fileType = fileTypeOf(message).value_or(inventory.fileType);
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
            summary.totalTimer = lastUint32(message, activityTotalTimer).value_or(summary.totalTimer);
            break;
        }
    });
    summary.sessionTotal = static_cast<uint16_t>(session);
    summary.lapTotal = static_cast<uint16_t>(lap);
    return code;
}

void summariseFitMessages(FitContents& contents, const std::vector<SessionLapEntry>& sessions,
                          const std::vector<SessionLapEntry>& laps)
{
    FitInventory& inventory = contents.inventory;
    bool bySessions = inventory.sessionCount != 0;
    size_t count = bySessions ? inventory.sessionCount : inventory.lapCount;
    if (count == 0)
        return;
    Entries entries = {std::span(bySessions ? sessions : laps).first(count), inventory.recordCount};
    std::vector<uint8_t>& sports = bySessions ? inventory.sessionSport : inventory.lapSport;
    for (size_t i = 0; i < count; ++i) {
        sports[i] = entries.list[i].sport;
        addTotals(contents, entries.list[i]);
        widenExtremes(contents.summary, entries.list[i], i == 0);
    }
    if (inventory.recordCount != 0)
        averageEntries(contents.summary, entries);
    averageSpeed(contents.summary, entries);
}

} // namespace torvane
