#include "gps/prepare_writer.h"

#include "fit/base_type.h"
#include "fit/fit_output.h"
#include "fit/fit_tools.h"
#include "fit/fit_walk.h"
#include "fit/message_fields.h"
#include "fit/tool_support.h"
#include "gps/ride_cleaning.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr uint8_t recordLocalType = 0; // never another message's, so that one definition serves all records

// Which definition a local type holds, without the header byte and its local type.
struct Slot {
    std::vector<uint8_t> definition;
    uint64_t lastUse = 0;
};

struct Writing {
    const Activity& activity;
    const SummaryRules& rules;
    size_t mostBytes;
    std::vector<uint8_t>& block;
    PrepareFindings& findings;
    std::vector<uint8_t> fields = {}; // RideField of each field of a record
    size_t recordSize = 0;
    bool recordsDefined = false;
    std::array<Slot, localTypeCount> slots = {};
    uint64_t uses = 0;
    RewrittenMessage rewritten = {};
};

void append(std::vector<uint8_t>& block, std::span<const uint8_t> bytes)
{
    block.insert(block.end(), bytes.begin(), bytes.end());
}

void planRecords(Writing& writing)
{
    writing.recordSize = 1 + sizeof(uint32_t);
    for (uint8_t field = 0; field < rideFieldCount; ++field) {
        if (!writing.findings.fields[field].written)
            continue;
        writing.fields.push_back(field);
        writing.recordSize += rideFields[field].width;
    }
}

constexpr uint8_t unsigned32 = 0x86;

void defineRecords(Writing& writing)
{
    uint8_t count = static_cast<uint8_t>(writing.fields.size() + 1);
    const uint8_t head[] = {
        headerDefinition | recordLocalType, 0, 0, messageRecord, 0, count, timestampField, 4, unsigned32};
    append(writing.block, head);
    for (uint8_t field : writing.fields) {
        const RideFieldRow& row = rideFields[field];
        const uint8_t triple[] = {row.number, row.width, row.baseType};
        append(writing.block, triple);
    }
    writing.recordsDefined = true;
    ++writing.findings.definitionsWritten;
}

bool isOfRow(const FieldDefinition& field, const RideFieldRow& row)
{
    return field.number == row.number && field.size == row.width && field.baseType == row.baseType;
}

// As defineRecords writes it: some of the fields, in the order of their table.
bool hasRecordForm(const LocalDefinition& definition)
{
    std::span<const FieldDefinition> fields = definition.fieldList();
    bool starts = definition.localType == recordLocalType && !definition.bigEndian() && !fields.empty() &&
                  fields[0].number == timestampField && fields[0].baseType == unsigned32;
    size_t next = 1;
    for (const RideFieldRow& row : rideFields)
        next += next < fields.size() && isOfRow(fields[next], row);
    return starts && next == fields.size();
}

template <class Value>
uint8_t* putNumber(uint8_t* place, Value value, size_t width)
{
    for (size_t i = 0; i < width; ++i)
        *place++ = static_cast<uint8_t>(static_cast<uint32_t>(value) >> 8 * i);
    return place;
}

template <class ValueOf>
void writeRecord(Writing& writing, uint32_t timestamp, ValueOf&& valueOf)
{
    if (!writing.recordsDefined)
        defineRecords(writing);
    size_t start = writing.block.size();
    writing.block.resize(start + writing.recordSize);
    uint8_t* place = writing.block.data() + start;
    *place++ = recordLocalType;
    place = putNumber(place, timestamp, sizeof timestamp);
    for (uint8_t field : writing.fields)
        place = putNumber(place, valueOf(field), rideFields[field].width);
    ++writing.findings.recordsWritten;
}

void writeSample(Writing& writing, const RideSample& sample)
{
    writeRecord(writing, sample.timestamp, [&](uint8_t field) { return sample.values[field]; });
}

// New records within a step, from a second behind `time` on and in front of `end`. Returns the time of the last one.
uint32_t fillUpTo(Writing& writing, size_t step, uint32_t time, uint32_t end)
{
    const RideSample& from = writing.activity.samples[step];
    const RideSample& to = writing.activity.samples[step + 1];
    double seconds = to.timestamp - from.timestamp;
    for (end = std::min(end, to.timestamp); time + 1 < end; ++time) {
        double share = (time + 1 - from.timestamp) / seconds;
        writeRecord(writing, time + 1, [&](uint8_t field) { return valueWithin(from, to, field, share); });
        ++writing.findings.recordsFilled;
    }
    return time;
}

bool holds(const Slot& slot, std::span<const uint8_t> definition)
{
    return slot.lastUse != 0 && std::ranges::equal(slot.definition, definition);
}

// The local type that has not been used for longest.
size_t oldestSlot(const Writing& writing)
{
    auto oldest = std::min_element(writing.slots.begin() + recordLocalType + 1, writing.slots.end(),
                                   [](const Slot& a, const Slot& b) { return a.lastUse < b.lastUse; });
    return static_cast<size_t>(oldest - writing.slots.begin());
}

void define(Writing& writing, size_t local, std::span<const uint8_t> definition)
{
    uint8_t header = headerDefinition | (definition[0] & headerDeveloperPart);
    writing.block.push_back(static_cast<uint8_t>(header | local));
    append(writing.block, definition.subspan(1));
    writing.slots[local].definition.assign(definition.begin() + 1, definition.end());
    ++writing.findings.definitionsWritten;
}

// A definition with a developer part is longer by it, so the bytes behind the header tell definitions apart.
size_t localTypeFor(Writing& writing, std::span<const uint8_t> definition)
{
    size_t local = recordLocalType + 1;
    while (local < writing.slots.size() && !holds(writing.slots[local], definition.subspan(1)))
        ++local;
    if (local == writing.slots.size()) {
        local = oldestSlot(writing);
        define(writing, local, definition);
    }
    writing.slots[local].lastUse = ++writing.uses;
    return local;
}

// The mark of a rewritten file, as all tools leave it.
void markFileId(std::span<const uint8_t> definition, std::span<uint8_t> payload)
{
    constexpr size_t fieldCountOffset = 5, firstTriple = 6, tripleSize = 3;
    size_t offset = 0;
    for (size_t i = 0; i < definition[fieldCountOffset]; ++i) {
        const uint8_t* triple = definition.data() + firstTriple + i * tripleSize;
        std::span<uint8_t> field = payload.subspan(offset, triple[1]);
        offset += triple[1];
        if (triple[0] != fileIdManufacturer || field.empty())
            continue;
        std::ranges::fill(field, uint8_t{0});
        field[0] = 0xFF;
    }
}

void writeOther(Writing& writing, const OtherMessage& message)
{
    if (writing.block.size() > writing.mostBytes)
        return; // nothing of it will be written
    std::span<const uint8_t> definition = message.definition, payload = message.payload;
    if (needsRewriting(message)) {
        rewriteMessage(message, writing.rules, writing.rewritten, writing.findings);
        definition = writing.rewritten.definition;
        payload = writing.rewritten.payload;
    }
    size_t local = localTypeFor(writing, definition);
    writing.block.push_back(static_cast<uint8_t>(local));
    size_t start = writing.block.size();
    append(writing.block, payload);
    if (message.global == messageFileId)
        markFileId(definition, std::span(writing.block).subspan(start));
    ++writing.findings.messagesPassed;
}

bool isFilled(const Activity& activity, size_t step)
{
    return step + 1 < activity.samples.size() && !activity.samples[step].open;
}

// A message with a time of its own stands behind the new records in front of that time.
void writeStep(Writing& writing, size_t step, size_t& other)
{
    const Activity& activity = writing.activity;
    uint32_t time = activity.samples[step].timestamp;
    bool filled = isFilled(activity, step);
    for (; other < activity.others.size() && activity.others[other].samplesBefore == step + 1; ++other) {
        if (filled && activity.others[other].timestamp > time)
            time = fillUpTo(writing, step, time, activity.others[other].timestamp);
        writeOther(writing, activity.others[other]);
    }
    if (filled)
        fillUpTo(writing, step, time, UINT32_MAX);
}

// Returns the number of new records within the step.
size_t countStep(const RideSample& from, const RideSample& to, PrepareFindings& findings)
{
    if (from.open)
        return 0;
    uint32_t seconds = to.timestamp - from.timestamp;
    findings.seconds += seconds;
    findings.stepsFilled += seconds > 1;
    int64_t way = int64_t{to.values[rideDistance]} - from.values[rideDistance];
    findings.centimetres += way > 0 ? static_cast<uint64_t>(way) : 0;
    return seconds - 1;
}

// Returns the number of records that will stand in the file.
size_t countSteps(const Activity& activity, PrepareFindings& findings)
{
    size_t records = activity.samples.size();
    for (size_t i = 0; i + 1 < activity.samples.size(); ++i)
        records += countStep(activity.samples[i], activity.samples[i + 1], findings);
    return records;
}

} // namespace

bool writePrepared(const Activity& activity, const SummaryRules& rules, size_t mostBytes, std::vector<uint8_t>& block,
                   PrepareFindings& findings, Progress* progress)
{
    Writing writing = {activity, rules, mostBytes, block, findings};
    planRecords(writing);
    size_t records = countSteps(activity, findings);
    if (records > mostBytes / writing.recordSize)
        return false;
    size_t others = 0; // bytes; what is rewritten hardly grows
    for (const OtherMessage& message : activity.others)
        others += message.definition.size() + message.payload.size();
    block.reserve(std::min(mostBytes, records * writing.recordSize + 2 * others));
    size_t other = 0;
    for (; other < activity.others.size() && activity.others[other].samplesBefore == 0; ++other)
        writeOther(writing, activity.others[other]);
    constexpr size_t progressEach = 4096; // samples
    for (size_t i = 0; i < activity.samples.size(); ++i) {
        if (i % progressEach == 0)
            reportProgress(progress, static_cast<int>(100 * i / activity.samples.size()));
        writeSample(writing, activity.samples[i]);
        writeStep(writing, i, other);
    }
    return block.size() <= mostBytes;
}

bool hasPreparedForm(const FitImage& image)
{
    constexpr int64_t rewrittenMark = 255;
    FitWalk walk = startWalk(image);
    walk.progress = nullptr;
    walk.compressedFirst = true;
    FitMessage message;
    bool marked = false;
    while (nextMessage(walk, message) == WalkStep::message) {
        if (message.isData(messageFileId))
            marked = readValue(message.payload, findNumber(message, fileIdManufacturer)) == rewrittenMark;
        if (message.defines(messageRecord))
            return marked && hasRecordForm(*message.definition);
    }
    return false;
}

} // namespace torvane
