#include "gps/sectors.h"

#include "gps/analysis.h"
#include "gps/track_geometry.h"

#include <cmath>

namespace torvane {

namespace {

constexpr uint32_t longestInterval = 3600; // s

uint32_t secondsBefore(std::span<const GpsRecord> records, size_t i)
{
    return records[i].timestamp - records[i - 1].timestamp;
}

uint32_t smallestInterval(std::span<const GpsRecord> records)
{
    uint32_t smallest = longestInterval;
    for (size_t i = 1; i < records.size() && smallest != 1; ++i) {
        uint32_t step = secondsBefore(records, i);
        if (step < smallest)
            smallest = step;
    }
    return smallest;
}

// Mean speed over the first step that takes time; 0 without any.
double firstSpeed(std::span<const GpsRecord> records)
{
    for (size_t i = 1; i < records.size(); ++i)
        if (uint32_t seconds = secondsBefore(records, i))
            return (records[i].distance - records[i - 1].distance) / seconds;
    return 0;
}

// The nearest row in front of `from` that belongs to a sector loses it.
void excludeLastOf(std::span<GpsRecord> records, size_t from, uint32_t sector)
{
    for (size_t i = from; i-- > 0;) {
        if (records[i].sector == sector) {
            records[i].sector = 0;
            return;
        }
    }
}

} // namespace

void distanceFromPositions(std::span<GpsRecord> records)
{
    if (!records.empty())
        records[0].distance = 0;
    for (size_t i = 1; i < records.size(); ++i) {
        const GpsRecord& last = records[i - 1];
        GpsRecord& record = records[i];
        record.distance =
            last.distance + greatCircleDistance(last.latitude, last.longitude, record.latitude, record.longitude);
    }
}

void speedFromDistance(std::span<GpsRecord> records)
{
    if (records.size() < 2)
        return;
    records[0].speed = firstSpeed(records);
    for (size_t i = 1; i < records.size(); ++i) {
        double last = records[i - 1].speed;
        double speed = 2 * (records[i].distance - records[i - 1].distance) / secondsBefore(records, i) - last;
        records[i].speed = std::isfinite(speed) ? speed : last;
    }
}

bool formSectors(std::span<GpsRecord> records, double thresholdSpeed, uint32_t analysisFlags)
{
    if (records.empty())
        return false;
    if (analysisFlags & analysisMotionFromPosition)
        distanceFromPositions(records);
    if (analysisFlags & (analysisMotionFromPosition | analysisSpeedFromDistance))
        speedFromDistance(records);

    uint32_t interval = smallestInterval(records);
    uint32_t current = records[0].speed >= thresholdSpeed ? 1 : 0;
    uint32_t members = current; // rows of the last sector begun
    records[0].sector = current;
    for (size_t i = 1; i < records.size(); ++i) {
        GpsRecord& record = records[i];
        if (!(record.speed >= thresholdSpeed)) {
            record.sector = 0;
            continue;
        }
        if (records[i - 1].sector == 0 || secondsBefore(records, i) > interval) {
            if (members == 1)
                excludeLastOf(records, i, current); // it stood alone; its number serves again
            else
                current++;
            members = 0;
        }
        record.sector = current;
        members++;
    }
    return current != 0;
}

} // namespace torvane
