// One row of the table for each curve.
#include "report/ride_curves.h"

#include "core/units.h"
#include "gps/loaded_ride.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

namespace torvane {

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

struct Source {
    const ReportedRide& ride;
    uint32_t predicted;
    std::span<const MeasuredRow> measured;
};

struct Curve;

// Points whose rows follow one another.
struct Stretch {
    uint32_t point, row; // the first ones
};

// What the points are told from.
struct Points {
    std::shared_ptr<const void> owner;
    std::span<const GpsRecord> records;
    std::span<const BrakeRecord> brakes;
    std::span<const MeasuredRow> measured;
    uint32_t start = 0; // FIT seconds
    std::vector<const Curve*> curves = {};
    std::vector<Stretch> stretches = {};
    uint32_t count = 0;
};

struct Curve {
    const char* name;
    int scaleGroup; // powers, and brakes, are told apart by eye
    bool (*has)(const Source&);
    double (*value)(const Points&, const GpsRecord&); // null for one of the brakes
    double BrakeRecord::*ofBrakes = nullptr;
};

template <auto flags, uint8_t wanted>
bool has(const Source& source)
{
    return (source.ride.presence.*flags & wanted) != 0;
}

bool always(const Source&)
{
    return true;
}

bool predictsPower(const Source& source)
{
    return (source.predicted & predictedPower) != 0;
}

bool metersBeside(const Source& source)
{
    return predictsPower(source) && !source.measured.empty();
}

bool metersAlone(const Source& source)
{
    return !predictsPower(source) && has<&FieldPresence::powerFlags, presentInRecords>(source);
}

bool hasCadence(const Source& source)
{
    return (source.predicted & predictedCadence) != 0 || has<&FieldPresence::cadenceFlags, eitherInRecords>(source);
}

bool followsBrakes(const Source& source)
{
    return predictsPower(source) && source.ride.settings.detectBraking != 0;
}

double wayOf(const Points&, const GpsRecord& record)
{
    return record.distance / 1000;
}

double minutesOf(const Points& points, const GpsRecord& record)
{
    return (record.timestamp - points.start) / 60.0;
}

double powerOf(const Points&, const GpsRecord& record)
{
    return record.power;
}

// 0 and the marker of FIT are a strap that lost its touch.
double heartRateOf(const Points&, const GpsRecord& record)
{
    constexpr double marker = 255;
    return record.heartRate > 0 && record.heartRate < marker ? record.heartRate : noNumber;
}

// The rows of the meter and of the ride rise alike: the nearest before or at the row is looked for.
double measuredPower(const Points& points, const GpsRecord& record)
{
    auto row = std::ranges::lower_bound(points.measured, record.timestamp, {}, &MeasuredRow::timestamp);
    return row != points.measured.end() && row->timestamp == record.timestamp ? row->power() : noNumber;
}

constexpr Curve curves[] = {
    {"distance(km)", 0, always, wayOf},
    {"time(min)", 0, has<&FieldPresence::timestampFlags, presentInRecords>, minutesOf},
    {"altitude(m)", 0, has<&FieldPresence::altitudeFlags, presentInRecords>,
     [](const Points&, const GpsRecord& r) { return r.altitude; }},
    {"velocity(kph)", 0, always, [](const Points&, const GpsRecord& r) { return r.speed * kphPerMps; }},
    {"predicted power(W)", 1, predictsPower, powerOf},
    {"measured power(W)", 1, metersBeside, measuredPower},
    {"measured power(W)", 1, metersAlone, powerOf},
    {"cadence(rpm)", 0, hasCadence, [](const Points&, const GpsRecord& r) { return r.cadence; }},
    {"heart rate(bpm)", 0, has<&FieldPresence::heartRateFlags, presentInRecords>, heartRateOf},
    {"front brake Cel", 2, followsBrakes, nullptr, &BrakeRecord::frontTemperature},
    {"rear brake Cel", 2, followsBrakes, nullptr, &BrakeRecord::rearTemperature},
};

std::vector<const Curve*> curvesOf(const Source& source)
{
    std::vector<const Curve*> own;
    for (const Curve& curve : curves)
        if (curve.has(source))
            own.push_back(&curve);
    return own;
}

void addPlace(GraphSeries& graph, const GpsRecord& record)
{
    bool placed = record.latitude != 0 || record.longitude != 0; // nobody rides in the gulf of zeros
    graph.latitude.push_back(placed ? record.latitude : noNumber);
    graph.longitude.push_back(placed ? record.longitude : noNumber);
}

size_t rowOf(const Points& points, uint32_t point)
{
    const Stretch& own = *(std::ranges::upper_bound(points.stretches, point, {}, &Stretch::point) - 1);
    return size_t{own.row} + point - own.point;
}

double valueAt(const Points& points, size_t point, size_t series)
{
    const Curve& curve = *points.curves[series];
    size_t row = rowOf(points, static_cast<uint32_t>(point));
    if (curve.value)
        return curve.value(points, points.records[row]);
    return (row < points.brakes.size() ? points.brakes[row] : BrakeRecord{}).*curve.ofBrakes;
}

// The rows in a sector.
void takePoints(Points& points)
{
    bool goesOn = false;
    for (size_t row = 0; row < points.records.size(); ++row) {
        bool taken = points.records[row].sector != 0;
        if (taken && !goesOn)
            points.stretches.push_back({points.count, static_cast<uint32_t>(row)});
        points.count += taken;
        goesOn = taken;
    }
    if (points.count != 0)
        points.start = points.records[points.stretches[0].row].timestamp;
}

} // namespace

GraphSeries rideCurves(const ReportedRide& ride, const CurveRows& rows, uint32_t predicted, bool places)
{
    Source source = {ride, predicted, rows.measured};
    auto points = std::make_shared<Points>(Points{rows.owner, rows.records, ride.brakes, rows.measured});
    points->curves = curvesOf(source);
    takePoints(*points);
    GraphSeries graph;
    constexpr int twoLinesChosen = 3;
    graph.graphKind = twoLinesChosen;
    graph.alongs = points->curves.size() > 1 && points->curves[1]->value == minutesOf ? 2 : 1;
    for (const Curve* curve : points->curves) {
        graph.seriesNames.emplace_back(curve->name);
        graph.scaleGroup.push_back(curve->scaleGroup);
    }
    if (places && has<&FieldPresence::positionFlags, eitherInRecords>(source)) {
        graph.width = graph.width * 3 / 2; // for the map
        for (const GpsRecord& record : rows.records)
            if (record.sector != 0)
                addPlace(graph, record);
    }
    graph.toldPoints = static_cast<int>(points->count);
    graph.told = [=](int point, int series) {
        return valueAt(*points, static_cast<size_t>(point), static_cast<size_t>(series));
    };
    return graph;
}

} // namespace torvane
