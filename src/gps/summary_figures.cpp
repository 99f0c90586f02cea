#include "gps/summary_figures.h"

#include "fit/message_fields.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

// Where sessions and laps keep a figure, and how wide. 0 in `lap` or `session`: not there.
struct FigureRow {
    SummaryFigure figure;
    uint8_t session, lap;
    uint8_t width, baseType;
    uint8_t added; // the field of records with which it is added where it lacks; 0 never
};

constexpr uint8_t unsigned8 = 0x02, unsigned16 = 0x84, signed32 = 0x85, unsigned32 = 0x86, signed8 = 0x01;

constexpr FigureRow figureRows[] = {
    {figureEnd, 253, 253, 4, unsigned32, 0},
    {figureStart, 2, 2, 4, unsigned32, 0},
    {figureStartLatitude, 3, 3, 4, signed32, 0},
    {figureStartLongitude, 4, 4, 4, signed32, 0},
    {figureEndLatitude, 0, 5, 4, signed32, 0},
    {figureEndLongitude, 0, 6, 4, signed32, 0},
    {figureElapsed, 7, 7, 4, unsigned32, 0},
    {figureTimer, 8, 8, 4, unsigned32, 0},
    {figureTimer, 59, 52, 4, unsigned32, 0}, // moving time
    {figureDistance, 9, 9, 4, unsigned32, recordDistance},
    {figureAvgSpeed, 14, 13, 2, unsigned16, recordSpeed},
    {figureMaxSpeed, 15, 14, 2, unsigned16, recordSpeed},
    {figureAvgHeartRate, 16, 15, 1, unsigned8, 0},
    {figureMaxHeartRate, 17, 16, 1, unsigned8, 0},
    {figureMinHeartRate, 64, 63, 1, unsigned8, 0},
    {figureAvgCadence, 18, 17, 1, unsigned8, recordCadence},
    {figureMaxCadence, 19, 18, 1, unsigned8, recordCadence},
    {figureAvgPower, 20, 19, 2, unsigned16, recordPower},
    {figureMaxPower, 21, 20, 2, unsigned16, recordPower},
    {figureNormalisedPower, 34, 33, 2, unsigned16, recordPower},
    {figureWork, 48, 41, 4, unsigned32, recordPower},
    {figureAvgAltitude, 49, 42, 2, unsigned16, 0},
    {figureMaxAltitude, 50, 43, 2, unsigned16, 0},
    {figureMinAltitude, 71, 62, 2, unsigned16, 0},
    {figureAvgTemperature, 57, 50, 1, signed8, 0},
    {figureMaxTemperature, 58, 51, 1, signed8, 0},
};

uint8_t numberIn(const FigureRow& row, uint16_t message)
{
    return message == messageSession ? row.session : row.lap;
}

struct Tally {
    double sum = 0, least = 0, most = 0;
    uint32_t count = 0;

    void add(double value)
    {
        least = count == 0 ? value : std::min(least, value);
        most = count == 0 ? value : std::max(most, value);
        sum += value;
        ++count;
    }
};

std::optional<int64_t> stored(double value)
{
    return std::isfinite(value) ? std::optional<int64_t>(std::llround(value)) : std::nullopt;
}

void storeMean(SummaryFigures& figures, SummaryFigure figure, const Tally& tally)
{
    if (tally.count != 0)
        figures[figure] = stored(tally.sum / tally.count);
}

void storeMost(SummaryFigures& figures, SummaryFigure figure, const Tally& tally)
{
    if (tally.count != 0)
        figures[figure] = stored(tally.most);
}

// Over the kept rows for which it is a number.
template <class Value>
Tally tallyOf(std::span<const GpsRecord> rows, Value&& value)
{
    Tally tally;
    for (const GpsRecord& row : rows)
        if (row.sector != 0 && std::isfinite(value(row)))
            tally.add(value(row));
    return tally;
}

double semicirclesOf(double degrees)
{
    return degrees * (2147483648.0 / 180.0);
}

// First and last kept row: times and places.
void storeEnds(SummaryFigures& figures, std::span<const GpsRecord> rows, const RecordFields& fields)
{
    auto kept = [](const GpsRecord& row) { return row.sector != 0; };
    auto first = std::ranges::find_if(rows, kept);
    if (first == rows.end())
        return;
    const GpsRecord& start = *first;
    const GpsRecord& end = *std::find_if(rows.rbegin(), rows.rend(), kept);
    figures[figureStart] = start.timestamp;
    figures[figureEnd] = end.timestamp;
    figures[figureElapsed] = int64_t{end.timestamp - start.timestamp} * 1000;
    if (!fields[recordLatitude])
        return;
    figures[figureStartLatitude] = stored(semicirclesOf(start.latitude));
    figures[figureStartLongitude] = stored(semicirclesOf(start.longitude));
    figures[figureEndLatitude] = stored(semicirclesOf(end.latitude));
    figures[figureEndLongitude] = stored(semicirclesOf(end.longitude));
}

// A step of more than a second lies open in a prepared ride: neither its time nor its way counts.
void storeMotion(SummaryFigures& figures, std::span<const GpsRecord> rows)
{
    int64_t seconds = 0;
    double metres = 0;
    for (size_t i = 1; i < rows.size(); ++i) {
        bool counts = rows[i - 1].sector != 0 && rows[i].sector != 0 && rows[i].timestamp - rows[i - 1].timestamp == 1;
        seconds += counts;
        metres += counts ? rows[i].distance - rows[i - 1].distance : 0;
    }
    Tally speed = tallyOf(rows, [](const GpsRecord& row) { return row.speed * 1000; });
    figures[figureTimer] = seconds * 1000;
    figures[figureDistance] = stored(metres * 100);
    storeMean(figures, figureAvgSpeed, speed);
    if (seconds != 0)
        figures[figureAvgSpeed] = stored(metres * 1000 / static_cast<double>(seconds));
    storeMost(figures, figureMaxSpeed, speed);
}

// Means over the last 30 rows that have a power; none for less.
std::optional<int64_t> normalisedPower(std::span<const GpsRecord> rows)
{
    constexpr size_t window = 30;
    std::array<double, window> last = {};
    double sum = 0, fourth = 0;
    size_t count = 0;
    for (const GpsRecord& row : rows) {
        if (row.sector == 0 || !std::isfinite(row.power))
            continue;
        double& oldest = last[count++ % window];
        sum += row.power - oldest;
        oldest = row.power;
        if (count >= window)
            fourth += std::pow(std::max(0.0, sum / window), 4);
    }
    if (count < window)
        return std::nullopt;
    return stored(std::pow(fourth / static_cast<double>(count - window + 1), 0.25));
}

void storePower(SummaryFigures& figures, std::span<const GpsRecord> rows)
{
    Tally power = tallyOf(rows, [](const GpsRecord& row) { return row.power; });
    storeMean(figures, figureAvgPower, power);
    storeMost(figures, figureMaxPower, power);
    figures[figureNormalisedPower] = normalisedPower(rows);
    if (power.count != 0)
        figures[figureWork] = stored(power.sum); // each for a second
}

void storeCadence(SummaryFigures& figures, std::span<const GpsRecord> rows)
{
    Tally cadence = tallyOf(rows, [](const GpsRecord& row) { return row.cadence > 0 ? row.cadence : std::nan(""); });
    storeMean(figures, figureAvgCadence, cadence);
    storeMost(figures, figureMaxCadence, cadence);
}

void storeHeartRate(SummaryFigures& figures, std::span<const GpsRecord> rows)
{
    Tally heart = tallyOf(rows, [](const GpsRecord& row) { return row.heartRate; });
    storeMean(figures, figureAvgHeartRate, heart);
    storeMost(figures, figureMaxHeartRate, heart);
    if (heart.count != 0)
        figures[figureMinHeartRate] = stored(heart.least);
}

void storeAltitude(SummaryFigures& figures, std::span<const GpsRecord> rows)
{
    Tally altitude = tallyOf(rows, [](const GpsRecord& row) { return (row.altitude + 500) * 5; });
    storeMean(figures, figureAvgAltitude, altitude);
    storeMost(figures, figureMaxAltitude, altitude);
    if (altitude.count != 0)
        figures[figureMinAltitude] = stored(altitude.least);
}

// The rows hold the file's signed byte without its sign, unless the analysis has given it back.
void storeTemperature(SummaryFigures& figures, std::span<const GpsRecord> rows)
{
    Tally temperature = tallyOf(
        rows, [](const GpsRecord& row) { return row.temperature > 127 ? row.temperature - 256 : row.temperature; });
    storeMean(figures, figureAvgTemperature, temperature);
    storeMost(figures, figureMaxTemperature, temperature);
}

bool defines(const LocalDefinition& definition, uint8_t number)
{
    return std::ranges::any_of(definition.fieldList(),
                               [&](const FieldDefinition& field) { return field.number == number; });
}

bool fits(int64_t figure, size_t bits, bool isSigned)
{
    if (isSigned)
        return figure >= -(int64_t{1} << (bits - 1)) && figure < (int64_t{1} << (bits - 1)) - 1;
    return figure >= 0 && figure < (int64_t{1} << bits) - 1;
}

} // namespace

SummaryFigures summaryFigures(std::span<const GpsRecord> rows, const RecordFields& fields)
{
    SummaryFigures figures = {};
    storeEnds(figures, rows, fields);
    storeMotion(figures, rows);
    if (fields[recordPower])
        storePower(figures, rows);
    if (fields[recordCadence])
        storeCadence(figures, rows);
    if (fields[recordHeartRate])
        storeHeartRate(figures, rows);
    if (fields[recordAltitude])
        storeAltitude(figures, rows);
    if (fields[recordTemperature])
        storeTemperature(figures, rows);
    return figures;
}

std::optional<SummaryFigure> figureOfField(uint16_t message, uint8_t number)
{
    for (const FigureRow& row : figureRows)
        if (numberIn(row, message) == number && number != 0)
            return row.figure;
    return std::nullopt;
}

std::vector<FieldDefinition> lackingSummaryFields(const LocalDefinition& definition, const RecordFields& fields)
{
    std::vector<FieldDefinition> lacking;
    for (const FigureRow& row : figureRows) {
        uint8_t number = numberIn(row, definition.globalMessage);
        if (row.added != 0 && fields[row.added] && !defines(definition, number))
            lacking.push_back({number, row.width, row.baseType});
    }
    return lacking;
}

void writeFigure(std::span<uint8_t> field, uint8_t baseType, std::optional<int64_t> figure, bool bigEndian)
{
    if (field.empty())
        return;
    constexpr uint8_t typeMask = 0x1F, signedTypes[] = {0x01, 0x03, 0x05};
    bool isSigned = std::ranges::find(signedTypes, baseType & typeMask) != std::end(signedTypes);
    size_t bits = std::min<size_t>(8 * field.size(), 56);
    bool known = figure && fits(*figure, bits, isSigned);
    int64_t marker = (int64_t{1} << (isSigned ? bits - 1 : bits)) - 1;
    writeField(field, static_cast<uint64_t>(known ? *figure : marker), bigEndian);
}

} // namespace torvane
