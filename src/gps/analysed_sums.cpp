#include "gps/analysed_sums.h"

#include "fit/fit_bytes.h"

#include <algorithm>

namespace torvane {

namespace {

bool isEmpty(const RunningSet& set)
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

uint32_t wholeNumber(double value)
{
    return static_cast<uint32_t>(truncateToInteger(value));
}

} // namespace

uint32_t sumCadence(AnalysedSums& sums, const GpsRecord& record)
{
    uint8_t cadence = static_cast<uint8_t>(wholeNumber(record.cadence));
    bothSets(sums, [&](RunningSet& set) {
        raise(set.entry.maxCadence, cadence);
        set.cadence += cadence;
    });
    return cadence;
}

uint32_t sumSpeed(AnalysedSums& sums, const GpsRecord& record)
{
    uint32_t speed = wholeNumber(record.speed * 1000); // mm/s
    bothSets(sums, [&](RunningSet& set) {
        raise(set.entry.maxSpeed, static_cast<uint16_t>(speed));
        set.speed += static_cast<uint16_t>(speed);
    });
    return speed;
}

uint32_t sumPower(AnalysedSums& sums, const GpsRecord& record)
{
    uint32_t power = wholeNumber(record.power);
    bothSets(sums, [&](RunningSet& set) {
        raise(set.entry.maxPower, static_cast<uint16_t>(power));
        set.power += static_cast<uint16_t>(power);
    });
    return power;
}

uint32_t sumDistance(AnalysedSums& sums, const GpsRecord& record)
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

void sumTimestamp(AnalysedSums& sums, uint32_t timestamp)
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

void sumLatitude(AnalysedSums& sums, int32_t latitude)
{
    bothSets(sums, [&](RunningSet& set) {
        set.entry.endLatitude = latitude;
        if (isEmpty(set))
            set.entry.startLatitude = latitude;
    });
}

void sumLongitude(AnalysedSums& sums, int32_t longitude)
{
    bothSets(sums, [&](RunningSet& set) {
        set.entry.endLongitude = longitude;
        if (isEmpty(set))
            set.entry.startLongitude = longitude;
    });
}

void sumAltitude(AnalysedSums& sums, uint16_t altitude)
{
    bothSets(sums, [&](RunningSet& set) {
        widen(set, set.entry.minAltitude, set.entry.maxAltitude, altitude);
        set.altitude += altitude;
    });
}

void sumHeartRate(AnalysedSums& sums, uint8_t heartRate)
{
    bothSets(sums, [&](RunningSet& set) {
        widen(set, set.entry.minHeartRate, set.entry.maxHeartRate, heartRate);
        set.heartRate += heartRate;
    });
}

void sumTemperature(AnalysedSums& sums, int8_t temperature)
{
    bothSets(sums, [&](RunningSet& set) {
        raise(set.entry.maxTemperature, temperature);
        set.temperature += temperature;
    });
}

void sumCalories(AnalysedSums& sums, uint16_t calories)
{
    bothSets(sums, [&](RunningSet& set) {
        set.entry.totalCalories = static_cast<uint16_t>(set.entry.totalCalories + calories);
    });
}

void sumCycles(AnalysedSums& sums, uint8_t cycles)
{
    bothSets(sums, [&](RunningSet& set) { set.entry.totalCycles += cycles; });
}

void sumAccuracy(AnalysedSums& sums, uint8_t metres)
{
    bothSets(sums, [&](RunningSet& set) { set.gpsAccuracy += metres; });
}

void countRecord(AnalysedSums& sums, const GpsRecord& record)
{
    bothSets(sums, [&](RunningSet& set) {
        set.cadenceCount += record.cadence > 0;
        set.powerCount += record.power > 0;
        ++set.recordCount;
    });
}

} // namespace torvane
