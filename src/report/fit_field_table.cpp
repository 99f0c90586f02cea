// The table of a track's records, one row for each record in a sector.
#include "core/units.h"
#include "report/fit_report.h"

#include "core/parameter_block.h"
#include "core/progress.h"
#include "core/screens.h"
#include "core/text.h"
#include "report/report_text.h"

#include <cmath>
#include <vector>

namespace torvane {

namespace {

// What decides which columns a table has.
struct ColumnChoice {
    FieldPresence presence;
    bool cadence;
    bool power;
    bool braking; // besides power
};

ColumnChoice chooseColumns(const ReportedRide& ride, uint32_t predicted)
{
    const FieldPresence& p = ride.presence;
    ColumnChoice choice = {};
    choice.presence = p;
    choice.cadence = (p.cadenceFlags & presentInRecords) != 0 || (predicted & predictedCadence) != 0;
    choice.power = (p.powerFlags & presentInRecords) != 0 || (predicted & predictedPower) != 0;
    choice.braking = choice.power && (p.powerFlags & presentInRecords) == 0 && ride.settings.detectBraking;
    return choice;
}

struct Column {
    const char* header;
    const char* units;
    int decimals;
    bool (*present)(const ColumnChoice&);
    double (*value)(const GpsRecord&); // null for one of the brakes
    double BrakeRecord::*ofBrakes = nullptr;
};

bool hasHeading(const ColumnChoice& c)
{
    return (c.presence.positionFlags & eitherInRecords) != 0;
}
bool hasAltitude(const ColumnChoice& c)
{
    return (c.presence.altitudeFlags & presentInRecords) != 0;
}
bool hasSpeed(const ColumnChoice& c)
{
    return (c.presence.motionFlags & secondInRecords) != 0;
}
bool hasDistance(const ColumnChoice& c)
{
    return (c.presence.motionFlags & presentInRecords) != 0;
}
bool hasTemperature(const ColumnChoice& c)
{
    return (c.presence.temperatureFlags & presentInRecords) != 0;
}
bool hasCadence(const ColumnChoice& c)
{
    return c.cadence;
}
bool hasPower(const ColumnChoice& c)
{
    return c.power;
}
bool hasBraking(const ColumnChoice& c)
{
    return c.braking;
}

// Behind the sector and the time of day. Present by what the file has, not by what the analysis has found.
constexpr Column columns[] = {
    {"heading", "degree", 1, hasHeading, [](const GpsRecord& r) { return r.heading; }},
    {"altitude", "m", 1, hasAltitude, [](const GpsRecord& r) { return r.altitude; }},
    {"inclinat", "%", 1, hasAltitude, [](const GpsRecord& r) { return r.inclination; }},
    {"speed", "kph", 1, hasSpeed, [](const GpsRecord& r) { return r.speed * kphPerMps; }},
    {"distance", "km", 3, hasDistance, [](const GpsRecord& r) { return r.distance / 1000; }},
    {"temperat", "Cel", 1, hasTemperature, [](const GpsRecord& r) { return r.temperature; }},
    {"cadence", "rpm", 1, hasCadence, [](const GpsRecord& r) { return r.cadence; }},
    {"power", "W", 1, hasPower, [](const GpsRecord& r) { return r.power; }},
    {"brake", "kgf", 3, hasBraking, nullptr, &BrakeRecord::force},
    {"f.brake", "celsius", 3, hasBraking, nullptr, &BrakeRecord::frontTemperature},
    {" -friction", "Jule", 3, hasBraking, nullptr, &BrakeRecord::frontFriction},
    {" -radiate", "Jule", 3, hasBraking, nullptr, &BrakeRecord::frontRadiate},
    {"r.brake", "celsius", 3, hasBraking, nullptr, &BrakeRecord::rearTemperature},
    {" -friction", "Jule", 3, hasBraking, nullptr, &BrakeRecord::rearFriction},
    {" -radiate", "Jule", 3, hasBraking, nullptr, &BrakeRecord::rearRadiate},
};

struct Table {
    bool timestamps;
    std::vector<Column> columns;
};

Table makeTable(const ReportedRide& ride, uint32_t predicted)
{
    ColumnChoice choice = chooseColumns(ride, predicted);
    Table table = {(choice.presence.timestampFlags & presentInRecords) != 0, {}};
    for (const Column& column : columns)
        if (column.present(choice))
            table.columns.push_back(column);
    return table;
}

// The two rows above the data.
void appendHeadRow(std::string& text, const Table& table, const char* sector, const char* time,
                   const char* Column::*title)
{
    appendFormat(text, "\t%6s", sector);
    if (table.timestamps)
        appendFormat(text, ",%10s", time);
    for (const Column& column : table.columns)
        appendFormat(text, ",%9s", column.*title);
    text += '\n';
}

// What no meter gave has no figure.
void appendValue(std::string& text, double value, int decimals)
{
    if (std::isnan(value))
        appendFormat(text, "%9s", "-");
    else
        appendFixed(text, value, 9, decimals);
}

void appendRow(std::string& text, const Table& table, const GpsRecord& record, const BrakeRecord& brakes)
{
    text += '\t';
    appendInteger(text, static_cast<int32_t>(record.sector), 6);
    if (table.timestamps) {
        text += ",  ";
        appendTimeOfDay(text, record.timestamp);
    }
    for (const Column& column : table.columns) {
        text += ',';
        appendValue(text, column.value ? column.value(record) : brakes.*column.ofBrakes, column.decimals);
    }
    text += '\n';
}

} // namespace

void tellFields(const ReportedRide& ride, const GpsRecords& records, uint32_t predicted, const TakeText& take,
                Progress* progress)
{
    constexpr uint32_t smoothed = 1;
    Table table = makeTable(ride, predicted);
    std::string text = (ride.analysisFlags & smoothed) != 0
                           ? "\n remarkable fields data due to outlier rejection and smoothing\n"
                           : "\n remarkable fields data\n";
    text += '\n';
    appendHeadRow(text, table, "sector", "timestamp", &Column::header);
    appendHeadRow(text, table, "", "UTC", &Column::units);
    for (size_t i = 0; i < records.size(); ++i) {
        if (records[i].sector == 0)
            continue;
        appendRow(text, table, records[i], ride.brakesOf(i));
        if (!tellWhenLarge(take, text))
            return;
        reportProgress(progress, static_cast<int>(100 * i / records.size()));
    }
    take(text);
}

void reportFields(Screens& screens, const ReportedRide& ride, const GpsRecords& records, uint32_t predicted,
                  Progress* progress)
{
    auto append = [&](std::string_view text) {
        screens.appendText(Pane::lower, text);
        return true;
    };
    tellFields(ride, records, predicted, append, progress);
}

} // namespace torvane
