// The sentences of a prepared ride, each for what it is about and for nothing else.
#include "report/prepare_report.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace torvane {

namespace {

using Findings = PrepareFindings;
using Sentences = std::vector<std::string>;

// Nothing to tell of: with an altitude, and in motion.
Findings quietFindings()
{
    Findings findings;
    findings.recordsWritten = findings.seconds = findings.centimetres = 100;
    findings.fields[rideAltitude].written = true;
    return findings;
}

struct NoteCase {
    void (*change)(Findings& findings);
    const char* note; // null: none
};

constexpr NoteCase noteCases[] = {
    {[](Findings&) {}, nullptr},
    {[](Findings& f) { f.source.cut = true; }, "the file is cut off; what stands in front of the cut was read"},
    {[](Findings& f) { f.source.neverClosed = true; },
     "the file was never closed by its device; its records were read"},
    {[](Findings& f) { f.source.crcWrong = true; }, "the checksum of the file is wrong; it may be broken"},
    {[](Findings& f) { f.source.parts = 1; }, nullptr},
    {[](Findings& f) { f.source.parts = 2; }, "2 FIT files stand one behind the other in it; all were read"},
    {[](Findings& f) { f.distanceStill = f.fields[rideDistance].derived = true; },
     "the distance never moves though the ride does; it was worked out anew"},
    {[](Findings& f) { f.speedStill = true; }, "the speed never moves though the ride does; it was worked out anew"},
    {[](Findings& f) { f.fields[rideDistance].derived = true; },
     "the file holds no distance; it was worked out of the positions"},
    {[](Findings& f) { f.fields[rideDistance].derived = f.distanceBySpeed = true; },
     "the file holds no distance; it was worked out of speed and time"},
    {[](Findings& f) { f.centimetres = 0; },
     "neither distance nor speed nor positions move: the file does not tell how far the ride went"},
    {[](Findings& f) { f.fields[rideAltitude].written = false; },
     "the file holds no altitude; the course counts as flat"},
    {[](Findings& f) { f.fields[rideAltitude].written = false, f.recordsWritten = 0; }, nullptr},
    {[](Findings& f) { f.summariesMade = true; }, "the file holds no session; one was made from its records"},
    {[](Findings& f) { f.source.bytesLost = 1; }, "lost at the end of the file, which could not be read: 1 byte"},
    {[](Findings& f) { f.positionShifts = 2; },
     "the track goes on elsewhere, and the way between is not counted: 2 places"},
    {[](Findings& f) { f.fields[rideLatitude].bridged = 3; },
     "the position was missing for a while and bridged: 3 records"},
    {[](Findings& f) { f.fields[rideDistance].settled = 1; }, "the distance is not known and was held: 1 record"},
    {[](Findings& f) { f.fields[rideSpeed].bridged = 1; }, "the speed was missing for a while and bridged: 1 record"},
};

TEST(PrepareNotes, sayEachWhatItIsAbout)
{
    for (const NoteCase& c : noteCases) {
        Findings findings = quietFindings();
        c.change(findings);
        EXPECT_EQ(preparationNotes(findings), c.note != nullptr ? Sentences{c.note} : Sentences{});
    }
}

} // namespace

} // namespace torvane
