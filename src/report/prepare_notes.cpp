// What a rider should know of a prepared ride, in sentences.
#include "report/prepare_report.h"

#include "core/text.h"

namespace torvane {

namespace {

struct NoteRow {
    size_t (*count)(const PrepareFindings&);
    const char* text; // with the count in it
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
    {ofFile<&File::bytesLost>, "%zu bytes at the end of the file could not be read and are lost"},
    {ofFile<&File::pointsWithoutTime>, "%zu points without a time were left out"},
    {ofFile<&File::timesUnreadable>, "%zu times could not be read"},
    {ofFile<&File::timesWithoutZone>, "%zu times name no zone and were taken as UTC"},
    {ofFile<&File::legsOfOtherSports>, "%zu tracks or activities of other sports were left out"},
    {ofRide<&Ride::recordsOfOtherSports>, "%zu records belong to other sports and were left out"},
    {ofRide<&Ride::leapingTimestamps>, "the clock leapt: %zu records from the future were dropped"},
    {ofRide<&Ride::backwardTimestamps>, "the clock leapt: %zu records from the past were dropped"},
    {ofRide<&Ride::equalTimestamps>, "%zu records with a time that another has already were dropped"},
    {ofRide<&Ride::withoutTimestamp>, "%zu records without a time were dropped"},
    {ofRide<&Ride::positionsOff>, "%zu positions beyond the reach of their neighbours were dropped"},
    {ofRide<&Ride::positionShifts>, "the track goes on elsewhere %zu times; the way between is not counted"},
    {ofRide<&Ride::distancesHeld>, "the distance stood for %zu records while the ride went on; its leaps were spread "
                                   "over them"},
    {ofField<ridePower, &Field::missing>, "the power meter gave nothing for %zu records, where power stays missing"},
    {ofField<rideCadence, &Field::missing>, "cadence is missing in %zu records and stays so"},
    {ofField<rideLatitude, &Field::bridged>, "positions were missing for a while and bridged in %zu records"},
    {ofField<rideLatitude, &Field::settled>, "the position was held where none was known, in %zu records"},
    {ofField<rideAltitude, &Field::bridged>, "altitudes were missing for a while and bridged in %zu records"},
    {ofField<rideAltitude, &Field::settled>, "the altitude was held where none was known, in %zu records"},
    {ofField<rideDistance, &Field::bridged>, "distances were missing for a while and bridged in %zu records"},
    {ofField<rideDistance, &Field::settled>, "the distance was held where none was known, in %zu records"},
    {ofField<rideSpeed, &Field::bridged>, "speeds were missing for a while and bridged in %zu records"},
    {ofField<rideSpeed, &Field::settled>, "speeds were missing and taken from the distance in %zu records"},
    {ofRide<&Ride::recordsFilled>, "%zu records were filled in between others"},
    {ofRide<&Ride::stepsLong>, "%zu gaps longer than the gap limit stay open"},
    {ofRide<&Ride::summariesMoved>, "%zu sessions and laps did not stand behind their records and were moved there"},
};

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
                                   findings.fields[rideLatitude].written ? "the positions" : "speed and time"));
    if (!findings.fields[rideAltitude].written)
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
            notes.push_back(formatText(row.text, count));
    return notes;
}

void tellPreparationNotes(Screens& screens, const PrepareFindings& findings)
{
    for (const std::string& note : preparationNotes(findings))
        screens.tellNote(note);
}

} // namespace torvane
