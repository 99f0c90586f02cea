// Averages of a session or lap that is being written.
#include "fit/running_set.h"

#include "fit/fit_bytes.h"

namespace torvane {

namespace {

uint64_t mean(uint64_t sum, uint32_t count)
{
    return count == 0 ? sum : sum / count;
}

int64_t signedMean(int64_t sum, uint32_t count)
{
    return count == 0 ? sum : sum / static_cast<int64_t>(count);
}

// mm/s from 1/100 m and ms. The first product wraps at 32 bits, from 42.95 km on: analysed files have always had it so.
uint16_t averageSpeed(const RunningSet& set)
{
    const SessionLapEntry& entry = set.entry;
    if (entry.totalTimer == 0)
        return static_cast<uint16_t>(mean(set.speed, set.recordCount));
    uint32_t wrapped = entry.totalDistance * uint32_t{1000};
    return static_cast<uint16_t>(truncateToInteger(wrapped * 1000.0 / (entry.totalTimer * 100.0)));
}

} // namespace

void finaliseSessionLap(RunningSet& set)
{
    SessionLapEntry& entry = set.entry;
    entry.avgAltitude = static_cast<uint16_t>(mean(set.altitude, set.recordCount));
    entry.avgHeartRate = static_cast<uint8_t>(mean(set.heartRate, set.recordCount));
    entry.gpsAccuracy = static_cast<uint8_t>(mean(set.gpsAccuracy, set.recordCount));
    entry.avgTemperature = static_cast<int8_t>(signedMean(set.temperature, set.recordCount));
    entry.avgSpeed = averageSpeed(set);
    entry.avgCadence = static_cast<uint8_t>(mean(set.cadence, set.cadenceCount));
    entry.avgPower = static_cast<uint16_t>(mean(set.power, set.powerCount));
}

} // namespace torvane
