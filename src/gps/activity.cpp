#include "gps/activity.h"

#include "fit/base_type.h"
#include "fit/fit_walk.h"
#include "fit/size_limits.h"
#include "gps/ride_clock.h"

#include <algorithm>
#include <utility>

namespace torvane {

namespace {

constexpr uint8_t timestampField = 253;
constexpr int32_t nowhere = 0; // of both coordinates: a device without a fix

struct PlannedField {
    uint8_t field; // RideField
    bool enhanced;
    NumberReader reader;
};

// How the messages of one local type are read, as long as its definition stands.
struct ReadPlan {
    std::span<const uint8_t> definition;
    NumberReader timestamp;
    std::vector<PlannedField> fields; // of records
};

struct Reading {
    Activity& activity;
    PrepareFindings& findings;
    size_t sourceSize; // bytes
    std::array<ReadPlan, localTypeCount> plans = {};
    uint32_t lastTimestamp = 0; // of any message
    bool hasFileId = false;
};

// Plain fields stand in front of enhanced ones, so that these fill in only what is missing.
bool standsBefore(const PlannedField& a, const PlannedField& b)
{
    return a.enhanced < b.enhanced;
}

void planField(const FieldDefinition& field, size_t offset, bool bigEndian, ReadPlan& plan, PrepareFindings& findings)
{
    bool known = field.number == timestampField;
    for (uint8_t i = 0; i < rideFieldCount; ++i) {
        const RideFieldRow& row = rideFields[i];
        if (field.number != row.number && (row.enhanced == noEnhanced || field.number != row.enhanced))
            continue;
        plan.fields.push_back({i, field.number != row.number, numberReader(field, offset, bigEndian, row.isSigned())});
        findings.fields[i].defined = true;
        known = true;
    }
    if (!known)
        findings.fieldsLeftOut.set(field.number);
}

void planRecord(const FitMessage& message, ReadPlan& plan, PrepareFindings& findings)
{
    ++findings.recordDefinitions;
    bool bigEndian = message.definition->bigEndian();
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        planField(field, offset, bigEndian, plan, findings);
    });
    std::ranges::stable_sort(plan.fields, standsBefore);
    findings.developerFieldsLeftOut |= message.definition->developerFieldCount != 0;
}

// A table that grows is there twice while it moves. This one gets the room for a file full of such records; what is not
// used of it takes no memory.
void makeRoom(Reading& reading, const FitMessage& message)
{
    constexpr size_t shortRecord = 16; // bytes; a table of shorter ones grows
    const LocalDefinition& form = *message.definition;
    size_t size = std::max(shortRecord, size_t{1} + form.fieldBytes + form.developerBytes);
    if (reading.activity.samples.capacity() == 0)
        reading.activity.samples.reserve(reading.sourceSize / size);
}

void takeDefinition(Reading& reading, const FitMessage& message)
{
    ++reading.findings.definitions;
    ReadPlan& plan = reading.plans[message.localType];
    plan = {message.bytes, findNumber(message, timestampField), {}};
    if (message.globalMessage() != messageRecord)
        return;
    planRecord(message, plan, reading.findings);
    makeRoom(reading, message);
}

// Five bits of time behind the last full timestamp.
uint32_t compressedTime(uint32_t last, uint8_t header)
{
    constexpr uint32_t mask = 31;
    return last + ((header - last) & mask);
}

// 0 for a message without a time.
uint32_t timeOf(Reading& reading, const FitMessage& message, const ReadPlan& plan)
{
    uint32_t time = 0;
    if (std::optional<int64_t> value = readValue(message.payload, plan.timestamp))
        time = static_cast<uint32_t>(*value);
    else if (message.compressed && reading.lastTimestamp != 0)
        time = compressedTime(reading.lastTimestamp, message.header);
    if (message.compressed)
        ++reading.findings.compressedTimestamps;
    if (time != 0)
        reading.lastTimestamp = time;
    return time;
}

void readField(const FitMessage& message, const PlannedField& planned, RideSample& sample, uint32_t& enhancedValues)
{
    const RideFieldRow& row = rideFields[planned.field];
    std::optional<int64_t> value = readValue(message.payload, planned.reader);
    if (!value || *value < row.least || *value > row.most || (planned.enhanced && sample.has(planned.field)))
        return;
    sample.set(planned.field, static_cast<int32_t>(*value));
    enhancedValues += planned.enhanced;
}

// A position is both its coordinates, or none.
void checkPosition(RideSample& sample)
{
    bool whole = sample.has(rideLatitude) && sample.has(rideLongitude);
    bool fixed = sample.values[rideLatitude] != nowhere || sample.values[rideLongitude] != nowhere;
    if (whole && fixed)
        return;
    sample.clear(rideLatitude);
    sample.clear(rideLongitude);
}

void readRecord(Reading& reading, const FitMessage& message, const ReadPlan& plan, uint32_t time)
{
    ++reading.findings.recordsRead;
    if (time == 0) {
        ++reading.findings.withoutTimestamp;
        return;
    }
    RideSample& sample = reading.activity.samples.emplace_back();
    sample.timestamp = time;
    for (const PlannedField& planned : plan.fields)
        readField(message, planned, sample, reading.findings.enhancedValues);
    checkPosition(sample);
}

std::optional<int64_t> valueOf(const FitMessage& message, uint8_t field)
{
    return readValue(message.payload, findNumber(message, field));
}

// The plain mean speed or the enhanced one, else what distance and timer come to.
void readDeviceSpeed(const FitMessage& message, Summary& session)
{
    constexpr uint8_t timer = 8, distanceField = 9, averageSpeed = 14, enhancedAverageSpeed = 124;
    std::optional<int64_t> speed = valueOf(message, averageSpeed);
    if (!speed)
        speed = valueOf(message, enhancedAverageSpeed);
    std::optional<int64_t> time = valueOf(message, timer);
    std::optional<int64_t> distance = valueOf(message, distanceField);
    if (!speed && distance && time.value_or(0) > 0)
        speed = *distance * 10'000 / *time; // 1/100 m and ms
    if (!speed || !time)
        return;
    session.meanSpeed = static_cast<double>(*speed);
    session.timer = static_cast<double>(*time);
}

// Where it ends: its start and the time that went by, else its own timestamp.
void readSummary(Reading& reading, const FitMessage& message, uint32_t time)
{
    constexpr uint8_t sessionSport = 5, lapSport = 25, startField = 2, elapsedField = 7;
    constexpr int64_t milliseconds = 1000;
    Summary summary = {reading.activity.others.size(), message.globalMessage() == messageSession};
    summary.start = static_cast<uint32_t>(valueOf(message, startField).value_or(0));
    int64_t elapsed = valueOf(message, elapsedField).value_or(0);
    summary.end = time;
    if (summary.start != 0 && elapsed != 0)
        summary.end = static_cast<uint32_t>(summary.start + (elapsed + milliseconds / 2) / milliseconds);
    if (std::optional<int64_t> sport = valueOf(message, summary.isSession ? sessionSport : lapSport))
        summary.sport = static_cast<uint8_t>(*sport);
    if (summary.isSession)
        readDeviceSpeed(message, summary);
    reading.activity.summaries.push_back(summary);
}

void readTimerEvent(Reading& reading, const FitMessage& message, uint32_t time)
{
    constexpr uint8_t eventField = 0, typeField = 1;
    constexpr int64_t timerEvent = 0, start = 0, stop = 1, stopAll = 4, stopDisable = 8, stopDisableAll = 9;
    if (time == 0 || valueOf(message, eventField) != timerEvent)
        return;
    std::optional<int64_t> type = valueOf(message, typeField);
    bool stops = type == stop || type == stopAll || type == stopDisable || type == stopDisableAll;
    if (stops || type == start)
        reading.activity.timer.push_back(
            {time, stops, reading.activity.samples.size(), reading.activity.others.size()});
}

// Of several files in one the first gives the file_id. False where the message is none of those that go on.
bool readFileId(Reading& reading, const FitMessage& message)
{
    constexpr uint8_t fileTypeField = 0;
    if (std::exchange(reading.hasFileId, true))
        return false;
    reading.activity.fileType = static_cast<uint8_t>(valueOf(message, fileTypeField).value_or(0));
    return true;
}

void readOther(Reading& reading, const FitMessage& message, const ReadPlan& plan, uint32_t time)
{
    if (!message.definition->defined()) {
        ++reading.findings.messagesUndefined;
        return;
    }
    uint16_t global = message.globalMessage();
    if (global == messageFileId && !readFileId(reading, message))
        return;
    if (global == messageSession || global == messageLap)
        readSummary(reading, message, time);
    if (global == messageEvent)
        readTimerEvent(reading, message, time);
    reading.activity.others.push_back(
        {plan.definition, message.payload, global, message.compressed, time, reading.activity.samples.size()});
}

void readMessage(Reading& reading, const FitMessage& message)
{
    if (message.isDefinition)
        return takeDefinition(reading, message);
    const ReadPlan& plan = reading.plans[message.localType];
    uint32_t time = timeOf(reading, message, plan);
    if (message.isData(messageRecord))
        readRecord(reading, message, plan, time);
    else
        readOther(reading, message, plan, time);
}

// A table that grows row by row has room for as many again.
size_t tableBytes(const Activity& activity)
{
    return 2 * (activity.samples.size() * sizeof(RideSample) + activity.others.size() * sizeof(OtherMessage) +
                activity.summaries.size() * sizeof(Summary) + activity.timer.size() * sizeof(TimerEvent));
}

} // namespace

StatusCode readActivity(const FitImage& image, Activity& activity, PrepareFindings& findings)
{
    Reading reading = {activity, findings, image.data.size()};
    FitWalk walk = startWalk(image);
    walk.compressedFirst = true;
    FitMessage message;
    WalkStep step;
    while ((step = nextMessage(walk, message)) == WalkStep::message) {
        readMessage(reading, message);
        if (tableBytes(activity) > mostTable(image.data.size()))
            return fitTooLarge;
    }
    keepRisingTimes(activity, findings);
    activity.pauses = pausesOf(activity.timer);
    return step == WalkStep::end ? fitOk : fitInvalid;
}

} // namespace torvane
