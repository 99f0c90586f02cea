// Records of an analysed file whose definition is like most: what the analysis writes or sums up stands there once,
// little-endian and as wide as FIT has it. Such a record needs no look at its definition, and a run of them is summed
// up once for the session and the lap under way. Here, and not apart, since it is done for each record.
#pragma once

#include "fit/message_fields.h"
#include "gps/analysed_sums.h"

#include <array>
#include <limits>

namespace torvane {

enum PlainField : uint8_t {
    plainLatitude,
    plainLongitude,
    plainAltitude,
    plainHeartRate,
    plainTemperature,
    plainCycles,
    plainAccuracy,
    plainCalories,
    plainTimestamp,
    // Written from the rows
    plainCadence,
    plainDistance,
    plainSpeed,
    plainPower,
    plainFieldCount
};

// Where the fields of a record lie in its message; 0 for none.
struct PlainLayout {
    bool isPlain = false;
    std::array<uint32_t, plainFieldCount> place = {};

    bool has(PlainField field) const
    {
        return place[field] != 0;
    }
};

// Of a definition of records that gains these fields.
PlainLayout plainLayoutOf(const LocalDefinition& definition, std::span<const FieldDefinition> added);

// What a run of kept records of one layout adds up to.
struct PlainRun {
    const PlainLayout* layout = nullptr;
    uint32_t count = 0, cadenceCount = 0, powerCount = 0;
    int32_t startLatitude = 0, startLongitude = 0, endLatitude = 0, endLongitude = 0;
    uint16_t minAltitude = UINT16_MAX, maxAltitude = 0, maxSpeed = 0, maxPower = 0;
    uint8_t minHeartRate = UINT8_MAX, maxHeartRate = 0, maxCadence = 0;
    int8_t maxTemperature = INT8_MIN;
    uint64_t altitude = 0, heartRate = 0, cadence = 0, speed = 0, power = 0, accuracy = 0;
    int64_t temperature = 0;
    uint32_t cycles = 0, calories = 0;
    uint32_t startTime = 0, lastTime = 0;
    // The step that leads to the first record counts for a sum that has records in front of it.
    uint32_t stepBefore = 0, distance = 0; // 1/100 m
    uint32_t secondsBefore = 0, seconds = 0;
};

// What is written of a record; 0 where it has no such field.
struct WrittenNumbers {
    uint32_t cadence = 0, distance = 0, speed = 0, power = 0;
};

inline void sumPlaces(PlainRun& run, const PlainLayout& layout, const uint8_t* message)
{
    auto positionAt = [&](PlainField field) {
        return static_cast<int32_t>(readUint32({message + layout.place[field], 4}, 0, false));
    };
    if (layout.has(plainLatitude))
        run.endLatitude = positionAt(plainLatitude);
    if (layout.has(plainLongitude))
        run.endLongitude = positionAt(plainLongitude);
    if (run.count == 0) {
        run.startLatitude = run.endLatitude;
        run.startLongitude = run.endLongitude;
    }
}

inline void sumMeasured(PlainRun& run, const PlainLayout& layout, const uint8_t* message)
{
    auto wordAt = [&](PlainField field) { return readUint16({message + layout.place[field], 2}, 0, false); };
    if (layout.has(plainAltitude)) {
        uint16_t altitude = wordAt(plainAltitude);
        run.minAltitude = std::min(run.minAltitude, altitude);
        run.maxAltitude = std::max(run.maxAltitude, altitude);
        run.altitude += altitude;
    }
    if (layout.has(plainHeartRate)) {
        uint8_t heartRate = message[layout.place[plainHeartRate]];
        run.minHeartRate = std::min(run.minHeartRate, heartRate);
        run.maxHeartRate = std::max(run.maxHeartRate, heartRate);
        run.heartRate += heartRate;
    }
    if (layout.has(plainTemperature)) {
        int8_t temperature = static_cast<int8_t>(message[layout.place[plainTemperature]]);
        run.maxTemperature = std::max(run.maxTemperature, temperature);
        run.temperature += temperature;
    }
    if (layout.has(plainCycles))
        run.cycles += message[layout.place[plainCycles]];
    if (layout.has(plainAccuracy))
        run.accuracy += message[layout.place[plainAccuracy]];
    if (layout.has(plainCalories))
        run.calories += wordAt(plainCalories);
}

inline void sumWritten(PlainRun& run, const WrittenNumbers& written)
{
    run.maxCadence = std::max(run.maxCadence, static_cast<uint8_t>(written.cadence));
    run.cadence += static_cast<uint8_t>(written.cadence);
    run.maxSpeed = std::max(run.maxSpeed, static_cast<uint16_t>(written.speed));
    run.speed += static_cast<uint16_t>(written.speed);
    run.maxPower = std::max(run.maxPower, static_cast<uint16_t>(written.power));
    run.power += static_cast<uint16_t>(written.power);
}

// Distance and time; those across a gap do not count.
inline void sumSteps(PlainRun& run, const PlainLayout& layout, const uint8_t* message, uint32_t distance,
                     AnalysedSums& sums)
{
    if (layout.has(plainDistance)) {
        (run.count == 0 ? run.stepBefore : run.distance) += sums.afterGap ? 0 : distance - sums.writtenDistance;
        sums.writtenDistance = distance;
    }
    if (layout.has(plainTimestamp)) {
        run.lastTime = readUint32({message + layout.place[plainTimestamp], 4}, 0, false);
        run.startTime = run.count == 0 ? run.lastTime : run.startTime;
        (run.count == 0 ? run.secondsBefore : run.seconds) += sums.afterGap ? 0 : run.lastTime - sums.writtenTimestamp;
        sums.writtenTimestamp = run.lastTime;
    }
}

inline void sumPlainRecord(PlainRun& run, const PlainLayout& layout, const uint8_t* message, const GpsRecord& record,
                           const WrittenNumbers& written, AnalysedSums& sums)
{
    sumPlaces(run, layout, message);
    sumMeasured(run, layout, message);
    sumWritten(run, written);
    sumSteps(run, layout, message, written.distance, sums);
    run.cadenceCount += record.cadence > 0;
    run.powerCount += record.power > 0;
    ++run.count;
}

// Adds the run to session and lap, and starts a new one.
void endRun(PlainRun& run, AnalysedSums& sums);

} // namespace torvane
