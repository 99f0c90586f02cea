#include "report/ride_rows.h"

#include "core/text.h"
#include "core/units.h"
#include "fit/iso_times.h"

#include <cmath>
#include <string>
#include <vector>

namespace torvane {

namespace {

constexpr int fine = 6; // decimals of what is computed

constexpr RowColumn stepColumns[] = {
    {"time_sec", fine},    {"velocity_kph", fine},   {"power_W", fine},       {"torque_Nm", fine}, {"force_kgf", fine},
    {"accele_mpss", fine}, {"distance_m", fine},     {"frontTooth", 0},       {"rearTooth", 0},    {"gearRatio", fine},
    {"cadence_rpm", fine}, {"frontBrake_Cel", fine}, {"rearBrake_Cel", fine},
};

// The temperatures of the brakes are the last two series of a braking's curves.
bool hasBrakes(const RideRun& ride, const GraphSeries* curves)
{
    return curves && ride.found.drive.thrustMode == thrustByBraking && curves->seriesCount() == 5;
}

void writeSteps(RowWriter& rows, const RideRun& ride, const GraphSeries* curves)
{
    bool brakes = hasBrakes(ride, curves);
    double perKiloWatt = ride.found.drive.kiloWattLog != 0 ? 1000 : 1;
    rows.begin(stepColumns);
    for (int i = 0; i < shownRows(ride.log); ++i) {
        const SampleRow& row = ride.log.rows[static_cast<size_t>(i)];
        for (double value : {row.time, row.velocity * kphPerMps, row.power * perKiloWatt, row.torque, row.force,
                             row.accele, row.distance, static_cast<double>(row.frontTooth),
                             static_cast<double>(row.rearTooth), row.gearRatio, row.cadence})
            rows.number(value);
        for (int wheel = 0; wheel < wheelCount; ++wheel) {
            if (brakes && i < curves->pointCount())
                rows.number(curves->value(i, curves->seriesCount() - wheelCount + wheel));
            else
                rows.empty();
        }
        rows.endRow();
    }
}

constexpr RowColumn sectorColumns[] = {
    {"sector", 0},
    {"time_sec", fine},
    {"distance_m", fine},
    {"velocity_kph", fine},
    {"frontBrake_Cel", fine},
    {"rearBrake_Cel", fine},
    {"frontHeat_kJ", fine},
    {"rearHeat_kJ", fine},
    {"frontRadiated_kJ", fine},
    {"rearRadiated_kJ", fine},
    {"frontResidual_kJ", fine},
    {"rearResidual_kJ", fine},
};

void writeSectors(RowWriter& rows, const SampleLog& log)
{
    rows.begin(sectorColumns);
    for (size_t i = 0; i < log.sectors.size(); ++i) {
        const SectorRow& row = log.sectors[i];
        for (double value :
             {static_cast<double>(i + 1), row.time, row.distance, row.velocity * kphPerMps, row.brake[0], row.brake[1],
              row.heat[0], row.heat[1], row.radiate[0], row.radiate[1], row.residual[0], row.residual[1]})
            rows.number(value);
        rows.endRow();
    }
}

void writeCurves(RowWriter& rows, const GraphSeries& curves)
{
    std::vector<RowColumn> columns;
    for (const std::string& name : curves.seriesNames)
        columns.push_back({name.c_str(), fine});
    rows.begin(columns);
    for (int point = 0; point < curves.pointCount(); ++point) {
        for (int series = 0; series < curves.seriesCount(); ++series)
            rows.number(curves.value(point, series));
        rows.endRow();
    }
    rows.finish(); // the names go
}

// Recorded rides

struct RecordColumn {
    RowColumn column;
    double (*value)(const GpsRecord&); // null for one of the brakes
    bool (*has)(const ReportedRide&);
    uint32_t predicted = 0; // the bit with which it is there without being in the file
    double BrakeRecord::*ofBrakes = nullptr;
};

template <auto flags, uint8_t wanted>
bool has(const ReportedRide& ride)
{
    return (ride.presence.*flags & wanted) != 0;
}

bool brakes(const ReportedRide& ride)
{
    return ride.mode == reportAnalysed && (ride.presence.powerFlags & presentInRecords) == 0 &&
           ride.settings.predictPower != 0 && ride.settings.detectBraking != 0;
}

// Speeds and distances are worked out where a file lacks them.
bool always(const ReportedRide&)
{
    return true;
}

constexpr auto hasPosition = has<&FieldPresence::positionFlags, eitherInRecords>;
constexpr auto hasAltitude = has<&FieldPresence::altitudeFlags, presentInRecords>;

// Behind time and sector, in front of what was predicted.
constexpr RecordColumn recordColumns[] = {
    {{"latitude_deg", 7}, [](const GpsRecord& r) { return r.latitude; }, hasPosition},
    {{"longitude_deg", 7}, [](const GpsRecord& r) { return r.longitude; }, hasPosition},
    {{"heading_deg", 2}, [](const GpsRecord& r) { return r.heading; }, hasPosition},
    {{"altitude_m", 2}, [](const GpsRecord& r) { return r.altitude; }, hasAltitude},
    {{"inclination_%", 3}, [](const GpsRecord& r) { return r.inclination; }, hasAltitude},
    {{"speed_kph", 3}, [](const GpsRecord& r) { return r.speed * kphPerMps; }, always},
    {{"distance_m", 2}, [](const GpsRecord& r) { return r.distance; }, always},
    {{"temperature_Cel", 1},
     [](const GpsRecord& r) { return r.temperature; },
     has<&FieldPresence::temperatureFlags, presentInRecords>},
    {{"heartRate_bpm", 0},
     [](const GpsRecord& r) { return r.heartRate; },
     has<&FieldPresence::heartRateFlags, presentInRecords>},
    {{"cadence_rpm", 2},
     [](const GpsRecord& r) { return r.cadence; },
     has<&FieldPresence::cadenceFlags, eitherInRecords>,
     predictedCadence},
    {{"power_W", 3},
     [](const GpsRecord& r) { return r.power; },
     has<&FieldPresence::powerFlags, presentInRecords>,
     predictedPower},
    {{"brakeForce_kgf", 3}, nullptr, brakes, 0, &BrakeRecord::force},
    {{"frontBrake_Cel", 3}, nullptr, brakes, 0, &BrakeRecord::frontTemperature},
    {{"rearBrake_Cel", 3}, nullptr, brakes, 0, &BrakeRecord::rearTemperature},
};

const char* predictedText(uint32_t predicted)
{
    constexpr const char* texts[] = {"", "cadence", "power", "cadence power"};
    return texts[((predicted & predictedCadence) != 0) + 2 * ((predicted & predictedPower) != 0)];
}

constexpr RowColumn comparisonColumns[] = {
    {"start"},
    {"seconds", 0},
    {"firstMean_W", fine},
    {"secondMean_W", fine},
    {"ratio", fine},
    {"firstNormalised_W", fine},
    {"secondNormalised_W", fine},
    {"correlation", fine},
};

} // namespace

void writeRideRows(RowWriter& rows, const RideRun& ride, const GraphSeries* curves)
{
    if (ride.log.bySectors)
        writeSectors(rows, ride.log);
    else if (!ride.log.rows.empty())
        writeSteps(rows, ride, curves);
    else if (curves)
        writeCurves(rows, *curves);
}

void writeRecordRows(RowWriter& rows, const ReportedRide& ride, const GpsRecords& records, uint32_t predicted)
{
    std::vector<RowColumn> columns = {{"time"}, {"sector", 0}};
    std::vector<bool> shown;
    for (const RecordColumn& own : recordColumns) {
        columns.push_back(own.column);
        shown.push_back(own.has(ride) || (own.predicted & predicted) != 0);
    }
    columns.push_back({"predicted"});
    rows.begin(columns);
    bool hasTimes = (ride.presence.timestampFlags & presentInRecords) != 0;
    IsoTimes times;
    for (size_t row = 0; row < records.size() && rows.isTaken(); ++row) {
        const GpsRecord& record = records[row];
        if (record.sector == 0)
            continue;
        rows.text(hasTimes ? times.of(record.timestamp) : std::string_view());
        rows.number(record.sector);
        for (size_t i = 0; i < std::size(recordColumns); ++i) {
            const RecordColumn& own = recordColumns[i];
            if (shown[i])
                rows.number(own.value ? own.value(record) : ride.brakesOf(row).*own.ofBrakes);
            else
                rows.empty();
        }
        rows.text(predictedText(predicted));
        rows.endRow();
    }
    rows.finish(); // the columns go
}

void writeComparisonRows(RowWriter& rows, const RideComparison& comparison)
{
    rows.begin(comparisonColumns);
    IsoTimes times;
    for (const PowerComparison& sector : comparison.sectors) {
        rows.text(times.of(sector.start));
        for (double value : {static_cast<double>(sector.seconds), sector.mean[0], sector.mean[1],
                             sector.mean[1] / sector.mean[0], sector.normalised[0], sector.normalised[1]})
            rows.number(value);
        rows.number(sector.windows >= leastWindows ? sector.correlation : NAN);
        rows.endRow();
    }
}

} // namespace torvane
