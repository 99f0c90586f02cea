#include "report/fit_figures.h"

#include "core/units.h"
#include "fit/fit_time.h"

#include <limits>
#include <type_traits>

namespace torvane {

namespace {

// Summaries. A value is there where the report tells it.

using Row = FigureRow<ReportedRide>;

template <auto member>
double counted(const ReportedRide& ride)
{
    return static_cast<double>(ride.inventory.*member);
}

template <auto member>
double summed(const ReportedRide& ride)
{
    return static_cast<double>(ride.summary.*member);
}

template <auto member>
double timeOf(const ReportedRide& ride)
{
    return unixTime(static_cast<uint32_t>(ride.summary.*member));
}

template <auto member>
double degrees(const ReportedRide& ride)
{
    return degreesOf(ride.summary.*member);
}

template <auto member>
double metres(const ReportedRide& ride)
{
    return metresOf(ride.summary.*member);
}

template <auto member>
double kph(const ReportedRide& ride)
{
    return ride.summary.*member * kphPerMps / 1000.0;
}

bool hasRecords(const ReportedRide& ride)
{
    return ride.presence.hasRecords != 0;
}

bool isAnalysed(const ReportedRide& ride)
{
    return ride.mode == reportAnalysed;
}

bool hasTimes(const ReportedRide& ride)
{
    return hasRecords(ride) && (ride.presence.timestampFlags & presentInRecords) != 0;
}

// In the first field of a pair, or of one alone; a field that the records lack has no values but its average.
template <auto flags, uint8_t wanted>
bool has(const ReportedRide& ride)
{
    return hasRecords(ride) && (ride.presence.*flags & wanted) == wanted;
}

template <auto flags, uint8_t wanted>
bool hasSecond(const ReportedRide& ride)
{
    return hasRecords(ride) && ((ride.presence.*flags >> secondField) & wanted) == wanted;
}

constexpr uint8_t average = presentInRecords | presentAverage, maximum = presentInRecords | presentMaximum;

template <uint8_t wanted>
bool hasSpeed(const ReportedRide& ride)
{
    return hasRecords(ride) && (isAnalysed(ride) || hasSecond<&FieldPresence::motionFlags, wanted>(ride));
}

bool hasDistance(const ReportedRide& ride)
{
    return hasRecords(ride) && (isAnalysed(ride) || has<&FieldPresence::motionFlags, average>(ride));
}

template <uint8_t wanted>
bool hasCadence(const ReportedRide& ride)
{
    uint8_t flags = ride.presence.cadenceFlags;
    bool measured = (flags & eitherInRecords) != 0 && (flags & wanted) != 0;
    return hasRecords(ride) && (measured || (isAnalysed(ride) && ride.settings.predictCadence != 0));
}

template <uint8_t wanted>
bool hasPower(const ReportedRide& ride)
{
    bool predicted = isAnalysed(ride) && ride.settings.predictPower != 0;
    return hasRecords(ride) && (predicted || has<&FieldPresence::powerFlags, wanted>(ride));
}

bool hasBraking(const ReportedRide& ride)
{
    bool powerPredicted = (ride.presence.powerFlags & presentInRecords) == 0 && ride.settings.predictPower != 0;
    return hasRecords(ride) && isAnalysed(ride) && powerPredicted && ride.settings.detectBraking != 0;
}

bool excludesSlow(const ReportedRide& ride)
{
    return ride.mode != reportLoaded;
}

constexpr Row summaryRows[] = {
    {"fileType", "", counted<&FitInventory::fileType>},
    {"sessionTotal", "", summed<&FitSummary::sessionTotal>},
    {"lapTotal", "", summed<&FitSummary::lapTotal>},
    {"recordCount", "", counted<&FitInventory::recordCount>, hasRecords},
    {"definitionCount", "", counted<&FitInventory::definitionCount>},
    {"normalDataCount", "", counted<&FitInventory::normalDataCount>},
    {"compressedTimestampCount", "", counted<&FitInventory::compressedTimestampCount>},
    {"thresholdSpeed", "kph", [](const ReportedRide& ride) { return ride.settings.thresholdSpeed; }, excludesSlow},
    {"startTimestamp", "sec since 1970", timeOf<&FitSummary::startTimestamp>, hasTimes},
    {"endTimestamp", "sec since 1970", timeOf<&FitSummary::endTimestamp>, hasTimes},
    {"recordInterval", "sec", summed<&FitSummary::recordInterval>, hasTimes},
    {"totalTimer", "sec", [](const ReportedRide& ride) { return ride.summary.totalTimer / 1000.0; },
     has<&FieldPresence::timestampFlags, eitherInRecords>},
    {"firstLatitude", "deg", degrees<&FitSummary::firstLatitude>, has<&FieldPresence::positionFlags, average>},
    {"lastLatitude", "deg", degrees<&FitSummary::lastLatitude>, has<&FieldPresence::positionFlags, maximum>},
    {"firstLongitude", "deg", degrees<&FitSummary::firstLongitude>, hasSecond<&FieldPresence::positionFlags, average>},
    {"lastLongitude", "deg", degrees<&FitSummary::lastLongitude>, hasSecond<&FieldPresence::positionFlags, maximum>},
    {"avgAltitude", "m", metres<&FitSummary::avgAltitude>, has<&FieldPresence::altitudeFlags, average>},
    {"maxAltitude", "m", metres<&FitSummary::maxAltitude>, has<&FieldPresence::altitudeFlags, maximum>},
    {"gpsAccuracy", "m", summed<&FitSummary::gpsAccuracy>, has<&FieldPresence::accuracyFlags, average>},
    {"totalDistance", "km", [](const ReportedRide& ride) { return ride.summary.totalDistance / 100000.0; },
     hasDistance},
    {"avgSpeed", "kph", kph<&FitSummary::avgSpeed>, hasSpeed<average>},
    {"maxSpeed", "kph", kph<&FitSummary::maxSpeed>, hasSpeed<maximum>},
    {"avgTemperature", "Cel", summed<&FitSummary::avgTemperature>,
     has<&FieldPresence::temperatureFlags, presentAverage>},
    {"avgHeartRate", "bpm", summed<&FitSummary::avgHeartRate>, has<&FieldPresence::heartRateFlags, presentAverage>},
    {"maxHeartRate", "bpm", summed<&FitSummary::maxHeartRate>, has<&FieldPresence::heartRateFlags, presentWithBoth>},
    {"avgCadence", "rpm", summed<&FitSummary::avgCadence>, hasCadence<presentAverage>},
    {"maxCadence", "rpm", summed<&FitSummary::maxCadence>, hasCadence<presentMaximum>},
    {"avgPower", "W", summed<&FitSummary::avgPower>, hasPower<average>},
    {"maxPower", "W", summed<&FitSummary::maxPower>, hasPower<maximum>},
    {"normalizedPower", "W", summed<&FitSummary::normalizedPower>,
     has<&FieldPresence::powerFlags, presentWithBoth | presentNormalized>},
    {"avgBrakeForce", "kgf", summed<&FitSummary::avgBrakeForce>, hasBraking},
    {"maxBrakeForce", "kgf", summed<&FitSummary::maxBrakeForce>, hasBraking},
    {"avgFrontBrake", "Cel", summed<&FitSummary::avgFrontBrake>, hasBraking},
    {"maxFrontBrake", "Cel", summed<&FitSummary::maxFrontBrake>, hasBraking},
    {"avgRearBrake", "Cel", summed<&FitSummary::avgRearBrake>, hasBraking},
    {"maxRearBrake", "Cel", summed<&FitSummary::maxRearBrake>, hasBraking},
};

// Sessions and laps. A field that the device has not filled in is 0, or all bits of its type.

using EntryRow = FigureRow<SessionLapEntry>;

template <auto member>
bool isTold(const SessionLapEntry& entry)
{
    using Value = std::remove_cvref_t<decltype(entry.*member)>;
    return entry.*member != 0 && entry.*member != std::numeric_limits<Value>::max();
}

template <auto member>
constexpr EntryRow entryRow(const char* name, const char* unit, double (*value)(const SessionLapEntry&))
{
    return {name, unit, value, isTold<member>};
}

template <auto member>
constexpr EntryRow plainRow(const char* name, const char* unit)
{
    return entryRow<member>(name, unit, [](const SessionLapEntry& e) { return static_cast<double>(e.*member); });
}

template <auto member>
constexpr EntryRow timeRow(const char* name)
{
    return entryRow<member>(name, "sec since 1970",
                            [](const SessionLapEntry& e) { return unixTime(static_cast<uint32_t>(e.*member)); });
}

template <auto member>
constexpr EntryRow secondsRow(const char* name)
{
    return entryRow<member>(name, "sec", [](const SessionLapEntry& e) { return e.*member / 1000.0; });
}

template <auto member>
constexpr EntryRow degreesRow(const char* name)
{
    return entryRow<member>(name, "deg", [](const SessionLapEntry& e) { return degreesOf(e.*member); });
}

template <auto member>
constexpr EntryRow metresRow(const char* name)
{
    return entryRow<member>(name, "m", [](const SessionLapEntry& e) { return metresOf(e.*member); });
}

template <auto member>
constexpr EntryRow kphRow(const char* name)
{
    return entryRow<member>(name, "kph", [](const SessionLapEntry& e) { return e.*member * kphPerMps / 1000.0; });
}

using Entry = SessionLapEntry;

constexpr EntryRow entryRows[] = {
    {"sport", "", [](const Entry& e) { return static_cast<double>(e.sport); }},
    {"recordCount", "", [](const Entry& e) { return static_cast<double>(e.recordCount); }},
    timeRow<&Entry::startTime>("startTime"),
    timeRow<&Entry::timestamp>("timestamp"),
    secondsRow<&Entry::totalElapsed>("totalElapsed"),
    secondsRow<&Entry::totalTimer>("totalTimer"),
    secondsRow<&Entry::totalMovingTime>("totalMovingTime"),
    degreesRow<&Entry::startLatitude>("startLatitude"),
    degreesRow<&Entry::startLongitude>("startLongitude"),
    degreesRow<&Entry::endLatitude>("endLatitude"),
    degreesRow<&Entry::endLongitude>("endLongitude"),
    metresRow<&Entry::avgAltitude>("avgAltitude"),
    metresRow<&Entry::maxAltitude>("maxAltitude"),
    metresRow<&Entry::minAltitude>("minAltitude"),
    entryRow<&Entry::totalDistance>("totalDistance", "km", [](const Entry& e) { return e.totalDistance / 100000.0; }),
    kphRow<&Entry::avgSpeed>("avgSpeed"),
    kphRow<&Entry::maxSpeed>("maxSpeed"),
    plainRow<&Entry::avgTemperature>("avgTemperature", "Cel"),
    plainRow<&Entry::maxTemperature>("maxTemperature", "Cel"),
    plainRow<&Entry::avgHeartRate>("avgHeartRate", "bpm"),
    plainRow<&Entry::maxHeartRate>("maxHeartRate", "bpm"),
    plainRow<&Entry::minHeartRate>("minHeartRate", "bpm"),
    plainRow<&Entry::avgCadence>("avgCadence", "rpm"),
    plainRow<&Entry::maxCadence>("maxCadence", "rpm"),
    plainRow<&Entry::avgPower>("avgPower", "W"),
    plainRow<&Entry::maxPower>("maxPower", "W"),
    plainRow<&Entry::normalizedPower>("normalizedPower", "W"),
    plainRow<&Entry::totalCalories>("totalCalories", "kcal"),
    plainRow<&Entry::totalFatCalories>("totalFatCalories", "kcal"),
};

void addEntries(Figures& figures, const char* name, std::span<const SessionLapEntry> entries)
{
    if (entries.empty())
        return;
    Figures::Group& group = figures.groups.emplace_back(Figures::Group{name, {}});
    for (const SessionLapEntry& entry : entries)
        addFigures(group.items.emplace_back(), entryRows, entry);
}

// Comparisons

using PowerRow = FigureRow<PowerComparison>;

bool hasNormalised(const PowerComparison& powers)
{
    return powers.normalised[0] > 0;
}

constexpr PowerRow powerRows[] = {
    {"start", "sec since 1970", [](const PowerComparison& powers) { return unixTime(powers.start); }},
    {"seconds", "sec", [](const PowerComparison& powers) { return static_cast<double>(powers.seconds); }},
    {"firstMean", "W", [](const PowerComparison& powers) { return powers.mean[0]; }},
    {"secondMean", "W", [](const PowerComparison& powers) { return powers.mean[1]; }},
    {"meanRatio", "", [](const PowerComparison& powers) { return powers.mean[1] / powers.mean[0]; }},
    {"firstNormalised", "W", [](const PowerComparison& powers) { return powers.normalised[0]; }, hasNormalised},
    {"secondNormalised", "W", [](const PowerComparison& powers) { return powers.normalised[1]; }, hasNormalised},
    {"normalisedRatio", "", [](const PowerComparison& powers) { return powers.normalised[1] / powers.normalised[0]; },
     hasNormalised},
    {"correlation", "", [](const PowerComparison& powers) { return powers.correlation; },
     [](const PowerComparison& powers) { return powers.windows >= leastWindows; }},
    {"windows", "", [](const PowerComparison& powers) { return static_cast<double>(powers.windows); }},
};

constexpr FigureRow<RideComparison> aloneRows[] = {
    {"firstAlone", "sec", [](const RideComparison& comparison) { return static_cast<double>(comparison.alone[0]); }},
    {"secondAlone", "sec", [](const RideComparison& comparison) { return static_cast<double>(comparison.alone[1]); }},
    {"window", "sec", [](const RideComparison&) { return static_cast<double>(comparisonWindow); }},
};

// Preparations

using FindingRow = FigureRow<PrepareFindings>;

template <auto member>
double finding(const PrepareFindings& findings)
{
    return findings.*member;
}

template <auto member>
bool isFound(const PrepareFindings& findings)
{
    return findings.*member != 0;
}

template <auto member>
constexpr FindingRow findingRow(const char* name)
{
    return {name, "", finding<member>, isFound<member>};
}

bool hasMeanSpeed(const PrepareFindings& findings)
{
    return findings.seconds != 0 && findings.fields[rideDistance].written;
}

double meanSpeed(const PrepareFindings& findings)
{
    return static_cast<double>(findings.centimetres) / 100 / findings.seconds * kphPerMps;
}

constexpr FindingRow findingRows[] = {
    {"recordsRead", "", finding<&PrepareFindings::recordsRead>},
    {"recordsWritten", "", finding<&PrepareFindings::recordsWritten>},
    findingRow<&PrepareFindings::withoutTimestamp>("withoutTimestamp"),
    findingRow<&PrepareFindings::equalTimestamps>("equalTimestamps"),
    findingRow<&PrepareFindings::backwardTimestamps>("backwardTimestamps"),
    findingRow<&PrepareFindings::leapingTimestamps>("leapingTimestamps"),
    findingRow<&PrepareFindings::compressedTimestamps>("compressedTimestamps"),
    findingRow<&PrepareFindings::stepsFilled>("stepsFilled"),
    findingRow<&PrepareFindings::recordsFilled>("recordsFilled"),
    findingRow<&PrepareFindings::stepsPaused>("stepsPaused"),
    findingRow<&PrepareFindings::stepsLong>("stepsLong"),
    findingRow<&PrepareFindings::positionsOff>("positionsOff"),
    findingRow<&PrepareFindings::positionShifts>("positionShifts"),
    findingRow<&PrepareFindings::enhancedValues>("enhancedValues"),
    findingRow<&PrepareFindings::summaryEnhanced>("summaryEnhanced"),
    findingRow<&PrepareFindings::summaryEmpty>("summaryEmpty"),
    findingRow<&PrepareFindings::summaryMeasured>("summaryMeasured"),
    findingRow<&PrepareFindings::messagesUndefined>("messagesUndefined"),
    findingRow<&PrepareFindings::recordDefinitions>("recordDefinitions"),
    {"definitions", "", finding<&PrepareFindings::definitions>},
    {"definitionsWritten", "", finding<&PrepareFindings::definitionsWritten>},
    {"messagesPassed", "", finding<&PrepareFindings::messagesPassed>},
    {"averageSpeed", "kph", meanSpeed, hasMeanSpeed},
    {"seconds", "sec", finding<&PrepareFindings::seconds>, hasMeanSpeed},
    {"deviceSpeed", "kph", [](const PrepareFindings& findings) { return findings.deviceSpeed * 0.0036; },
     isFound<&PrepareFindings::deviceSpeed>},
};

// By field of the ride: filled in by its neighbours, and where those are too far.
constexpr FigureRow<FieldFindings> fieldRows[] = {
    {"bridged", "", [](const FieldFindings& field) { return static_cast<double>(field.bridged); }},
    {"settled", "", [](const FieldFindings& field) { return static_cast<double>(field.settled); }},
};

void addFieldFigures(FigureList& list, size_t field, const FieldFindings& findings)
{
    std::string name = rideFields[field].name;
    for (const FigureRow<FieldFindings>& row : fieldRows)
        if (double count = row.value(findings); count != 0)
            addFigure(list, name + " " + row.name, row.unit, count);
}

} // namespace

Figures summaryFigures(const ReportedRide& ride)
{
    Figures figures;
    addFigures(figures.values, summaryRows, ride);
    addEntries(figures, "sessions", ride.sessions);
    addEntries(figures, "laps", ride.laps);
    return figures;
}

std::vector<FigureInfo> summaryFigureInfos()
{
    std::vector<FigureInfo> infos;
    addInfos(infos, summaryRows);
    addInfos(infos, entryRows, "sessions");
    addInfos(infos, entryRows, "laps");
    return infos;
}

Figures comparisonFigures(const RideComparison& comparison)
{
    Figures figures;
    addFigures(figures.values, powerRows, comparison.whole);
    addFigures(figures.values, aloneRows, comparison);
    Figures::Group sectors = {"sectors", {}};
    for (const PowerComparison& sector : comparison.sectors)
        addFigures(sectors.items.emplace_back(), powerRows, sector);
    figures.groups.push_back(std::move(sectors));
    return figures;
}

std::vector<FigureInfo> comparisonFigureInfos()
{
    std::vector<FigureInfo> infos;
    addInfos(infos, powerRows);
    addInfos(infos, aloneRows);
    addInfos(infos, powerRows, "sectors");
    return infos;
}

void addPreparationFigures(Figures& figures, const PrepareFindings& findings)
{
    addFigures(figures.values, findingRows, findings);
    for (size_t field = 0; field < rideFieldCount; ++field)
        addFieldFigures(figures.values, field, findings.fields[field]);
}

std::vector<FigureInfo> preparationFigureInfos()
{
    std::vector<FigureInfo> infos;
    addInfos(infos, findingRows);
    return infos;
}

} // namespace torvane
