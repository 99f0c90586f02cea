// The summary of a FIT file: what it holds, and a line for each field of its records that matters.
#include "core/parameter_block.h"
#include "core/screens.h"
#include "core/text.h"
#include "core/units.h"
#include "fit/fit_types.h"
#include "report/fit_report.h"
#include "report/report_text.h"
#include "report/time_text.h"

namespace torvane {

std::string sportsText(const FitInventory& inventory, const FitSummary& summary)
{
    bool bySessions = summary.sessionTotal != 0;
    size_t total = bySessions ? summary.sessionTotal : summary.lapTotal;
    if (total == 0)
        return "\tsport type(workout code): not defined cause no session message\n";
    const std::vector<uint8_t>& sports = bySessions ? inventory.sessionSport : inventory.lapSport;
    std::string text = "\tsport type (workout)\t: ";
    for (size_t i = 0; i < std::min(total, sports.size()); ++i) {
        text += i == 0 ? "" : ", ";
        text += sportName(sports[i]);
    }
    appendFormat(text, " as %d %s\n", static_cast<int>(total), bySessions ? "sessions" : "laps");
    return text;
}

void reportSports(Screens& screens, const FitInventory& inventory, const FitSummary& summary)
{
    screens.appendText(Pane::lower, sportsText(inventory, summary));
}

namespace {

constexpr int recordsAndAverage = presentInRecords | presentAverage;
constexpr int recordsAndMaximum = presentInRecords | presentMaximum;

bool positionComplete(const FieldPresence& presence)
{
    return (presence.positionFlags & presentInRecords) != 0 && (presence.positionFlags & secondInRecords) != 0;
}

double kph(uint16_t speed)
{
    return speed * kphPerMps / 1000.0;
}

void appendHead(std::string& text, const ReportedRide& ride)
{
    const char* verb = ride.mode == reportAnalysed ? "analysed" : "loaded";
    appendFormat(text, "\n\t\t%s the fit file named '%s'\n", verb, reportedName(ride.path).c_str());
    if (ride.mode == reportLoaded)
        text += "\n summary of the fit file\n\n";
    else
        appendFormat(text, "\n summary of the fit file after excluding records under threshold speed %3.1lf kph\n\n",
                     ride.settings.thresholdSpeed);
}

void appendInventory(std::string& text, const ReportedRide& ride)
{
    const FitInventory& inventory = ride.inventory;
    appendFormat(text, "\tfile id type\t\t: #%d, %s\n", inventory.fileType, fileTypeName(inventory.fileType));
    text += sportsText(inventory, ride.summary);
    if (ride.presence.hasRecords)
        appendFormat(text, "\trecord messages\t\t: existing, record data counted %d\n",
                     static_cast<int>(inventory.recordCount));
    else
        text += "\trecord message\t\t: none\n";
    appendFormat(text, "\tdefinition messages\t: counted   %d\n", static_cast<int>(inventory.definitionCount));
    appendFormat(text, "\tnormal data messages\t: counted   %d\n", static_cast<int>(inventory.normalDataCount));
    appendFormat(text, "\tcompressed timestamp\t: counted   %d\n",
                 static_cast<int>(inventory.compressedTimestampCount));
}

void appendTableHeading(std::string& text, const ReportedRide& ride)
{
    constexpr uint32_t smoothed = 1;
    text += "\n remarkable fields in the record";
    if (ride.mode == reportLoaded)
        text += ", stats in the session or lap data messages\n\n";
    else if ((ride.analysisFlags & smoothed) != 0)
        text += ", stats due to outlier rejection and smoothing\n\n";
    else
        text += " and stats of fields data\n\n";
}

void appendTimestamp(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    uint8_t flags = ride.presence.timestampFlags;
    if (flags != 0x01 && flags != 0x11) {
        text += "\ttimestamp\t\t\t: none\n";
        return;
    }
    appendFormat(text,
                 "\ttimestamp\t\t\t: existing, start %sUTC\n\t\t\t\t\t\t    , end   %sUTC\n"
                 "\t\t\t\t\t\t    , inter  %3d second",
                 formatDateTime(static_cast<uint32_t>(summary.startTimestamp)).c_str(),
                 formatDateTime(static_cast<uint32_t>(summary.endTimestamp)).c_str(),
                 static_cast<int>(summary.recordInterval));
    if (flags == eitherInRecords)
        text += ", timer " + hms(static_cast<int32_t>(summary.totalTimer / 1000));
    text += "\n";
}

void appendCoordinate(std::string& text, const char* name, int flags, int32_t first, int32_t last)
{
    switch (flags) {
    case presentInRecords:
        appendFormat(text, "\t%s: existing\n", name);
        break;
    case presentInRecords | presentFirst:
        appendFormat(text, "\t%s: existing, start %11.6lf\n", name, degreesOf(first));
        break;
    case presentInRecords | presentLast:
        appendFormat(text, "\t%s: existing, end   %11.6lf\n", name, degreesOf(last));
        break;
    case presentWithBoth:
        appendFormat(text, "\t%s: existing, start %11.6lf, end %11.6lf\n", name, degreesOf(first), degreesOf(last));
        break;
    default:
        appendFormat(text, "\t%s: none\n", name);
    }
}

void appendPosition(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    uint8_t flags = ride.presence.positionFlags;
    if ((flags & eitherInRecords) == 0) {
        text += "\tlatitude and longitude\t: none, prediction is impossible except flat calm\n";
        return;
    }
    appendCoordinate(text, "latitude\t\t\t", flags & presentFirstField, summary.firstLatitude, summary.lastLatitude);
    appendCoordinate(text, "longitude\t\t\t", flags >> secondField, summary.firstLongitude, summary.lastLongitude);
}

void appendAltitude(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    double average = metresOf(summary.avgAltitude);
    double highest = metresOf(summary.maxAltitude);
    switch (ride.presence.altitudeFlags) {
    case presentInRecords:
        text += "\taltitude\t\t\t: existing\n";
        break;
    case recordsAndAverage:
        appendFormat(text, "\taltitude\t\t\t: existing, average %4.1lf m\n", average);
        break;
    case recordsAndMaximum:
        appendFormat(text, "\taltitude\t\t\t: existing, maxi %7.1lf m\n", highest);
        break;
    case presentWithBoth:
        appendFormat(text, "\taltitude\t\t\t: existing, average %4.1lf m,    maxi %5.1lf m\n", average, highest);
        break;
    default:
        text += "\taltitude\t\t\t: none, prediction is impossible except flat course\n";
    }
}

void appendAccuracy(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    if (ride.presence.accuracyFlags == presentInRecords)
        text += "\tGPS accuracy\t\t: existing\n";
    else if (ride.presence.accuracyFlags == recordsAndAverage)
        appendFormat(text, "\tGPS accuracy\t\t: existing, average %2d m\n", summary.gpsAccuracy);
    else
        text += "\tGPS accuracy\t\t: none\n";
}

void appendDistance(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    double kilometres = summary.totalDistance * 0.001 / 100;
    int flags = ride.presence.motionFlags & presentFirstField;
    if (ride.mode == reportAnalysed)
        appendFormat(text, "\tdistance\t\t\t: analysed, total %8.3lf km\n", kilometres);
    else if (flags == presentInRecords)
        text += "\tdistance\t\t\t: existing\n";
    else if (flags == (presentInRecords | presentTotal))
        appendFormat(text, "\tdistance\t\t\t: existing, total %8.3lf km\n", kilometres);
    else
        text += "\tdistance\t\t\t: none\n";
}

// Without speeds in the records they can be had from timestamps and positions alone.
const char* noSpeedText(const FieldPresence& presence)
{
    bool fromPosition = (presence.timestampFlags & presentInRecords) != 0 && positionComplete(presence);
    return fromPosition ? "\tspeed\t\t\t\t: none\n"
                        : "\t-- besides no timestamp, latitude nor longitude that makes prediction to be impossible\n";
}

void appendSpeed(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    double average = kph(summary.avgSpeed);
    double highest = kph(summary.maxSpeed);
    if (ride.mode == reportAnalysed) {
        appendFormat(text, "\tspeed\t\t\t\t: analysed, average %5.2lf kph, maxi %6.2lf kph\n", average, highest);
        return;
    }
    switch (ride.presence.motionFlags >> secondField) {
    case presentInRecords:
        text += "\tspeed\t\t\t\t: existing\n";
        break;
    case recordsAndAverage:
        appendFormat(text, "\tspeed\t\t\t\t: existing, average %5.2lf kph\n", average);
        break;
    case recordsAndMaximum:
        appendFormat(text, "\tspeed\t\t\t\t: existing, maxi %8.2lf kph\n", highest);
        break;
    case presentWithBoth:
        appendFormat(text, "\tspeed\t\t\t\t: existing, average %5.2lf kph, maxi %6.2lf kph\n", average, highest);
        break;
    default:
        text += noSpeedText(ride.presence);
    }
}

void appendMotion(std::string& text, const ReportedRide& ride)
{
    if ((ride.presence.motionFlags & eitherInRecords) == 0) {
        text += "\tspeed and distance\t: none, prediction is impossible\n";
        return;
    }
    appendDistance(text, ride);
    appendSpeed(text, ride);
}

void appendTemperature(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    switch (ride.presence.temperatureFlags) {
    case presentInRecords:
        text += "\ttemperature\t\t\t: existing\n";
        break;
    case presentAverage:
        appendFormat(text, "\ttemperature\t\t\t: none, but average %2d Cel\n", summary.avgTemperature);
        break;
    case recordsAndAverage:
        appendFormat(text, "\ttemperature\t\t\t: existing, average %2d Cel\n", summary.avgTemperature);
        break;
    default:
        text += ride.mode == reportAnalysed
                    ? "\ttemperature\t\t\t: none\n"
                    : "\ttemperature\t\t\t: none, need to input average temperature for prediction\n";
    }
}

void appendHeartRate(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    switch (ride.presence.heartRateFlags) {
    case presentInRecords:
        text += "\theart rate\t\t\t: existing\n";
        break;
    case presentAverage:
        appendFormat(text, "\theart rate\t\t\t: none, but average %3d bpm\n", summary.avgHeartRate);
        break;
    case recordsAndAverage:
        appendFormat(text, "\theart rate\t\t\t: existing, average %3d bpm\n", summary.avgHeartRate);
        break;
    case presentWithBoth:
        appendFormat(text, "\theart rate\t\t\t: existing, average %3d bpm,   maxi %3d bpm\n", summary.avgHeartRate,
                     summary.maxHeartRate);
        break;
    default:
        text += "\theart rate\t\t\t: none\n";
    }
}

void appendCadence(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    if (ride.mode == reportAnalysed && ride.settings.predictCadence) {
        appendFormat(text, "\tcadence\t\t\t: analysed, average %3d rpm,   maxi %3d rpm\n", summary.avgCadence,
                     summary.maxCadence);
        return;
    }
    switch (ride.presence.cadenceFlags) {
    case presentInRecords:
    case secondInRecords:
    case eitherInRecords:
        text += "\tcadence\t\t\t: existing\n";
        break;
    case recordsAndAverage:
    case secondInRecords | recordsAndAverage:
        appendFormat(text, "\tcadence\t\t\t: existing, average %3d rpm\n", summary.avgCadence);
        break;
    case recordsAndMaximum:
    case secondInRecords | recordsAndMaximum:
        appendFormat(text, "\tcadence\t\t\t: existing, maxi %6d rpm\n", summary.maxCadence);
        break;
    case presentWithBoth:
    case secondInRecords | presentWithBoth:
        appendFormat(text, "\tcadence\t\t\t: existing, average %3d rpm,   maxi %3d rpm\n", summary.avgCadence,
                     summary.maxCadence);
        break;
    default:
        text += "\tcadence\t\t\t: none\n";
    }
}

// With the tabs that line the columns up.
const char* powerBaseLabel(const ParameterBlock& settings)
{
    constexpr const char* labels[] = {"pedaling power", "crank power\t", "hub power\t", "thrust power"};
    return nameAt(labels, settings.analysePowerBase);
}

void appendPower(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    if (ride.mode == reportAnalysed && ride.settings.predictPower) {
        appendFormat(text, "\t%s\t\t: analysed, average %3d watts, maxi %3d watts\n", powerBaseLabel(ride.settings),
                     summary.avgPower, summary.maxPower);
        return;
    }
    switch (ride.presence.powerFlags) {
    case presentInRecords:
        text += "\tpower\t\t\t\t: existing\n";
        break;
    case recordsAndAverage:
        appendFormat(text, "\tpower\t\t\t\t: existing, average %3d watts\n", summary.avgPower);
        break;
    case recordsAndMaximum:
        appendFormat(text, "\tpower\t\t\t\t: existing, maxi %5d watts\n", summary.maxPower);
        break;
    case presentWithBoth:
        appendFormat(text, "\tpower\t\t\t\t: existing, average %3d watts, maxi %3d watts\n", summary.avgPower,
                     summary.maxPower);
        break;
    case presentWithBoth | presentNormalized:
        appendFormat(text, "\tpower\t\t\t\t: existing, average %3d watts, maxi %3d watts, normalized %3d watts\n",
                     summary.avgPower, summary.maxPower, summary.normalizedPower);
        break;
    default:
        text += "\tpower\t\t\t\t: none\n";
    }
}

void appendBraking(std::string& text, const ReportedRide& ride)
{
    const FitSummary& summary = ride.summary;
    bool powerPredicted = (ride.presence.powerFlags & presentInRecords) == 0 && ride.settings.predictPower;
    if (ride.mode != reportAnalysed || !powerPredicted || !ride.settings.detectBraking)
        return;
    appendFormat(text, "\tbraking force\t\t: analysed, average %5.1lf kgf, maxi %5.1lf kgf\n", summary.avgBrakeForce,
                 summary.maxBrakeForce);
    appendFormat(text, "\tfront brake temperature\t: analysed, average %5.1lf Cel, maxi %5.1lf Cel\n",
                 summary.avgFrontBrake, summary.maxFrontBrake);
    appendFormat(text, "\trear brake temperature\t: analysed, average %5.1lf Cel, maxi %5.1lf Cel\n",
                 summary.avgRearBrake, summary.maxRearBrake);
}

void appendFields(std::string& text, const ReportedRide& ride)
{
    appendTimestamp(text, ride);
    appendPosition(text, ride);
    appendAltitude(text, ride);
    appendAccuracy(text, ride);
    appendMotion(text, ride);
    appendTemperature(text, ride);
    appendHeartRate(text, ride);
    appendCadence(text, ride);
    appendPower(text, ride);
}

} // namespace

void reportSummary(Screens& screens, const ReportedRide& ride)
{
    const FieldPresence& presence = ride.presence;
    std::string text;
    appendHead(text, ride);
    appendInventory(text, ride);
    if (presence.hasRecords) {
        appendTableHeading(text, ride);
        appendFields(text, ride);
        appendBraking(text, ride);
        if ((presence.cadenceFlags & presentInRecords) != 0 && (presence.powerFlags & presentInRecords) != 0)
            text += "\t-- cadence and power are existing and no need to predict\n";
    } else {
        text += "\n\t\timpossible to analyse and predict cause no record data message\n";
    }
    screens.setText(Pane::lower, "");
    screens.appendText(Pane::lower, text);
}

} // namespace torvane
