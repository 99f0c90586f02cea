#include "gps/plain_records.h"

#include <algorithm>

namespace torvane {

namespace {

struct PlainRow {
    PlainField field;
    RecordFieldNumber number;
    uint8_t width;
};

constexpr PlainRow plainRows[] = {
    {plainLatitude, recordLatitude, 4},
    {plainLongitude, recordLongitude, 4},
    {plainAltitude, recordAltitude, 2},
    {plainHeartRate, recordHeartRate, 1},
    {plainTemperature, recordTemperature, 1},
    {plainCycles, recordCycles, 1},
    {plainAccuracy, recordAccuracy, 1},
    {plainCalories, recordCalories, 2},
    {plainTimestamp, recordTimestamp, 4},
    {plainCadence, recordCadence, 1},
    {plainDistance, recordDistance, 4},
    {plainSpeed, recordSpeed, 2},
    {plainPower, recordPower, 2},
};

// False where it is not as FIT has it, or is there already.
bool takeField(PlainLayout& layout, const FieldDefinition& field, uint32_t place)
{
    const PlainRow* row = std::ranges::find(plainRows, field.number, &PlainRow::number);
    if (row == std::end(plainRows))
        return true;
    if (field.size != row->width || layout.has(row->field))
        return false;
    layout.place[row->field] = place;
    return true;
}

void addPlaces(const PlainRun& run, bool first, SessionLapEntry& entry)
{
    if (run.layout->has(plainLatitude)) {
        entry.endLatitude = run.endLatitude;
        entry.startLatitude = first ? run.startLatitude : entry.startLatitude;
    }
    if (run.layout->has(plainLongitude)) {
        entry.endLongitude = run.endLongitude;
        entry.startLongitude = first ? run.startLongitude : entry.startLongitude;
    }
}

void addExtremes(const PlainRun& run, bool first, SessionLapEntry& entry)
{
    if (run.layout->has(plainAltitude))
        entry.minAltitude = first ? run.minAltitude : std::min(entry.minAltitude, run.minAltitude);
    if (run.layout->has(plainHeartRate))
        entry.minHeartRate = first ? run.minHeartRate : std::min(entry.minHeartRate, run.minHeartRate);
    raise(entry.maxAltitude, run.maxAltitude);
    raise(entry.maxHeartRate, run.maxHeartRate);
    raise(entry.maxTemperature, run.maxTemperature);
    raise(entry.maxCadence, run.maxCadence);
    raise(entry.maxSpeed, run.maxSpeed);
    raise(entry.maxPower, run.maxPower);
}

void addSteps(const PlainRun& run, bool first, RunningSet& set)
{
    if (run.layout->has(plainDistance))
        set.entry.totalDistance = run.distance + (first ? 0 : set.entry.totalDistance + run.stepBefore);
    if (!run.layout->has(plainTimestamp))
        return;
    set.lastTime = run.lastTime;
    set.entry.totalTimer += (run.seconds + (first ? 0 : run.secondsBefore)) * 1000;
    if (first)
        set.entry.timestamp = set.entry.startTime = run.startTime;
}

void addSums(const PlainRun& run, RunningSet& set)
{
    set.altitude += run.altitude;
    set.heartRate += run.heartRate;
    set.temperature += run.temperature;
    set.cadence += run.cadence;
    set.speed += run.speed;
    set.power += run.power;
    set.gpsAccuracy += run.accuracy;
    set.entry.totalCycles += run.cycles;
    set.entry.totalCalories = static_cast<uint16_t>(set.entry.totalCalories + run.calories);
    set.cadenceCount += run.cadenceCount;
    set.powerCount += run.powerCount;
    set.recordCount += run.count;
}

} // namespace

PlainLayout plainLayoutOf(const LocalDefinition& definition, std::span<const FieldDefinition> added)
{
    PlainLayout layout;
    uint32_t place = 1; // behind the header byte
    bool plain = !definition.bigEndian();
    for (const FieldDefinition& field : definition.fieldList()) {
        plain = plain && takeField(layout, field, place);
        place += field.size;
    }
    for (const FieldDefinition& field : added) {
        bool goesAstray = field.number == recordDistance; // it is written elsewhere
        plain = plain && !goesAstray && takeField(layout, field, place);
        place += field.size;
    }
    layout.isPlain = plain;
    return layout;
}

void endRun(PlainRun& run, AnalysedSums& sums)
{
    if (run.count == 0)
        return;
    bothSets(sums, [&](RunningSet& set) {
        bool first = isEmpty(set);
        addPlaces(run, first, set.entry);
        addExtremes(run, first, set.entry);
        addSteps(run, first, set);
        addSums(run, set);
    });
    run = {};
}

} // namespace torvane
