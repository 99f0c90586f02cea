#include "report/prepare_report.h"

#include "core/screens.h"
#include "core/text.h"
#include "core/units.h"

#include <span>
#include <string>

namespace torvane {

namespace {

struct FindingLine {
    uint32_t PrepareFindings::*count;
    const char* text; // in front of its count
};

constexpr FindingLine recordLines[] = {
    {&PrepareFindings::withoutTimestamp, "records without a timestamp, dropped"},
    {&PrepareFindings::equalTimestamps, "records with the timestamp of the one before, dropped"},
    {&PrepareFindings::backwardTimestamps, "records back in time, dropped"},
    {&PrepareFindings::leapingTimestamps, "records that leap ahead in time, dropped"},
    {&PrepareFindings::recordsOfOtherSports, "records of other sports, left out"},
    {&PrepareFindings::compressedTimestamps, "compressed timestamps made full"},
    {&PrepareFindings::stepsFilled, "steps of more than a second, filled"},
    {&PrepareFindings::recordsFilled, "records filled in"},
    {&PrepareFindings::stepsPaused, "pauses of the timer, left open"},
    {&PrepareFindings::stepsLong, "steps longer than the gap limit, left open"},
    {&PrepareFindings::positionsOff, "positions out of reach of their neighbours, dropped"},
    {&PrepareFindings::positionShifts, "places where the track goes on elsewhere, left as they are"},
    {&PrepareFindings::distanceFalls, "places where the distance falls back or starts again, joined"},
    {&PrepareFindings::distancesHeld, "distances held while the ride went on, given their share of the leap"},
    {&PrepareFindings::enhancedValues, "enhanced speeds and altitudes put into the plain fields"},
};

constexpr FindingLine messageLines[] = {
    {&PrepareFindings::summaryEnhanced, "enhanced values of sessions and laps put into the plain fields"},
    {&PrepareFindings::summaryEmpty, "fields without a value in sessions, laps and activities, dropped"},
    {&PrepareFindings::summaryMeasured, "values of sessions and laps dropped with their field"},
    {&PrepareFindings::summariesMoved, "sessions and laps moved behind their records"},
    {&PrepareFindings::messagesUndefined, "messages without a definition, dropped"},
};

void appendLines(std::string& text, const PrepareFindings& findings, std::span<const FindingLine> lines)
{
    for (const FindingLine& line : lines)
        if (uint32_t count = findings.*line.count)
            appendFormat(text, "\t%s: %u\n", line.text, count);
}

const char* settledText(Bridge bridge)
{
    switch (bridge) {
    case Bridge::linear:
        return "taken from the nearest record";
    case Bridge::motion:
        return "taken from the distance";
    default:
        return "held";
    }
}

const char* sourceText(size_t field, const PrepareFindings& findings)
{
    if (field == rideSpeed)
        return "distance and time";
    return findings.distanceBySpeed ? "speed and time" : "positions";
}

bool stands(size_t field, const PrepareFindings& findings)
{
    return field == rideSpeed ? findings.speedStill : findings.distanceStill;
}

// Of a position the latitude speaks for both.
void appendField(std::string& text, size_t field, const PrepareFindings& findings)
{
    if (field == rideLongitude)
        return;
    const FieldFindings& own = findings.fields[field];
    const char* name = field == rideLatitude ? "position" : rideFields[field].name;
    if (own.derived)
        appendFormat(text, "\t%s %s, worked out of %s\n", name,
                     stands(field, findings) ? "never moves" : "in no record", sourceText(field, findings));
    else if (own.defined && !own.written)
        appendFormat(text, "\t%s without a value in all records, left out\n", name);
    if (own.bridged != 0)
        appendFormat(text, "\t%s missing for a while, bridged: %u\n", name, own.bridged);
    if (own.missing != 0)
        appendFormat(text, "\t%s missing, left so: %u\n", name, own.missing);
    if (own.settled != 0)
        appendFormat(text, "\t%s missing, %s: %u\n", name, settledText(rideFields[field].bridge), own.settled);
}

void appendLeftOut(std::string& text, const PrepareFindings& findings)
{
    if (findings.fieldsLeftOut.any()) {
        appendFormat(text, "\tfields of records that the analysis does not know, left out: %u, namely",
                     static_cast<unsigned>(findings.fieldsLeftOut.count()));
        for (size_t number = 0; number < findings.fieldsLeftOut.size(); ++number)
            if (findings.fieldsLeftOut[number])
                appendFormat(text, " %u", static_cast<unsigned>(number));
        text += "\n";
    }
    if (findings.developerFieldsLeftOut)
        text += "\tdeveloper fields of records, left out\n";
    if (findings.powerDropped)
        text += "\tpower of records, left out as asked\n";
    if (findings.cadenceDropped)
        text += "\tcadence of records, left out as asked\n";
}

struct SourceLine {
    size_t SourceFindings::*count;
    const char* text; // in front of its count
};

constexpr SourceLine sourceLines[] = {
    {&SourceFindings::bytesLost, "bytes that could not be read, lost"},
    {&SourceFindings::pointsWithoutTime, "points without a time, left out"},
    {&SourceFindings::timesUnreadable, "times that could not be read"},
    {&SourceFindings::timesWithoutZone, "times without a zone, taken as UTC"},
    {&SourceFindings::legsOfOtherSports, "tracks or activities of other sports, left out"},
    {&SourceFindings::emptySegments, "segments without a point"},
};

void appendSource(std::string& text, const SourceFindings& source)
{
    if (source.cut)
        text += "\tfile cut off\n";
    if (source.neverClosed)
        text += "\tfile never closed by its device\n";
    if (source.crcWrong)
        text += "\tchecksum of the file wrong\n";
    if (source.parts > 1)
        appendFormat(text, "\tFIT files one behind the other: %u\n", source.parts);
    for (const SourceLine& line : sourceLines)
        if (size_t count = source.*line.count)
            appendFormat(text, "\t%s: %zu\n", line.text, count);
}

void appendDefinitions(std::string& text, const PrepareFindings& findings)
{
    if (findings.recordDefinitions > 1)
        appendFormat(text, "\trecord definitions made one: %u\n", findings.recordDefinitions);
    appendFormat(text, "\tdefinitions: %u read, %u written\n", findings.definitions, findings.definitionsWritten);
    appendFormat(text, "\tother messages passed: %u\n", findings.messagesPassed);
}

void appendSpeed(std::string& text, const PrepareFindings& findings)
{
    if (findings.seconds == 0 || !findings.fields[rideDistance].written)
        return;
    double mean = static_cast<double>(findings.centimetres) / 100 / findings.seconds; // m/s
    appendFormat(text, "\taverage speed: %.2f kph over %u s", mean * kphPerMps, findings.seconds);
    if (findings.deviceSpeed > 0)
        appendFormat(text, ", by the device %.2f kph", findings.deviceSpeed * 0.0036);
    text += "\n";
}

} // namespace

void reportPreparation(Screens& screens, const PrepareFindings& findings)
{
    std::string text = "\n findings of the preparation\n\n";
    appendSource(text, findings.source);
    appendFormat(text, "\trecords: %u read, %u written\n", findings.recordsRead, findings.recordsWritten);
    appendLines(text, findings, recordLines);
    for (size_t field = 0; field < rideFieldCount; ++field)
        appendField(text, field, findings);
    appendLeftOut(text, findings);
    appendLines(text, findings, messageLines);
    appendDefinitions(text, findings);
    appendSpeed(text, findings);
    screens.appendText(Pane::lower, text);
}

} // namespace torvane
