#include "gps/ridden_rows.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

// Steepest way across a stop that is taken for a road. A height that changes more while the bicycle stands is the
// weather, or a lift.
constexpr double steepestWay = 0.3;

struct Ways {
    double distance = 0;  // m since the start
    double sinceKept = 0; // m, since the last kept row
};

void takeStep(Ways& ways, const GpsRecord& from, const GpsRecord& to, uint32_t interval)
{
    if (to.timestamp - from.timestamp > interval)
        return;
    double metres = std::max(0.0, to.distance - from.distance);
    ways.distance += metres;
    ways.sinceKept += metres;
}

double riseBetween(const GpsRecord& from, const GpsRecord& to, double metres)
{
    double rise = to.altitude - from.altitude;
    bool joined = from.sector == to.sector;
    return joined || std::fabs(rise) <= steepestWay * metres ? rise : 0;
}

// From the last kept row to this one.
RiddenRow rowAfter(const GpsRecord& last, const RiddenRow& before, const GpsRecord& record, const Ways& ways)
{
    RiddenRow row;
    bool joined = last.sector == record.sector;
    row.seconds = joined ? record.timestamp - last.timestamp : 0;
    row.metres = joined ? ways.sinceKept : 0;
    row.height = before.height + riseBetween(last, record, ways.sinceKept);
    return row;
}

void takeMeasured(std::span<const MeasuredRow> measured, size_t& next, RiddenRow& row)
{
    while (next < measured.size() && measured[next].timestamp < row.timestamp)
        ++next;
    if (next == measured.size() || measured[next].timestamp != row.timestamp)
        return;
    row.power[measuredFigure] = measured[next].power;
    row.cadence[measuredFigure] = measured[next].cadence;
}

} // namespace

std::vector<RiddenRow> riddenRowsOf(const Analysis& analysis, std::span<const MeasuredRow> measured)
{
    std::vector<RiddenRow> rows;
    const GpsRecords& records = analysis.records;
    const GpsRecord* last = nullptr; // that was kept
    Ways ways;
    size_t next = 0;
    for (size_t i = 0; i < records.size(); ++i) {
        const GpsRecord& record = records[i];
        if (i > 0)
            takeStep(ways, records[i - 1], record, analysis.stats.summary.recordInterval);
        if (record.sector == 0)
            continue;
        RiddenRow row = last ? rowAfter(*last, rows.back(), record, ways) : RiddenRow{};
        row.timestamp = record.timestamp;
        row.distance = ways.distance;
        row.speed = record.speed;
        row.power[predictedFigure] = record.power;
        row.cadence[predictedFigure] = record.cadence;
        takeMeasured(measured, next, row);
        rows.push_back(row);
        last = &record;
        ways.sinceKept = 0;
    }
    return rows;
}

uint32_t secondsOf(RiddenRows rows)
{
    uint32_t seconds = 0;
    for (const RiddenRow& row : rows)
        seconds += row.seconds;
    return seconds;
}

double metresOf(RiddenRows rows)
{
    double metres = 0;
    for (const RiddenRow& row : rows)
        metres += row.metres;
    return metres;
}

} // namespace torvane
