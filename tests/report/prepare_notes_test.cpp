// The sentences of a prepared ride, each for what it is about and for nothing else; and two rides held together.
#include "captured_screens.h"
#include "report/comparison_report.h"
#include "report/fit_figures.h"
#include "report/listed_figures.h"
#include "report/prepare_report.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
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

TEST(ComparisonReport, everyNumberStandsUnderItsName)
{
    RideComparison comparison;
    comparison.whole.seconds = 3600;
    std::tie(comparison.alone[0], comparison.alone[1]) = std::tuple(11, 12);
    std::tie(comparison.whole.mean[0], comparison.whole.mean[1]) = std::tuple(200, 210);
    std::tie(comparison.whole.normalised[0], comparison.whole.normalised[1]) = std::tuple(240, 216);
    std::tie(comparison.whole.correlation, comparison.whole.windows) = std::tuple(0.75, 120);
    PowerComparison sector = comparison.whole;
    sector.start = 1'000'000'000; // 01:46:40
    sector.seconds = 61;
    sector.windows = 0;
    comparison.sectors = {sector};
    CapturedScreens shown;
    reportComparison(shown.screens, comparison, "a.fit", "b.fit");
    EXPECT_EQ(shown.lower, "\n comparison of power\n\n"
                           "\tfirst\t\t\t\t: a.fit\n"
                           "\tsecond\t\t\t\t: b.fit\n"
                           "\tcommon seconds\t\t: 3600; in the first alone 11, in the second alone 12\n"
                           "\tmean power\t\t\t: first 200.0, second 210.0 watts, ratio 1.050\n"
                           "\tnormalised power\t: first 240.0, second 216.0 watts, ratio 0.900\n"
                           "\tcorrelation\t\t: 0.750, of 120 means over 30 s\n"
                           "\n sectors of a minute or more, powers in watts\n\n"
                           "\t  no     start  seconds      mean      mean   ratio      norm      norm correlation\n"
                           "\t   1  01:46:40       61     200.0     210.0   1.050     240.0     216.0           -\n");
    Figures figures = comparisonFigures(comparison);
    std::string powers = "firstMean 200 W; secondMean 210 W; meanRatio 1.05 ; firstNormalised 240 W; "
                         "secondNormalised 216 W; normalisedRatio 0.9 ; ";
    std::string whole = listed(figures.values), minute = listed(figures.groups[0].items[0]);
    EXPECT_NE(whole.find("seconds 3600 sec; " + powers), std::string::npos) << whole;
    EXPECT_NE(minute.find("seconds 61 sec; " + powers), std::string::npos) << minute;
}

} // namespace

} // namespace torvane
