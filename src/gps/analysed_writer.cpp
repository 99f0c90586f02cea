#include "gps/analysed_writer.h"

#include "fit/fit_crc.h"
#include "fit/fit_output.h"
#include "fit/fit_types.h"
#include "fit/message_fields.h"
#include "gps/analysed_fields.h"
#include "gps/analysed_sums.h"
#include "gps/plain_records.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <optional>
#include <vector>

namespace torvane {

namespace {

constexpr size_t tripleSize = 3;
constexpr size_t fieldCountOffset = 5; // in a definition message
constexpr size_t firstTripleOffset = 6;

// Bytes of the block that are held at once: messages that are whole, a message that may be as long as any, and what
// an added distance writes ahead of it (writeAddedDistance).
constexpr size_t pieceSize = 1 << 20, longestMessage = 1 << 17;
constexpr size_t windowSize = pieceSize + 3 * longestMessage;

// One rewrite under way.
struct Rewrite {
    const GpsRecords& records;
    const OutputChoice& options;
    bool byProfile;
    RecordFields fields;
    Growths growths;
    FitOutput& out;
    AnalysedSums sums;
    uint32_t totalTimer; // ms
    size_t index = 0;    // row of the next record message
    std::array<PlainLayout, localTypeCount> layouts = {};
    PlainRun run = {};
    // By the profile: the first rows behind the session and the lap in front.
    size_t firstOfSession = 0, firstOfLap = 0;
};

// What goes into a record; by the profile to the nearest number, and the field's marker where nothing is known.

uint32_t recordNumber(double value, uint32_t marker)
{
    return value >= 0 && value < marker ? static_cast<uint32_t>(std::lround(value)) : marker;
}

uint32_t writtenCadence(Rewrite& rewrite, const GpsRecord& record)
{
    return rewrite.byProfile ? recordNumber(record.cadence, UINT8_MAX) : sumCadence(rewrite.sums, record);
}

uint32_t writtenPower(Rewrite& rewrite, const GpsRecord& record)
{
    return rewrite.byProfile ? recordNumber(record.power, UINT16_MAX) : sumPower(rewrite.sums, record);
}

// A row that is missing drops its record.
bool isKept(const GpsRecords& records, size_t index)
{
    return index < records.size() && records[index].sector != 0;
}

// One declared field of a kept record: motion, cadence and power are written from the row, all else stays as copied.
void writeRecordField(Rewrite& rewrite, const FitMessage& message, uint8_t number, size_t offset,
                      std::span<uint8_t> field)
{
    const GpsRecord& record = rewrite.records[rewrite.index];
    std::span<const uint8_t> payload = message.payload;
    bool bigEndian = message.definition->bigEndian();
    switch (number) {
    case recordLatitude:
        sumLatitude(rewrite.sums, static_cast<int32_t>(copyUint32Bytes(payload, offset, bigEndian)));
        break;
    case recordLongitude:
        sumLongitude(rewrite.sums, static_cast<int32_t>(copyUint32Bytes(payload, offset, bigEndian)));
        break;
    case recordAltitude:
        sumAltitude(rewrite.sums, readUint16(payload, offset, bigEndian));
        break;
    case recordHeartRate:
        sumHeartRate(rewrite.sums, readUint8(payload, offset));
        break;
    case recordCadence: // one byte, whatever the declared size
        writeField(field, writtenCadence(rewrite, record), false);
        break;
    case recordDistance:
        writeUint32Field(field, sumDistance(rewrite.sums, record), bigEndian);
        break;
    case recordSpeed:
        writeUint32Field(field, sumSpeed(rewrite.sums, record), bigEndian);
        break;
    case recordPower:
        writeUint32Field(field, writtenPower(rewrite, record), bigEndian);
        break;
    case recordTemperature:
        sumTemperature(rewrite.sums, static_cast<int8_t>(readUint8(payload, offset)));
        break;
    case recordCycles:
        sumCycles(rewrite.sums, readUint8(payload, offset));
        break;
    case recordAccuracy:
        sumAccuracy(rewrite.sums, readUint8(payload, offset));
        break;
    case recordCalories:
        sumCalories(rewrite.sums, readUint16(payload, offset, bigEndian));
        break;
    case recordTimestamp:
        sumTimestamp(rewrite.sums, readUint32(payload, offset, bigEndian));
        break;
    }
}

// The distance added to a record has never reached its own four bytes, which stay zero: it goes as far behind them as
// they stand behind the message's start, with the size that the slot holds behind its last field. That is 0 unless an
// earlier definition of the local type had more fields.
void writeAddedDistance(Rewrite& rewrite, const LocalDefinition& slot, size_t messageStart, size_t offset,
                        uint32_t distance)
{
    size_t size = slot.fieldCount < maxFieldCount ? slot.fields[slot.fieldCount].size : 0;
    std::span<uint8_t> block = rewrite.out.block;
    size_t start = std::min(messageStart + 2 * offset, block.size());
    std::vector<uint8_t> bytes(size);
    writeUint32Field(bytes, distance, slot.bigEndian());
    std::copy_n(bytes.begin(), std::min(size, block.size() - start), block.subspan(start).begin());
}

// Takes bytes of a message off its front.
std::span<uint8_t> takeFront(std::span<uint8_t>& rest, size_t count)
{
    std::span<uint8_t> front = rest.first(count);
    rest = rest.subspan(count);
    return front;
}

void writeAddedRecordFields(Rewrite& rewrite, const FitMessage& message, std::span<uint8_t> whole,
                            std::span<uint8_t>& rest)
{
    const GpsRecord& record = rewrite.records[rewrite.index];
    const LocalDefinition& slot = *message.definition;
    size_t messageStart = static_cast<size_t>(whole.data() - rewrite.out.block.data());
    for (const FieldDefinition& added : rewrite.growths.ofRecords().fields) {
        size_t offset = whole.size() - rest.size();
        std::span<uint8_t> field = takeFront(rest, added.size);
        switch (added.number) {
        case recordSpeed:
            writeUint32Field(field, sumSpeed(rewrite.sums, record), slot.bigEndian());
            break;
        case recordDistance:
            writeAddedDistance(rewrite, slot, messageStart, offset, sumDistance(rewrite.sums, record));
            break;
        case recordCadence:
            writeUint32Field(field, writtenCadence(rewrite, record), slot.bigEndian());
            break;
        case recordPower:
            writeUint32Field(field, writtenPower(rewrite, record), slot.bigEndian());
            break;
        }
    }
}

// Reserves a data message that grows by its added fields, and copies the source's header byte and declared fields.
// Empty when the planned block ends before it.
std::span<uint8_t> copyDeclaredPart(Rewrite& rewrite, const FitMessage& message)
{
    size_t growth = rewrite.growths.of(message).bytes;
    std::span<uint8_t> whole = reserveBytes(rewrite.out, message.bytes.size() + growth);
    if (!whole.empty())
        std::copy_n(message.bytes.begin(), 1 + message.definition->fieldBytes, whole.begin());
    return whole;
}

void copyDeveloperPart(const FitMessage& message, std::span<uint8_t> rest)
{
    std::span<const uint8_t> developer = message.bytes.last(message.definition->developerBytes);
    std::copy(developer.begin(), developer.end(), rest.begin());
}

void writeRecord(Rewrite& rewrite, const FitMessage& message)
{
    std::span<uint8_t> whole = copyDeclaredPart(rewrite, message);
    if (whole.empty())
        return;
    rewrite.sums.afterGap = rewrite.index == 0 || !isKept(rewrite.records, rewrite.index - 1);
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        writeRecordField(rewrite, message, field.number, offset, fieldOf(whole, offset, field.size));
    });
    std::span<uint8_t> rest = whole.subspan(1 + message.definition->fieldBytes);
    writeAddedRecordFields(rewrite, message, whole, rest);
    copyDeveloperPart(message, rest);
    countRecord(rewrite.sums, rewrite.records[rewrite.index]);
}

void writePlainRecord(Rewrite& rewrite, const FitMessage& message, const PlainLayout& layout)
{
    std::span<uint8_t> whole = copyDeclaredPart(rewrite, message);
    if (whole.empty())
        return;
    const GpsRecord& record = rewrite.records[rewrite.index];
    WrittenNumbers written;
    if (layout.has(plainCadence)) {
        written.cadence = rewrite.byProfile ? recordNumber(record.cadence, UINT8_MAX) : wholeNumber(record.cadence);
        whole[layout.place[plainCadence]] = static_cast<uint8_t>(written.cadence);
    }
    if (layout.has(plainDistance)) {
        written.distance = wholeNumber(record.distance * 100); // 1/100 m
        writeUint32Field(whole.subspan(layout.place[plainDistance]).first<4>(), written.distance, false);
    }
    if (layout.has(plainSpeed)) {
        written.speed = wholeNumber(record.speed * 1000); // mm/s
        writeUint32Field(whole.subspan(layout.place[plainSpeed]).first<2>(), written.speed, false);
    }
    if (layout.has(plainPower)) {
        written.power = rewrite.byProfile ? recordNumber(record.power, UINT16_MAX) : wholeNumber(record.power);
        writeUint32Field(whole.subspan(layout.place[plainPower]).first<2>(), written.power, false);
    }
    copyDeveloperPart(message, whole.last(message.definition->developerBytes));
    if (rewrite.byProfile)
        return; // sums its rows up
    rewrite.sums.afterGap = rewrite.index == 0 || !isKept(rewrite.records, rewrite.index - 1);
    rewrite.run.layout = &layout;
    sumPlainRecord(rewrite.run, layout, message.bytes.data(), record, written, rewrite.sums);
}

void writeSummaryMessage(Rewrite& rewrite, const FitMessage& message, RunningSet& set, const EntryFieldIndex& fields)
{
    finaliseSessionLap(set);
    set.entry.totalElapsed = (set.lastTime - set.entry.startTime) * 1000;
    std::span<uint8_t> whole = copyDeclaredPart(rewrite, message);
    if (whole.empty())
        return;
    auto writeMember = [&](uint8_t number, std::span<uint8_t> field) {
        EntryMember member = fields[number];
        if (member.width != 0)
            writeUint32Field(field, loadMember(set.entry, member), message.definition->bigEndian());
    };
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        writeMember(field.number, fieldOf(whole, offset, field.size));
    });
    if (message.globalMessage() == messageSession && rewrite.options.sportEnabled)
        setSport(message, whole, sportValue(rewrite.options.sportIndex));
    std::span<uint8_t> rest = whole.subspan(1 + message.definition->fieldBytes);
    for (const FieldDefinition& added : rewrite.growths.of(message).fields)
        writeMember(added.number, takeFront(rest, added.size));
    copyDeveloperPart(message, rest);
    set = {};
}

// By the profile: what the rows behind the one in front come to. Fields that no row knows stay the device's.
void writeProfileSummary(Rewrite& rewrite, const FitMessage& message, size_t& first)
{
    size_t end = std::min(rewrite.index, rewrite.records.size());
    SummaryFigures figures = summaryFigures(std::span(rewrite.records).subspan(first, end - first), rewrite.fields);
    first = end;
    std::span<uint8_t> whole = copyDeclaredPart(rewrite, message);
    if (whole.empty())
        return;
    bool bigEndian = message.definition->bigEndian();
    auto figureFor = [&](const FieldDefinition& field) {
        std::optional<SummaryFigure> figure = figureOfField(message.globalMessage(), field.number);
        return figure ? figures[*figure] : std::nullopt;
    };
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        if (std::optional<int64_t> figure = figureFor(field))
            writeFigure(fieldOf(whole, offset, field.size), field.baseType, figure, bigEndian);
    });
    if (message.globalMessage() == messageSession && rewrite.options.sportEnabled)
        setSport(message, whole, sportValue(rewrite.options.sportIndex));
    std::span<uint8_t> rest = whole.subspan(1 + message.definition->fieldBytes);
    for (const FieldDefinition& added : rewrite.growths.of(message).fields)
        writeFigure(takeFront(rest, added.size), added.baseType, figureFor(added), bigEndian);
    copyDeveloperPart(message, rest);
}

void writeActivity(Rewrite& rewrite, const FitMessage& message)
{
    std::span<uint8_t> copy = copyMessage(rewrite.out, message);
    forEachField(message, [&](const FieldDefinition& field, size_t offset) {
        if (field.number == activityTotalTimer)
            writeUint32Field(fieldOf(copy, offset, field.size), rewrite.totalTimer, message.definition->bigEndian());
    });
}

void writeDefinition(Rewrite& rewrite, const FitMessage& message)
{
    size_t ownEnd = firstTripleOffset + tripleSize * message.definition->fieldCount;
    const std::vector<FieldDefinition>& added = rewrite.growths.of(message).fields;
    std::span<uint8_t> head = copyBytes(rewrite.out, message.bytes.first(ownEnd));
    if (!head.empty())
        head[fieldCountOffset] = static_cast<uint8_t>(head[fieldCountOffset] + added.size());
    for (const FieldDefinition& field : added) {
        const uint8_t triple[tripleSize] = {field.number, field.size, field.baseType};
        copyBytes(rewrite.out, triple);
    }
    copyBytes(rewrite.out, message.bytes.subspan(ownEnd));
}

void writeKeptRecord(Rewrite& rewrite, const FitMessage& message)
{
    const PlainLayout& layout = rewrite.layouts[message.localType];
    if (&layout != rewrite.run.layout || !layout.isPlain)
        endRun(rewrite.run, rewrite.sums);
    if (layout.isPlain)
        writePlainRecord(rewrite, message, layout);
    else
        writeRecord(rewrite, message);
}

void writeMessage(Rewrite& rewrite, const FitMessage& message)
{
    if (message.isData(messageRecord)) {
        if (isKept(rewrite.records, rewrite.index))
            writeKeptRecord(rewrite, message);
        ++rewrite.index;
        return;
    }
    endRun(rewrite.run, rewrite.sums);
    if (message.isDefinition) {
        rewrite.growths.define(message);
        rewrite.layouts[message.localType] = plainLayoutOf(*message.definition, rewrite.growths.ofRecords().fields);
        writeDefinition(rewrite, message);
        return;
    }
    switch (message.globalMessage()) {
    case messageSession:
        if (rewrite.byProfile)
            writeProfileSummary(rewrite, message, rewrite.firstOfSession);
        else
            writeSummaryMessage(rewrite, message, rewrite.sums.session, analysedSessionFields);
        break;
    case messageLap:
        if (rewrite.byProfile)
            writeProfileSummary(rewrite, message, rewrite.firstOfLap);
        else
            writeSummaryMessage(rewrite, message, rewrite.sums.lap, analysedLapFields);
        break;
    case messageActivity:
        writeActivity(rewrite, message);
        break;
    default:
        markManufacturer(message, copyMessage(rewrite.out, message));
    }
}

// The planned block on its way out. What is not whole yet, and what was written ahead of it, stays in the window.
struct Outlet {
    size_t planned;
    const WritePiece& write;
    std::vector<uint8_t> window = std::vector<uint8_t>(std::min(planned, windowSize));
    FitOutput out = {window};
    size_t handedOver = 0;
    bool taken = true;

    void handOver()
    {
        size_t whole = std::min(out.position, window.size());
        taken = taken && write(std::span(window).first(whole));
        handedOver += out.position;
        std::fill(std::copy(window.begin() + static_cast<std::ptrdiff_t>(whole), window.end(), window.begin()),
                  window.end(), uint8_t{0});
        out.position = 0;
    }
};

// Goes on over the source and hands over what comes of it, in pieces that end with a message.
StatusCode pourAnalysedFit(size_t planned, const FitImage& source, const GpsRecords& records, uint32_t addedFields,
                           const OutputChoice& options, uint32_t totalTimer, const WritePiece& write)
{
    RecordFields fields = recordFieldsOf(source, addedFields);
    bool byProfile = (addedFields & writeByProfile) != 0;
    Outlet outlet = {planned, write};
    Rewrite rewrite = {records, options, byProfile, fields, Growths(addedFields, fields), outlet.out, {}, totalTimer};
    FitWalk walk = startWalk(source);
    FitMessage message;
    WalkStep step = WalkStep::message;
    while (outlet.taken && (step = nextMessage(walk, message)) == WalkStep::message) {
        if (outlet.out.position >= pieceSize)
            outlet.handOver();
        writeMessage(rewrite, message);
    }
    outlet.handOver();
    if (!outlet.taken)
        return fitSaveFailed;
    if (step != WalkStep::end)
        return fitInvalid;
    return outlet.handedOver == planned ? fitOk : fitSizeMismatch;
}

} // namespace

StatusCode planRewrittenSize(FitImage& destination, const FitImage& source, const GpsRecords& records,
                             uint32_t addedFields)
{
    Growths growths(addedFields, recordFieldsOf(source, addedFields));
    size_t size = 0;
    size_t index = 0;
    bool fits = true;
    StatusCode code = walkMessages(source, [&](const FitMessage& message) {
        if (message.isDefinition)
            growths.define(message);
        const Growth& growth = growths.of(message);
        if (message.isDefinition) {
            fits = fits && message.definition->fieldCount + growth.fields.size() <= maxFieldCount;
            size += message.bytes.size() + tripleSize * growth.fields.size();
            return;
        }
        bool dropped = message.isData(messageRecord) && !isKept(records, index);
        if (message.isData(messageRecord))
            ++index;
        if (!dropped)
            size += message.bytes.size() + growth.bytes;
    });
    if (code != fitOk)
        return code;
    if (!fits || size > INT32_MAX)
        return fitSizeMismatch;
    destination.dataSize = static_cast<int32_t>(size);
    return fitOk;
}

StatusCode writeAnalysedFit(FitImage& destination, const FitImage& source, const GpsRecords& records,
                            uint32_t addedFields, const OutputChoice& options, uint32_t totalTimer)
{
    std::vector<uint8_t>& data = destination.data;
    data.clear();
    data.reserve(static_cast<size_t>(destination.dataSize));
    return pourAnalysedFit(static_cast<size_t>(destination.dataSize), source, records, addedFields, options, totalTimer,
                           [&](std::span<const uint8_t> piece) {
                               data.insert(data.end(), piece.begin(), piece.end());
                               return true;
                           });
}

StatusCode makeAnalysedFile(FitImage& destination, const FitImage& source, const GpsRecords& records,
                            uint32_t addedFields, const OutputChoice& options, uint32_t totalTimer)
{
    if (StatusCode code = planRewrittenSize(destination, source, records, addedFields))
        return code;
    if (StatusCode code = writeAnalysedFit(destination, source, records, addedFields, options, totalTimer))
        return code;
    buildFitHeader(destination, source, headerForm(options.convertEnabled, options.fitFormat));
    destination.fileCrc = fitCrc(destination);
    return fitOk;
}

StatusCode saveAnalysedFile(const std::string& path, const FitImage& source, const GpsRecords& records,
                            uint32_t addedFields, const OutputChoice& options, uint32_t totalTimer, Flush flush)
{
    FitImage planned = {};
    if (StatusCode code = planRewrittenSize(planned, source, records, addedFields))
        return code;
    buildFitHeader(planned, source, headerForm(options.convertEnabled, options.fitFormat));
    StatusCode code = fitOk;
    auto make = [&](const WritePiece& write) {
        MessageLengths lengths;
        code = pourAnalysedFit(static_cast<size_t>(planned.dataSize), source, records, addedFields, options, totalTimer,
                               [&](std::span<const uint8_t> piece) { return lengths.walk(piece) && write(piece); });
        return code == fitOk;
    };
    bool written = writeFitFile(planned, path, make, flush) == 0;
    return written || code != fitOk ? code : fitSaveFailed;
}

} // namespace torvane
