// What the kept records of an analysed file add up to, for the session and the lap under way.
// Each operation takes one field of one record into both; those of motion, cadence and power also give the number that
// is written into the record. Here, and not apart, since they are called for each field of each record.
#pragma once

#include "fit/fit_bytes.h"
#include "fit/running_set.h"
#include "gps/gps_record.h"

#include <algorithm>

namespace torvane {

struct AnalysedSums {
    RunningSet session;
    RunningSet lap;
    bool afterGap;             // the record in front of this one was dropped, or there is none
    uint32_t writtenDistance;  // 1/100 m, of the last kept record
    uint32_t writtenTimestamp; // FIT seconds, of the last kept record
};

inline bool isEmpty(const RunningSet& set)
{
    return set.recordCount == 0;
}

template <class Member>
void widen(const RunningSet& set, Member& minimum, Member& maximum, Member value)
{
    minimum = isEmpty(set) ? value : std::min(minimum, value);
    raise(maximum, value);
}

template <class Change>
void bothSets(AnalysedSums& sums, Change&& change)
{
    change(sums.session);
    change(sums.lap);
}

inline uint32_t wholeNumber(double value)
{
    return static_cast<uint32_t>(truncateToInteger(value));
}

// rpm
inline uint32_t sumCadence(AnalysedSums& sums, const GpsRecord& record)
{
    uint8_t cadence = static_cast<uint8_t>(wholeNumber(record.cadence));
    bothSets(sums, [&](RunningSet& set) {
        raise(set.entry.maxCadence, cadence);
        set.cadence += cadence;
    });
    return cadence;
}

inline uint32_t sumSpeed(AnalysedSums& sums, const GpsRecord& record)
{
    uint32_t speed = wholeNumber(record.speed * 1000); // mm/s
    bothSets(sums, [&](RunningSet& set) {
        raise(set.entry.maxSpeed, static_cast<uint16_t>(speed));
        set.speed += static_cast<uint16_t>(speed);
    });
    return speed;
}

// W
inline uint32_t sumPower(AnalysedSums& sums, const GpsRecord& record)
{
    uint32_t power = wholeNumber(record.power);
    bothSets(sums, [&](RunningSet& set) {
        raise(set.entry.maxPower, static_cast<uint16_t>(power));
        set.power += static_cast<uint16_t>(power);
    });
    return power;
}

// The way across a gap does not count.
inline uint32_t sumDistance(AnalysedSums& sums, const GpsRecord& record)
{
    uint32_t distance = wholeNumber(record.distance * 100); // 1/100 m
    bothSets(sums, [&](RunningSet& set) {
        if (isEmpty(set))
            set.entry.totalDistance = 0;
        else if (!sums.afterGap)
            set.entry.totalDistance += distance - sums.writtenDistance;
    });
    sums.writtenDistance = distance;
    return distance;
}

// The time across a gap does not count either.
inline void sumTimestamp(AnalysedSums& sums, uint32_t timestamp)
{
    bothSets(sums, [&](RunningSet& set) {
        set.lastTime = timestamp;
        if (isEmpty(set))
            set.entry.timestamp = set.entry.startTime = timestamp;
        else if (!sums.afterGap)
            set.entry.totalTimer += (timestamp - sums.writtenTimestamp) * 1000;
    });
    sums.writtenTimestamp = timestamp;
}

inline void sumLatitude(AnalysedSums& sums, int32_t latitude)
{
    bothSets(sums, [&](RunningSet& set) {
        set.entry.endLatitude = latitude;
        if (isEmpty(set))
            set.entry.startLatitude = latitude;
    });
}

inline void sumLongitude(AnalysedSums& sums, int32_t longitude)
{
    bothSets(sums, [&](RunningSet& set) {
        set.entry.endLongitude = longitude;
        if (isEmpty(set))
            set.entry.startLongitude = longitude;
    });
}

inline void sumAltitude(AnalysedSums& sums, uint16_t altitude)
{
    bothSets(sums, [&](RunningSet& set) {
        widen(set, set.entry.minAltitude, set.entry.maxAltitude, altitude);
        set.altitude += altitude;
    });
}

inline void sumHeartRate(AnalysedSums& sums, uint8_t heartRate)
{
    bothSets(sums, [&](RunningSet& set) {
        widen(set, set.entry.minHeartRate, set.entry.maxHeartRate, heartRate);
        set.heartRate += heartRate;
    });
}

inline void sumTemperature(AnalysedSums& sums, int8_t temperature)
{
    bothSets(sums, [&](RunningSet& set) {
        raise(set.entry.maxTemperature, temperature);
        set.temperature += temperature;
    });
}

inline void sumCalories(AnalysedSums& sums, uint16_t calories)
{
    bothSets(sums, [&](RunningSet& set) {
        set.entry.totalCalories = static_cast<uint16_t>(set.entry.totalCalories + calories);
    });
}

inline void sumCycles(AnalysedSums& sums, uint8_t cycles)
{
    bothSets(sums, [&](RunningSet& set) { set.entry.totalCycles += cycles; });
}

inline void sumAccuracy(AnalysedSums& sums, uint8_t metres)
{
    bothSets(sums, [&](RunningSet& set) { set.gpsAccuracy += metres; });
}

// Behind all fields of a kept record.
inline void countRecord(AnalysedSums& sums, const GpsRecord& record)
{
    bothSets(sums, [&](RunningSet& set) {
        set.cadenceCount += record.cadence > 0;
        set.powerCount += record.power > 0;
        ++set.recordCount;
    });
}

} // namespace torvane
