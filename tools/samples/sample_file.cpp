#include "samples/sample_file.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr int enumeration = 0x00, sint8 = 0x01, uint8 = 0x02, uint16 = 0x84, sint32 = 0x85, uint32 = 0x86;
constexpr int fileId = 0, session = 18, lap = 19, record = 20, event = 21, activity = 34;
constexpr int cycling = 2, manual = 0, lapEvent = 9, sessionEvent = 8, activityEvent = 26;
constexpr int timerStart = 0, eventStop = 1, timerStopAll = 4;
constexpr int developmentMaker = 255;

int sizeOf(int baseType)
{
    return baseType < 0x80 ? 1 : baseType == uint16 ? 2 : 4;
}

// A message of one kind: its fields with their values beside each other, so that neither gets out of step.
struct Message {
    std::vector<FitBuilder::Field> fields;
    std::vector<int64_t> values;

    Message& add(int number, int baseType, int64_t value)
    {
        fields.push_back({number, sizeOf(baseType), baseType});
        values.push_back(value);
        return *this;
    }
    Message& add(int number, int baseType, double value)
    {
        return add(number, baseType, static_cast<int64_t>(std::llround(value)));
    }
};

// Each kind has a local type of its own; a definition stands in front of its first message, and of the first with more
// fields.
struct Writer {
    FitBuilder fit = {};
    int64_t clockError = 0;
    struct Kind {
        int number;
        size_t fields;
    };
    std::vector<Kind> defined = {};

    void write(int kind, const Message& message)
    {
        auto found = std::ranges::find(defined, kind, &Kind::number);
        int local = static_cast<int>(found - defined.begin());
        if (found == defined.end())
            found = defined.insert(found, {kind, 0});
        if (found->fields != message.fields.size())
            fit.define(local, kind, message.fields);
        found->fields = message.fields.size();
        fit.message(local, message.values);
    }
    int64_t clock(uint32_t time) const
    {
        return time - clockError;
    }
};

double semicircles(double degrees)
{
    return degrees * 2147483648.0 / 180;
}

double fileAltitude(double metres)
{
    return (metres + 500) * 5;
}

void writeFileId(Writer& writer, uint32_t start)
{
    constexpr int64_t activityType = 4, product = 1;
    writer.write(fileId, Message()
                             .add(0, enumeration, activityType)
                             .add(1, uint16, int64_t(developmentMaker))
                             .add(2, uint16, product)
                             .add(4, uint32, writer.clock(start)));
}

void writeTimerEvent(Writer& writer, uint32_t time, int64_t type)
{
    constexpr int64_t timer = 0;
    writer.write(event,
                 Message().add(253, uint32, writer.clock(time)).add(0, enumeration, timer).add(1, enumeration, type));
}

// How the records of a file are written.
struct RecordForm {
    bool wideFields;
    bool hasPower;   // its fields are defined
    bool powerKnown; // and hold what was measured, not the marker of none
};

void addMotion(Message& message, const GpsRecord& row, bool wideFields)
{
    message.add(5, uint32, row.distance * 100);
    if (wideFields)
        message.add(73, uint32, row.speed * 1000).add(78, uint32, fileAltitude(row.altitude));
    else
        message.add(6, uint16, row.speed * 1000);
}

void writeRecord(Writer& writer, const GpsRecord& row, const RecordForm& form)
{
    Message message;
    message.add(253, uint32, writer.clock(row.timestamp))
        .add(0, sint32, semicircles(row.latitude))
        .add(1, sint32, semicircles(row.longitude));
    if (!form.wideFields)
        message.add(2, uint16, fileAltitude(row.altitude));
    addMotion(message, row, form.wideFields);
    message.add(13, sint8, row.temperature).add(3, uint8, row.heartRate);
    constexpr int64_t noCadence = 0xFF, noPower = 0xFFFF;
    if (form.hasPower && form.powerKnown)
        message.add(4, uint8, row.cadence).add(7, uint16, row.power);
    else if (form.hasPower)
        message.add(4, uint8, noCadence).add(7, uint16, noPower);
    writer.write(record, message);
}

// What a lap and a session tell of their records.
struct Summary {
    const GpsRecord* first;
    const GpsRecord* last;
    int64_t timer = 0; // s with the timer running
    double distance = 0, averageSpeed = 0, maxSpeed = 0;
    double averageHeart = 0, maxHeart = 0, ascent = 0, descent = 0;
    double averagePower = 0, maxPower = 0, averageCadence = 0, maxCadence = 0, temperature = 0;
};

int64_t pausedBetween(const RiddenTrack& track, uint32_t from, uint32_t to)
{
    int64_t seconds = 0;
    for (const DevicePause& pause : track.pauses)
        if (pause.stopped >= from && pause.resumed <= to)
            seconds += pause.resumed - pause.stopped;
    return seconds;
}

template <typename Value>
double meanOf(const Summary& summary, Value value)
{
    double sum = 0;
    for (const GpsRecord* row = summary.first; row <= summary.last; ++row)
        sum += value(*row);
    return sum / static_cast<double>(summary.last - summary.first + 1);
}

// Climbing that a barometer's noise does not feign: only steps of more than a metre count.
void addClimbing(Summary& summary)
{
    double level = summary.first->altitude;
    for (const GpsRecord* row = summary.first; row <= summary.last; ++row) {
        double step = row->altitude - level;
        if (std::abs(step) < 1)
            continue;
        (step > 0 ? summary.ascent : summary.descent) += std::abs(step);
        level = row->altitude;
    }
}

Summary summarise(const RiddenTrack& track, size_t first, size_t last)
{
    Summary summary = {&track.records[first], &track.records[last]};
    uint32_t from = summary.first->timestamp, to = summary.last->timestamp;
    summary.timer = to - from + 1 - pausedBetween(track, from, to);
    summary.distance = summary.last->distance - summary.first->distance;
    summary.averageSpeed = summary.distance / static_cast<double>(summary.timer);
    for (const GpsRecord* row = summary.first; row <= summary.last; ++row) {
        summary.maxSpeed = std::max(summary.maxSpeed, row->speed);
        summary.maxHeart = std::max(summary.maxHeart, row->heartRate);
        summary.maxPower = std::max(summary.maxPower, row->power);
        summary.maxCadence = std::max(summary.maxCadence, row->cadence);
    }
    summary.averageHeart = meanOf(summary, [](const GpsRecord& row) { return row.heartRate; });
    summary.averagePower = meanOf(summary, [](const GpsRecord& row) { return row.power; });
    summary.averageCadence = meanOf(summary, [](const GpsRecord& row) { return row.cadence; });
    summary.temperature = meanOf(summary, [](const GpsRecord& row) { return row.temperature; });
    addClimbing(summary);
    return summary;
}

// Fields 253, 2 to 4, 7 to 9, 254, 0, 1 mean the same in laps and sessions.
Message commonSummary(const Writer& writer, const Summary& summary, int64_t index, int64_t eventNumber)
{
    int64_t elapsed = summary.last->timestamp - summary.first->timestamp + 1;
    Message message;
    message.add(253, uint32, writer.clock(summary.last->timestamp))
        .add(2, uint32, writer.clock(summary.first->timestamp))
        .add(3, sint32, semicircles(summary.first->latitude))
        .add(4, sint32, semicircles(summary.first->longitude))
        .add(7, uint32, elapsed * 1000)
        .add(8, uint32, summary.timer * 1000)
        .add(9, uint32, summary.distance * 100)
        .add(254, uint16, index)
        .add(0, enumeration, eventNumber)
        .add(1, enumeration, int64_t(eventStop));
    return message;
}

void writeLap(Writer& writer, const Summary& summary, int64_t index, bool powerMeter)
{
    Message message = commonSummary(writer, summary, index, lapEvent);
    message.add(5, sint32, semicircles(summary.last->latitude))
        .add(6, sint32, semicircles(summary.last->longitude))
        .add(13, uint16, summary.averageSpeed * 1000)
        .add(14, uint16, summary.maxSpeed * 1000)
        .add(15, uint8, summary.averageHeart)
        .add(16, uint8, summary.maxHeart)
        .add(21, uint16, summary.ascent)
        .add(22, uint16, summary.descent)
        .add(24, enumeration, int64_t(manual))
        .add(25, enumeration, int64_t(cycling));
    if (powerMeter)
        message.add(17, uint8, summary.averageCadence)
            .add(18, uint8, summary.maxCadence)
            .add(19, uint16, summary.averagePower)
            .add(20, uint16, summary.maxPower);
    writer.write(lap, message);
}

void writeSession(Writer& writer, const Summary& summary, int64_t laps, bool powerMeter)
{
    Message message = commonSummary(writer, summary, 0, sessionEvent);
    message.add(5, enumeration, int64_t(cycling))
        .add(14, uint16, summary.averageSpeed * 1000)
        .add(15, uint16, summary.maxSpeed * 1000)
        .add(16, uint8, summary.averageHeart)
        .add(17, uint8, summary.maxHeart)
        .add(22, uint16, summary.ascent)
        .add(23, uint16, summary.descent)
        .add(25, uint16, int64_t(0))
        .add(26, uint16, laps)
        .add(57, sint8, summary.temperature);
    if (powerMeter)
        message.add(18, uint8, summary.averageCadence)
            .add(19, uint8, summary.maxCadence)
            .add(20, uint16, summary.averagePower)
            .add(21, uint16, summary.maxPower);
    writer.write(session, message);
}

void writeActivity(Writer& writer, const Summary& summary)
{
    int64_t end = writer.clock(summary.last->timestamp);
    writer.write(activity, Message()
                               .add(253, uint32, end)
                               .add(0, uint32, summary.timer * 1000)
                               .add(1, uint16, int64_t(1))
                               .add(2, enumeration, int64_t(manual))
                               .add(3, enumeration, int64_t(activityEvent))
                               .add(4, enumeration, int64_t(eventStop))
                               .add(5, uint32, end));
}

// Records of one lap with the events that fall between them.
struct Laps {
    const RiddenTrack& track;
    const DeviceFile& file;
    size_t lapStart = 0, index = 0;
    size_t pause = 0;
    const GpsRecord* written = nullptr; // the last one

    // Sparse recording leaves out what the records around it tell.
    bool isDue(const GpsRecord& row) const
    {
        constexpr double change = 0.7; // m/s
        return !written || row.timestamp - written->timestamp >= file.longestStep ||
               std::abs(row.speed - written->speed) > change;
    }

    RecordForm formOf(const GpsRecord& row) const
    {
        constexpr uint32_t lostFor = 30;
        uint32_t second = row.timestamp - track.records.front().timestamp;
        bool lost = second >= file.meterLost && second - file.meterLost < lostFor;
        return {file.wideFields, file.powerMeter && second >= file.meterFound, !lost};
    }

    bool endsLap(size_t row) const
    {
        if (row + 1 == track.records.size())
            return true;
        return index < file.lapEnds.size() && track.records[row].distance >= file.lapEnds[index];
    }

    void writePause(Writer& writer, const GpsRecord& row)
    {
        if (pause == track.pauses.size() || row.timestamp < track.pauses[pause].resumed)
            return;
        writeTimerEvent(writer, track.pauses[pause].stopped, timerStopAll);
        writeTimerEvent(writer, track.pauses[pause].resumed, timerStart);
        ++pause;
    }

    void writeRow(Writer& writer, size_t row)
    {
        if (file.summaries)
            writePause(writer, track.records[row]);
        if (isDue(track.records[row]) || endsLap(row)) {
            written = &track.records[row];
            writeRecord(writer, *written, formOf(*written));
        }
        if (!endsLap(row))
            return;
        if (file.summaries)
            writeLap(writer, summarise(track, lapStart, row), static_cast<int64_t>(index), file.powerMeter);
        ++index;
        lapStart = row + 1;
    }
};

} // namespace

Bytes activityFile(const RiddenTrack& track, const DeviceFile& file)
{
    Writer writer = {.clockError = file.clockError};
    uint32_t start = track.records.front().timestamp;
    writeFileId(writer, start);
    if (file.summaries)
        writeTimerEvent(writer, start, timerStart);
    Laps laps = {track, file};
    for (size_t row = 0; row < track.records.size(); ++row)
        laps.writeRow(writer, row);
    if (file.summaries) {
        Summary whole = summarise(track, 0, track.records.size() - 1);
        writeTimerEvent(writer, track.records.back().timestamp, timerStopAll);
        writeSession(writer, whole, static_cast<int64_t>(laps.index), file.powerMeter);
        writeActivity(writer, whole);
    }
    return writer.fit.file();
}

} // namespace torvane
