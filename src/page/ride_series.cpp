#include "page/ride_series.h"

#include "core/units.h"
#include "model/gear_table.h"
#include "page/power_section.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

struct Source {
    const Model& model;
    const AnsweredRide& ride;
    const std::vector<RiddenRow>& rows;
    std::vector<const GpsRecord*> records = {}; // of the rows
    std::vector<RowPowers> splits = {};         // likewise
};

bool holds(const FieldPresence& presence, uint8_t FieldPresence::*flags)
{
    return (presence.*flags & presentInRecords) != 0;
}

// Values from row and record; the last is how many decimals are told.
struct Column {
    const char *id, *label, *unit;
    int decimals;
    double (*value)(const RiddenRow&, const GpsRecord&);
    uint8_t FieldPresence::*needs = nullptr;
};

constexpr double absent = 0xFF; // of a heart rate, as the device writes it

constexpr Column columns[] = {
    {"altitude", "Altitude", "m", 1, [](const RiddenRow&, const GpsRecord& r) { return r.altitude; },
     &FieldPresence::altitudeFlags},
    {"slope", "Slope", "%", 1, [](const RiddenRow&, const GpsRecord& r) { return r.inclination; },
     &FieldPresence::altitudeFlags},
    {"speed", "Speed", "kph", 1, [](const RiddenRow& r, const GpsRecord&) { return r.speed * kphPerMps; }},
    {"measured", "Measured power", "W", 0,
     [](const RiddenRow& r, const GpsRecord&) { return r.power[measuredFigure]; }},
    {"predicted", "Predicted power", "W", 0,
     [](const RiddenRow& r, const GpsRecord&) { return r.power[predictedFigure]; }},
    {"heartRate", "Heart rate", "bpm", 0,
     [](const RiddenRow&, const GpsRecord& r) {
         return r.heartRate > 0 && r.heartRate < absent ? r.heartRate : noFigure;
     },
     &FieldPresence::heartRateFlags},
};

void addColumn(const Source& source, const Column& column, std::vector<PageSeries>& along)
{
    if (column.needs && !holds(source.ride.prepared.presence, column.needs))
        return;
    PageSeries series = {column.id, column.label, column.unit, column.decimals, {}};
    for (size_t i = 0; i < source.rows.size(); ++i)
        series.values.push_back(column.value(source.rows[i], *source.records[i]));
    along.push_back(std::move(series));
}

void addWay(const Source& source, std::vector<PageSeries>& along)
{
    PageSeries distance = {"distance", "Distance", "km", 3, {}};
    PageSeries time = {"time", "Time", "", 0, {}, true};
    double last = 0;
    for (size_t i = 0; i < source.rows.size(); ++i) {
        last = std::max(last, source.records[i]->distance / 1000);
        distance.values.push_back(last);
        time.values.push_back(source.rows[i].timestamp - source.ride.answer.start);
    }
    along.push_back(std::move(distance));
    along.push_back(std::move(time));
}

// Means over the 30 s around each row, over those of them that have a value.
std::vector<double> meansAround(const std::vector<RiddenRow>& rows, FigureSource source)
{
    constexpr uint32_t half = 15;         // s
    constexpr double roundingRest = 1e-6; // W
    std::vector<double> means;
    means.reserve(rows.size());
    double joules = 0, seconds = 0;
    auto take = [&](const RiddenRow& row, double sign) {
        if (std::isfinite(row.power[source])) {
            joules += sign * row.power[source] * row.seconds;
            seconds += sign * row.seconds;
        }
    };
    size_t first = 0, next = 0;
    for (const RiddenRow& row : rows) {
        while (next < rows.size() && rows[next].timestamp <= row.timestamp + half)
            take(rows[next++], 1);
        while (rows[first].timestamp + half < row.timestamp)
            take(rows[first++], -1);
        // What was added and taken away again leaves a rest, as of -1e-12 W.
        double mean = seconds > 0 ? joules / seconds : noFigure;
        means.push_back(std::fabs(mean) < roundingRest ? 0 : mean);
    }
    return means;
}

void addMeans(const Source& source, std::vector<PageSeries>& along)
{
    if (source.ride.answer.power[measuredFigure])
        along.push_back({"measured30", "Measured, mean of 30 s", "W", 0, meansAround(source.rows, measuredFigure)});
    along.push_back({"predicted30", "Predicted, mean of 30 s", "W", 0, meansAround(source.rows, predictedFigure)});
}

void addCadence(const Source& source, std::vector<PageSeries>& along)
{
    FigureSource of = source.ride.answer.gearSource;
    PageSeries cadence = {"cadence", of == measuredFigure ? "Cadence" : "Predicted cadence", "rpm", 0, {}};
    PageSeries front = {"frontTooth", "Chainring", "t", 0, {}}, rear = {"rearTooth", "Sprocket", "t", 0, {}};
    for (const RiddenRow& row : source.rows) {
        double turns = row.cadence[of];
        bool pedals = turns > 0;
        int gear = pedals ? nearestGear(source.model, ratioAtCadence(source.model, row.speed, turns)) : 0;
        cadence.values.push_back(turns);
        front.values.push_back(pedals ? frontToothOf(source.model, gear) : noFigure);
        rear.values.push_back(pedals ? rearToothOf(source.model, gear) : noFigure);
    }
    for (PageSeries* series : {&cadence, &front, &rear})
        along.push_back(std::move(*series));
}

void addBrakes(const Source& source, std::vector<PageSeries>& along)
{
    if (!source.ride.answer.brakes)
        return;
    PageSeries front = {"frontBrake", "Front brake", "Cel", 0, {}}, rear = {"rearBrake", "Rear brake", "Cel", 0, {}};
    const Analysis& analysis = source.ride.analysis;
    for (size_t i = 0; i < analysis.brakes.size(); ++i) {
        if (analysis.records[i].sector == 0)
            continue;
        front.values.push_back(analysis.brakes[i].frontTemperature);
        rear.values.push_back(analysis.brakes[i].rearTemperature);
    }
    along.push_back(std::move(front));
    along.push_back(std::move(rear));
}

void addSplit(const Source& source, RideSeries& series)
{
    for (size_t sink = 0; sink < powerSinkCount; ++sink) {
        PageSeries part = {powerSinkIds[sink], powerSinkLabels[sink], "W", 0, {}};
        for (size_t i = 0; i < source.rows.size(); ++i) {
            part.values.push_back(source.splits[i].sinks[sink]);
            if (std::isfinite(source.splits[i].sinks[sink]))
                series.kiloJoule[sink] += source.splits[i].sinks[sink] * source.rows[i].seconds / 1000;
        }
        series.along.push_back(std::move(part));
    }
    for (size_t i = 0; i < source.rows.size(); ++i)
        series.motorKiloJoule += source.splits[i].motor * source.rows[i].seconds / 1000;
}

Source sourceOf(const Model& model, const AnsweredRide& ride, RideSeries& series)
{
    Source source = {model, ride, series.rows};
    std::vector<RowPowers> splits = powerSplitOf(model, ride.analysis, ride.prepared.summary);
    bool hasPlaces = (ride.prepared.presence.positionFlags & eitherInRecords) != 0;
    for (size_t i = 0; i < ride.analysis.records.size(); ++i) {
        const GpsRecord& record = ride.analysis.records[i];
        if (record.sector == 0)
            continue;
        source.records.push_back(&record);
        source.splits.push_back(splits[i]);
        series.latitude.push_back(hasPlaces ? record.latitude : noFigure);
        series.longitude.push_back(hasPlaces ? record.longitude : noFigure);
    }
    return source;
}

} // namespace

RideSeries rideSeriesOf(const Model& model, const AnsweredRide& ride)
{
    RideSeries series;
    series.rows = riddenRowsOf(ride.analysis, ride.measured);
    Source source = sourceOf(model, ride, series);
    addWay(source, series.along);
    for (const Column& column : columns)
        addColumn(source, column, series.along);
    addMeans(source, series.along);
    addCadence(source, series.along);
    addBrakes(source, series.along);
    addSplit(source, series);
    return series;
}

} // namespace torvane
