// One row of the table for each curve.
#include "report/ride_curves.h"

#include "core/units.h"
#include "gps/loaded_ride.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace torvane {

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

struct Source {
    const ReportedRide& ride;
    uint32_t predicted;
    std::span<const MeasuredRow> measured;
    uint32_t start; // FIT seconds
};

struct Curve {
    const char* name;
    int scaleGroup; // powers, and brakes, are told apart by eye
    bool (*has)(const Source&);
    double (*value)(const Source&, const GpsRecord&); // null for one of the brakes
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

double wayOf(const Source&, const GpsRecord& record)
{
    return record.distance / 1000;
}

double minutesOf(const Source& source, const GpsRecord& record)
{
    return (record.timestamp - source.start) / 60.0;
}

double powerOf(const Source&, const GpsRecord& record)
{
    return record.power;
}

// 0 and the marker of FIT are a strap that lost its touch.
double heartRateOf(const Source&, const GpsRecord& record)
{
    constexpr double marker = 255;
    return record.heartRate > 0 && record.heartRate < marker ? record.heartRate : noNumber;
}

// The rows of the meter and of the ride rise alike: the nearest before or at the row is looked for.
double measuredPower(const Source& source, const GpsRecord& record)
{
    auto row = std::ranges::lower_bound(source.measured, record.timestamp, {}, &MeasuredRow::timestamp);
    return row != source.measured.end() && row->timestamp == record.timestamp ? row->power : noNumber;
}

constexpr Curve curves[] = {
    {"distance(km)", 0, always, wayOf},
    {"time(min)", 0, has<&FieldPresence::timestampFlags, presentInRecords>, minutesOf},
    {"altitude(m)", 0, has<&FieldPresence::altitudeFlags, presentInRecords>,
     [](const Source&, const GpsRecord& r) { return r.altitude; }},
    {"velocity(kph)", 0, always, [](const Source&, const GpsRecord& r) { return r.speed * kphPerMps; }},
    {"predicted power(W)", 1, predictsPower, powerOf},
    {"measured power(W)", 1, metersBeside, measuredPower},
    {"measured power(W)", 1, metersAlone, powerOf},
    {"cadence(rpm)", 0, hasCadence, [](const Source&, const GpsRecord& r) { return r.cadence; }},
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

} // namespace

GraphSeries rideCurves(const ReportedRide& ride, const GpsRecords& records, uint32_t predicted,
                       std::span<const MeasuredRow> measured)
{
    auto first = std::ranges::find_if(records, [](const GpsRecord& r) { return r.sector != 0; });
    Source source = {ride, predicted, measured, first != records.end() ? first->timestamp : 0};
    std::vector<const Curve*> own = curvesOf(source);
    GraphSeries graph;
    constexpr int twoLinesChosen = 3;
    graph.graphKind = twoLinesChosen;
    graph.alongs = own.size() > 1 && own[1]->value == minutesOf ? 2 : 1;
    for (const Curve* curve : own) {
        graph.seriesNames.emplace_back(curve->name);
        graph.scaleGroup.push_back(curve->scaleGroup);
    }
    bool placed = has<&FieldPresence::positionFlags, eitherInRecords>(source);
    if (placed)
        graph.width = graph.width * 3 / 2; // for the map
    graph.values.reserve(records.size() * own.size());
    for (auto record = first; record != records.end(); ++record) {
        if (record->sector == 0)
            continue;
        BrakeRecord brakes = ride.brakesOf(static_cast<size_t>(record - records.begin()));
        for (const Curve* curve : own)
            graph.values.push_back(curve->value ? curve->value(source, *record) : brakes.*curve->ofBrakes);
        if (placed)
            addPlace(graph, *record);
    }
    return graph;
}

} // namespace torvane
