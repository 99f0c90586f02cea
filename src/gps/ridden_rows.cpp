#include "gps/ridden_rows.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

// Steepest way across a stop that is taken for a road. A height that changes more while the bicycle stands is the
// weather, or a lift.
constexpr double steepestWay = 0.3;

constexpr size_t betweenMarks = 128; // rows

double riseBetween(const GpsRecord& from, const GpsRecord& to, double metres)
{
    double rise = to.altitude - from.altitude;
    bool joined = from.sector == to.sector;
    return joined || std::fabs(rise) <= steepestWay * metres ? rise : 0;
}

double wayBetween(const GpsRecord& from, const GpsRecord& to, uint32_t interval)
{
    return to.timestamp - from.timestamp > interval ? 0 : std::max(0.0, to.distance - from.distance);
}

std::array<double, figureSourceCount> figuresOf(FigureSource source, double figure)
{
    if (source == predictedFigure)
        return {figure, noFigure};
    return {noFigure, figure};
}

} // namespace

bool RiddenWalk::next()
{
    while (ahead < source->records.size()) {
        const GpsRecord& record = source->records[ahead++];
        if (ahead > 1) {
            double metres = wayBetween(*(&record - 1), record, source->interval);
            distance += metres;
            sinceKept += metres;
        }
        if (record.sector != 0) {
            takeRow(record);
            return true;
        }
    }
    return false;
}

// From the last kept record to this one; each figure straight to its place, as a copy would wait until all are written.
void RiddenWalk::takeRow(const GpsRecord& record)
{
    bool joined = last && last->sector == record.sector;
    now.seconds = joined ? record.timestamp - last->timestamp : 0;
    now.metres = joined ? sinceKept : 0;
    if (last)
        now.height += riseBetween(*last, record, sinceKept);
    now.timestamp = record.timestamp;
    now.distance = distance;
    now.speed = record.speed;
    now.power = figuresOf(source->measured.ofPowers, record.power);
    now.cadence = figuresOf(source->measured.ofCadences, record.cadence);
    takeMeasured();
    last = &record;
    sinceKept = 0;
}

void RiddenWalk::takeMeasured()
{
    const std::vector<MeasuredRow>& measured = source->measured.rows;
    while (measuredAhead < measured.size() && measured[measuredAhead].timestamp < now.timestamp)
        ++measuredAhead;
    if (measuredAhead == measured.size() || measured[measuredAhead].timestamp != now.timestamp)
        return;
    now.power[measuredFigure] = measured[measuredAhead].power();
    now.cadence[measuredFigure] = measured[measuredAhead].cadence();
}

RiddenTrack::RiddenTrack(const Analysis& analysis, const Measured& measured)
    : source{analysis.records, analysis.stats.summary.recordInterval, measured}
{
    marks.reserve(source.records.size() / betweenMarks + 1);
    for (RiddenWalk walk(source); walk.next(); ++count)
        if (count % betweenMarks == 0)
            marks.push_back(walk);
}

RiddenWalk RiddenTrack::at(size_t row) const
{
    RiddenWalk walk = marks[row / betweenMarks];
    for (size_t i = 0; i < row % betweenMarks; ++i)
        walk.next();
    return walk;
}

RiddenRows RiddenRows::subspan(size_t row, size_t rows) const
{
    RiddenRows part = *this;
    part.first += row;
    part.count = rows;
    return part;
}

RiddenRows::Iterator RiddenRows::begin() const
{
    Iterator at;
    at.left = count;
    if (count == 0)
        return at;
    if (track)
        at.walk = track->at(first);
    else
        at.table = table + first;
    return at;
}

std::vector<RiddenRow> riddenRowsOf(const Analysis& analysis, const Measured& measured)
{
    RiddenTrack track(analysis, measured);
    std::vector<RiddenRow> rows;
    rows.reserve(track.size());
    for (const RiddenRow& row : RiddenRows(track))
        rows.push_back(row);
    return rows;
}

uint32_t secondsOf(RiddenRows rows)
{
    uint32_t seconds = 0;
    for (const RiddenRow& row : rows)
        seconds += row.seconds;
    return seconds;
}

} // namespace torvane
