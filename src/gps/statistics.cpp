// The statistics of an analysed track: what the load read out of sessions and laps, told anew from the kept rows.
#include "gps/analysis.h"

#include "fit/fit_bytes.h"

#include <algorithm>

namespace torvane {

namespace {

struct Tally {
    double sum = 0;
    double most = 0; // never below 0
    uint32_t count = 0;

    void add(double value)
    {
        sum += value;
        most = value > most ? value : most;
        count++;
    }
    double mean() const
    {
        return count != 0 ? sum / count : 0;
    }
};

struct TrackTally {
    uint64_t timer = 0;  // s, over steps of the record interval alone
    double distance = 0; // m, over the same steps
    Tally altitude, speed, temperature, heartRate;
    Tally cadence, power;                    // above 0: neither coasting nor missing ones
    Tally brakeForce, frontBrake, rearBrake; // while braking
};

void addBraking(TrackTally& tally, const BrakeRecord& brakes)
{
    if (brakes.force == 0)
        return;
    tally.brakeForce.add(brakes.force);
    tally.frontBrake.add(brakes.frontTemperature);
    tally.rearBrake.add(brakes.rearTemperature);
}

void addFields(TrackTally& tally, const GpsRecord& record)
{
    tally.altitude.add(record.altitude);
    tally.speed.add(record.speed);
    tally.temperature.add(record.temperature);
    tally.heartRate.add(record.heartRate);
    if (record.cadence > 0)
        tally.cadence.add(record.cadence);
    if (record.power > 0)
        tally.power.add(record.power);
}

TrackTally tallyTrack(const GpsRecords& records, const BrakeRecords& brakes, uint32_t interval)
{
    TrackTally tally;
    uint32_t lastTimestamp = 0;
    double lastDistance = 0;
    for (const GpsRecord& record : records) {
        if (record.sector != 0) {
            uint32_t step = record.timestamp - lastTimestamp;
            if (step == interval) {
                tally.timer += step;
                tally.distance += record.distance - lastDistance;
            }
            addFields(tally, record);
        }
        lastTimestamp = record.timestamp;
        lastDistance = record.distance;
    }
    for (size_t i = 0; i < brakes.size(); ++i)
        if (records[i].sector != 0)
            addBraking(tally, brakes[i]);
    return tally;
}

template <class Field>
void store(Field& field, double value)
{
    field = static_cast<Field>(truncateToInteger(value));
}

double semicircles(double degrees)
{
    return 2147483648.0 * degrees / 180;
}

double fitAltitude(double metres)
{
    return (metres + 500) * 5;
}

void storeEnds(FitSummary& summary, const GpsRecords& records)
{
    auto kept = [](const GpsRecord& record) { return record.sector != 0; };
    auto first = std::find_if(records.begin(), records.end(), kept);
    if (first == records.end())
        return;
    summary.startTimestamp = static_cast<int32_t>(first->timestamp);
    store(summary.firstLatitude, semicircles(first->latitude));
    store(summary.firstLongitude, semicircles(first->longitude));
    auto last = std::find_if(records.rbegin(), std::prev(records.rend()), kept);
    if (last == std::prev(records.rend()))
        return; // the first row cannot be the last as well
    summary.endTimestamp = static_cast<int32_t>(last->timestamp);
    store(summary.lastLatitude, semicircles(last->latitude));
    store(summary.lastLongitude, semicircles(last->longitude));
}

void storeMotion(FitSummary& summary, const TrackTally& tally, const GpsRecords& records)
{
    summary.totalTimer = static_cast<uint32_t>(tally.timer * 1000);
    if (tally.timer != 0) {
        store(summary.avgSpeed, tally.distance * 1000 / static_cast<double>(tally.timer));
        store(summary.totalDistance, tally.distance * 100);
    } else {
        store(summary.avgSpeed, tally.speed.count != 0 ? tally.speed.sum * 1000 / tally.speed.count : 0);
        store(summary.totalDistance, records.empty() ? 0 : records.back().distance * 100);
    }
    store(summary.maxSpeed, tally.speed.most * 1000);
}

void storeFields(FitSummary& summary, const TrackTally& tally)
{
    store(summary.avgAltitude, fitAltitude(tally.altitude.mean()));
    store(summary.maxAltitude, fitAltitude(tally.altitude.most));
    store(summary.avgTemperature, tally.temperature.mean());
    store(summary.avgHeartRate, tally.heartRate.mean());
    store(summary.maxHeartRate, tally.heartRate.most);
    store(summary.avgCadence, tally.cadence.mean());
    store(summary.maxCadence, tally.cadence.most);
    store(summary.avgPower, tally.power.mean());
    store(summary.maxPower, tally.power.most);
    summary.avgBrakeForce = tally.brakeForce.mean();
    summary.maxBrakeForce = tally.brakeForce.most;
    summary.avgFrontBrake = tally.frontBrake.mean();
    summary.maxFrontBrake = tally.frontBrake.most;
    summary.avgRearBrake = tally.rearBrake.mean();
    summary.maxRearBrake = tally.rearBrake.most;
}

} // namespace

AnalysedStats analysedStats(const GpsRecords& records, const LoadedRide& ride, const BrakeRecords& brakes)
{
    AnalysedStats stats = {ride.inventory, ride.summary};
    TrackTally tally = tallyTrack(records, brakes, stats.summary.recordInterval);
    storeEnds(stats.summary, records);
    storeMotion(stats.summary, tally, records);
    storeFields(stats.summary, tally);
    if (stats.inventory.compressedTimestampCount == 0) {
        uint32_t kept = tally.speed.count;
        stats.inventory.normalDataCount -= stats.inventory.recordCount - kept;
        stats.inventory.recordCount = kept;
    }
    return stats;
}

} // namespace torvane
