// What a rider should know of a prepared ride, in sentences.
#include "report/prepare_report.h"

#include "core/text.h"

namespace torvane {

namespace {

struct NoteRow {
    size_t (*count)(const PrepareFindings&);
    const char* noun; // of one
    const char* text; // in front of how many
};

template <auto member>
size_t ofFile(const PrepareFindings& findings)
{
    return findings.source.*member;
}

template <auto member>
size_t ofRide(const PrepareFindings& findings)
{
    return findings.*member;
}

template <RideField field, auto member>
size_t ofField(const PrepareFindings& findings)
{
    return findings.fields[field].*member;
}

using File = SourceFindings;
using Ride = PrepareFindings;
using Field = FieldFindings;

constexpr NoteRow noteRows[] = {
    {ofRide<&Ride::leapingTimestamps>, "record", "the clock leapt ahead; dropped from the future"},
    {ofRide<&Ride::backwardTimestamps>, "record", "the clock fell back; dropped from the past"},
    {ofFile<&File::bytesLost>, "byte", "lost at the end of the file, which could not be read"},
    {ofFile<&File::pointsWithoutTime>, "point", "left out for want of a time"},
    {ofFile<&File::timesUnreadable>, "time", "not to be read"},
    {ofFile<&File::timesWithoutZone>, "time", "taken as UTC for want of a zone"},
    {ofFile<&File::legsOfOtherSports>, "leg", "left out as of another sport"},
    {ofRide<&Ride::recordsOfOtherSports>, "record", "left out as of another sport"},
    {ofRide<&Ride::equalTimestamps>, "record", "dropped with a time that another has already"},
    {ofRide<&Ride::withoutTimestamp>, "record", "dropped for want of a time"},
    {ofRide<&Ride::positionsOff>, "position", "dropped as beyond the reach of its neighbours"},
    {ofRide<&Ride::positionShifts>, "place", "the track goes on elsewhere, and the way between is not counted"},
    {ofRide<&Ride::distanceFalls>, "place", "the distance falls back or starts again, and was joined"},
    {ofRide<&Ride::distancesHeld>, "record", "the distance stood while the ride went on, and its leap was spread"},
    {ofField<ridePower, &Field::missing>, "record", "the power meter gave nothing, and power stays missing"},
    {ofField<rideCadence, &Field::missing>, "record", "cadence is missing and stays so"},
    {ofField<rideLatitude, &Field::bridged>, "record", "the position was missing for a while and bridged"},
    {ofField<rideLatitude, &Field::settled>, "record", "the position is not known and was held"},
    {ofField<rideAltitude, &Field::bridged>, "record", "the altitude was missing for a while and bridged"},
    {ofField<rideAltitude, &Field::settled>, "record", "the altitude is not known and was held"},
    {ofField<rideDistance, &Field::bridged>, "record", "the distance was missing for a while and bridged"},
    {ofField<rideDistance, &Field::settled>, "record", "the distance is not known and was held"},
    {ofField<rideSpeed, &Field::bridged>, "record", "the speed was missing for a while and bridged"},
    {ofField<rideSpeed, &Field::settled>, "record", "the speed was missing and taken from the distance"},
    {ofRide<&Ride::recordsFilled>, "record", "filled in between others"},
    {ofRide<&Ride::stepsLong>, "gap", "longer than the gap limit, and left open"},
    {ofRide<&Ride::summariesMoved>, "message", "sessions and laps, moved behind their records"},
};

std::string noteOf(const NoteRow& row, size_t count)
{
    return formatText("%s: %zu %s%s", row.text, count, row.noun, count == 1 ? "" : "s");
}

void addDoubts(std::vector<std::string>& notes, const PrepareFindings& findings)
{
    const SourceFindings& source = findings.source;
    if (source.cut)
        notes.emplace_back("the file is cut off; what stands in front of the cut was read");
    if (source.neverClosed)
        notes.emplace_back("the file was never closed by its device; its records were read");
    if (source.crcWrong)
        notes.emplace_back("the checksum of the file is wrong; it may be broken");
    if (source.parts > 1)
        notes.push_back(formatText("%u FIT files stand one behind the other in it; all were read", source.parts));
    if (findings.distanceStill)
        notes.emplace_back("the distance never moves though the ride does; it was worked out anew");
    if (findings.speedStill)
        notes.emplace_back("the speed never moves though the ride does; it was worked out anew");
    if (findings.fields[rideDistance].derived && !findings.distanceStill)
        notes.push_back(formatText("the file holds no distance; it was worked out of %s",
                                   findings.distanceBySpeed ? "speed and time" : "the positions"));
    if (findings.seconds != 0 && findings.centimetres == 0)
        notes.emplace_back(
            "neither distance nor speed nor positions move: the file does not tell how far the ride went");
    if (!findings.fields[rideAltitude].written && findings.recordsWritten != 0)
        notes.emplace_back("the file holds no altitude; the course counts as flat");
    if (findings.summariesMade)
        notes.emplace_back("the file holds no session; one was made from its records");
}

} // namespace

std::vector<std::string> preparationNotes(const PrepareFindings& findings)
{
    std::vector<std::string> notes;
    addDoubts(notes, findings);
    for (const NoteRow& row : noteRows)
        if (size_t count = row.count(findings))
            notes.push_back(noteOf(row, count));
    return notes;
}

void tellPreparationNotes(Screens& screens, const PrepareFindings& findings)
{
    for (const std::string& note : preparationNotes(findings))
        screens.tellNote(note);
}

} // namespace torvane
