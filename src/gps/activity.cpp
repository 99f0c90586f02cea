#include "gps/activity.h"

#include "fit/base_type.h"
#include "fit/fit_walk.h"
#include "fit/size_limits.h"

#include <algorithm>

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
    uint32_t gapLimit;
    std::array<ReadPlan, localTypeCount> plans = {};
    uint32_t lastTimestamp = 0; // of any message
    bool stopped = false;       // the timer, at stoppedAt
    uint32_t stoppedAt = 0;
    double speedTime = 0, timer = 0; // sums over sessions: mm/s x ms, ms
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

void takeDefinition(Reading& reading, const FitMessage& message)
{
    ++reading.findings.definitions;
    ReadPlan& plan = reading.plans[message.localType];
    plan = {message.bytes, findNumber(message, timestampField), {}};
    if (message.globalMessage() == messageRecord)
        planRecord(message, plan, reading.findings);
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

void forget(Activity& activity)
{
    activity.samples.pop_back();
    for (size_t i = activity.others.size(); i-- > 0 && activity.others[i].samplesBefore > activity.samples.size();)
        activity.others[i].samplesBefore = activity.samples.size();
}

// Whether the last sample alone leaps ahead of the one before and of this time, which lies between the two.
bool lastLeaps(const std::vector<RideSample>& samples, uint32_t time, uint32_t gapLimit)
{
    size_t count = samples.size();
    if (count < 2 || time >= samples[count - 1].timestamp || time <= samples[count - 2].timestamp)
        return false;
    return samples[count - 1].timestamp - samples[count - 2].timestamp > gapLimit;
}

bool hasItsTime(Reading& reading, uint32_t time)
{
    std::vector<RideSample>& samples = reading.activity.samples;
    PrepareFindings& findings = reading.findings;
    if (lastLeaps(samples, time, reading.gapLimit)) {
        forget(reading.activity);
        ++findings.leapingTimestamps;
    }
    if (time == 0)
        ++findings.withoutTimestamp;
    else if (samples.empty() || time > samples.back().timestamp)
        return true;
    else if (time == samples.back().timestamp)
        ++findings.equalTimestamps;
    else
        ++findings.backwardTimestamps;
    return false;
}

void readRecord(Reading& reading, const FitMessage& message, const ReadPlan& plan, uint32_t time)
{
    ++reading.findings.recordsRead;
    if (!hasItsTime(reading, time))
        return;
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

void readSport(const FitMessage& message, uint8_t field, std::vector<uint8_t>& sports)
{
    if (std::optional<int64_t> sport = valueOf(message, field))
        sports.push_back(static_cast<uint8_t>(*sport));
}

// The device's own mean speed, the plain or the enhanced one.
void readSession(Reading& reading, const FitMessage& message)
{
    constexpr uint8_t sport = 5, timer = 8, averageSpeed = 14, enhancedAverageSpeed = 124;
    readSport(message, sport, reading.activity.sessionSports);
    std::optional<int64_t> speed = valueOf(message, averageSpeed);
    if (!speed)
        speed = valueOf(message, enhancedAverageSpeed);
    std::optional<int64_t> time = valueOf(message, timer);
    if (!speed || !time)
        return;
    reading.speedTime += static_cast<double>(*speed) * static_cast<double>(*time);
    reading.timer += static_cast<double>(*time);
}

void readTimerEvent(Reading& reading, const FitMessage& message, uint32_t time)
{
    constexpr uint8_t eventField = 0, typeField = 1;
    constexpr int64_t timerEvent = 0, start = 0, stop = 1, stopAll = 4, stopDisable = 8, stopDisableAll = 9;
    if (time == 0 || valueOf(message, eventField) != timerEvent)
        return;
    std::optional<int64_t> type = valueOf(message, typeField);
    bool stops = type == stop || type == stopAll || type == stopDisable || type == stopDisableAll;
    if (stops && !reading.stopped)
        reading.stoppedAt = time;
    if (type == start && reading.stopped && time > reading.stoppedAt)
        reading.activity.pauses.push_back({reading.stoppedAt, time});
    if (stops || type == start)
        reading.stopped = stops;
}

void readOther(Reading& reading, const FitMessage& message, const ReadPlan& plan, uint32_t time)
{
    constexpr uint8_t fileTypeField = 0, lapSport = 25;
    if (!message.definition->defined()) {
        ++reading.findings.messagesUndefined;
        return;
    }
    uint16_t global = message.globalMessage();
    if (global == messageFileId)
        reading.activity.fileType = static_cast<uint8_t>(valueOf(message, fileTypeField).value_or(0));
    else if (global == messageSession)
        readSession(reading, message);
    else if (global == messageLap)
        readSport(message, lapSport, reading.activity.lapSports);
    else if (global == messageEvent)
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

// Sorted, and none inside another.
void orderPauses(std::vector<Pause>& pauses)
{
    std::ranges::sort(pauses, {}, &Pause::from);
    size_t last = 0;
    for (size_t i = 1; i < pauses.size(); ++i)
        if (pauses[i].from <= pauses[last].to)
            pauses[last].to = std::max(pauses[last].to, pauses[i].to);
        else
            pauses[++last] = pauses[i];
    if (!pauses.empty())
        pauses.resize(last + 1);
}

bool differ(const std::vector<uint8_t>& sports)
{
    return std::ranges::any_of(sports, [&](uint8_t sport) { return sport != sports[0]; });
}

// A table that grows row by row has room for as many again.
size_t tableBytes(const Activity& activity)
{
    return 2 * (activity.samples.size() * sizeof(RideSample) + activity.others.size() * sizeof(OtherMessage));
}

} // namespace

StatusCode readActivity(const FitImage& image, uint32_t gapLimit, Activity& activity, PrepareFindings& findings)
{
    Reading reading = {activity, findings, gapLimit};
    FitWalk walk = startWalk(image);
    walk.compressedFirst = true;
    FitMessage message;
    WalkStep step;
    while ((step = nextMessage(walk, message)) == WalkStep::message) {
        readMessage(reading, message);
        if (tableBytes(activity) > mostTable(image.data.size()))
            return fitTooLarge;
    }
    orderPauses(activity.pauses);
    if (reading.timer > 0)
        findings.deviceSpeed = reading.speedTime / reading.timer;
    return step == WalkStep::end ? fitOk : fitInvalid;
}

StatusCode sportsOf(const Activity& activity)
{
    if (!activity.sessionSports.empty())
        return differ(activity.sessionSports) ? fitSessionSportsDiffer : fitOk;
    return differ(activity.lapSports) ? fitLapSportsDiffer : fitOk;
}

} // namespace torvane
