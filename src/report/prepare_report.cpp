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
    {&PrepareFindings::leapingTimestamps, "records that alone leap ahead in time, dropped"},
    {&PrepareFindings::compressedTimestamps, "compressed timestamps made full"},
    {&PrepareFindings::stepsFilled, "steps of more than a second, filled"},
    {&PrepareFindings::recordsFilled, "records filled in"},
    {&PrepareFindings::stepsPaused, "pauses of the timer, left open"},
    {&PrepareFindings::stepsLong, "steps longer than the gap limit, left open"},
    {&PrepareFindings::positionsOff, "positions out of reach of their neighbours, dropped"},
    {&PrepareFindings::positionShifts, "places where the track goes on elsewhere, left as they are"},
    {&PrepareFindings::enhancedValues, "enhanced speeds and altitudes put into the plain fields"},
};

constexpr FindingLine messageLines[] = {
    {&PrepareFindings::summaryEnhanced, "enhanced values of sessions and laps put into the plain fields"},
    {&PrepareFindings::summaryEmpty, "fields without a value in sessions, laps and activities, dropped"},
    {&PrepareFindings::summaryMeasured, "values of sessions and laps dropped with their field"},
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
    case Bridge::hold:
        return "held";
    default:
        return "set to 0";
    }
}

const char* sourceText(size_t field, const PrepareFindings& findings)
{
    if (field == rideSpeed)
        return "distance and time";
    return findings.fields[rideLatitude].written ? "positions" : "speed and time";
}

// Of a position the latitude speaks for both.
void appendField(std::string& text, size_t field, const PrepareFindings& findings)
{
    if (field == rideLongitude)
        return;
    const FieldFindings& own = findings.fields[field];
    const char* name = field == rideLatitude ? "position" : rideFields[field].name;
    if (own.derived)
        appendFormat(text, "\t%s in no record, worked out of %s\n", name, sourceText(field, findings));
    else if (own.defined && !own.written)
        appendFormat(text, "\t%s without a value in all records, left out\n", name);
    if (own.bridged != 0)
        appendFormat(text, "\t%s missing for a while, bridged: %u\n", name, own.bridged);
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
