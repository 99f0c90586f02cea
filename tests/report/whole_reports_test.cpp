// Whole reports with their figures, rows and graphs, of answers in which every field holds a number of its own. What
// they have to tell stands in tests/report/told and was worked out by hand.
#include "captured_screens.h"
#include "numbered_answers.h"
#include "report/calibration_figures.h"
#include "report/calibration_notes.h"
#include "report/calibration_report.h"
#include "report/comparison_report.h"
#include "report/course_figures.h"
#include "report/course_report.h"
#include "report/fit_figures.h"
#include "report/listed_figures.h"
#include "report/ride_rows.h"

#include <algorithm>
#include <set>

namespace torvane {

namespace {

template <class Write>
std::string rowsBy(Write write)
{
    std::string table;
    RowWriter rows(RowFormat::csv, [&](std::span<const uint8_t> piece) {
        table.append(piece.begin(), piece.end());
        return true;
    });
    write(rows);
    EXPECT_TRUE(rows.finish());
    return "\n" + table;
}

std::string linesOf(const GraphSeries& graph)
{
    std::string text = "\n";
    for (int i = 0; i < graph.seriesCount(); ++i)
        text += graph.seriesNames[static_cast<size_t>(i)] + (i + 1 < graph.seriesCount() ? ", " : "\n");
    for (size_t i = 0; i < graph.values.size(); ++i)
        text += formatText("%.6g", graph.values[i]) + ((i + 1) % graph.seriesNames.size() ? " " : "\n");
    return text;
}

// All of its figures, of which help knows each, and none besides.
std::string figuresOf(const Figures& figures, const std::vector<FigureInfo>& infos)
{
    std::string text = "\n" + listed(figures.values) + "\n";
    std::set<std::string> told, known;
    auto take = [&](const std::string& group, const FigureList& list) {
        for (const Figure& figure : list)
            told.insert(group + " " + figure.name + " " + figure.unit);
    };
    take("", figures.values);
    for (const Figures::Group& group : figures.groups)
        for (const FigureList& item : group.items) {
            text += group.name + ": " + listed(item) + "\n";
            take(group.name, item);
        }
    for (const FigureInfo& info : infos)
        known.insert(info.group + " " + info.name + " " + info.unit);
    EXPECT_EQ(told, known);
    return text;
}

TEST(WholeReport, ofAPlan)
{
    ParameterBlock block = defaultBlock();
    Model model = modelOf(block);
    ShownPlan plan = numberedPlan(0);
    AnsweredCourse& answered = plan.answered;
    CourseFindings& found = answered.course.findings;
    found.pointsRead = 1001;
    found.pointsWithoutPlace = 12;
    found.pointsWithoutAltitude = 13;
    found.gaps = {{1100, 150}, {2100, 260}, {3100, 370}, {4100, 480}, {5000, 590}};
    found.straights = {{1200, 310}};
    found.smoothedMore = found.noisy = true;
    found.smoothing = 60;
    found.climbedRaw = 140;
    PlannedCourse& planned = answered.planned;
    planned.ride.coastSeconds = 72.1;
    planned.ride.brakeSeconds = 36.05;
    planned.ride.topSpeed = 20;
    planned.evenPower = 199;
    planned.threePowers = {0.5, 220, 150};
    planned.stopsLeftOut = 2;
    planned.onAnotherRoad = true;
    planned.coveredShare = 0.75;
    answered.answer.intensity = 0.76;
    for (WhatIfAnswer& what : answered.answer.whatIf)
        what.teeth = std::max(what.teeth, 1);
    answered.answer.whatIf[ifHeadWind].lowestCadence = answered.answer.whatIf[ifLessDrag].lowestCadence = 0.5;
    CapturedScreens shown;
    reportCourse(shown.screens, model, answered, courseNotes(answered, fitOk));
    expectTold(shown.lower + figuresOf(courseFigures(model, answered), courseFigureInfos()) +
                   rowsBy([&](RowWriter& rows) { writeCourseRows(rows, plan.seconds); }) +
                   linesOf(courseCurves(plan.seconds)),
               "tests/report/told/plan.txt");
}

TEST(WholeReport, tellsNothingOfWhatAPlanHasNot)
{
    ParameterBlock block = defaultBlock();
    Model model = modelOf(block);
    AnsweredCourse answered = plainPlan().answered;
    CapturedScreens shown;
    reportCourse(shown.screens, model, answered, {});
    expectUntold(shown.lower, {"with stops", "arrival", "three powers", "intensity", "owest cadence", "even power",
                               "stretches alone", "climbs\n", "on foot", "sprocket", "known of"});
    Figures figures = courseFigures(model, answered);
    expectUntold(listed(figures.values), {"start", "intensity", "lowestCadence", "evenPower", "gain", "stretchSeconds",
                                          "steepPower", "stressScore"});
    EXPECT_EQ(listed(figures.groups.back().items[0]), "seconds 0 sec; walked 0 m; ");
}

TEST(WholeReport, ofACalibration)
{
    MeasuredRide rides[2];
    rides[0].path = "in/one.fit";
    rides[1].path = "in/two.fit";
    CalibrationAnswer answer;
    answer.rides = {{.start = 1'000'000'000,
                     .seconds = {1800, 1, 22, 23, 24, 25},
                     .windows = 30,
                     .foundWind = true,
                     .wind = {-3, 4},
                     .temperature = 18.5,
                     .factor = 1.055,
                     .error = 0.011},
                    {.fault = CalibrationFault::tooFewWindows, .seconds = {60, 1, 0, 0, 14, 15}, .windows = 5}};
    answer.ridesUsed = 1;
    answer.factor = 1.045;
    answer.error = 0.012;
    answer.lowest = 1.025;
    answer.highest = 1.065;
    answer.dragArea = 0.315;
    answer.angle = 33.5;
    answer.factorBefore = 1.005;
    answer.rollingEffect = -0.035;
    answer.residual = 17;
    answer.temperature = 19.5;
    answer.doubts = doubtFewWindows | doubtMeterGaps;
    answer.heldOut = {{0.061, 42, 0.913}, {0.032, 31, 0.944}, {1.035, 1.056}, {}, 6, 5};
    answer.rows = {{0, 60, 500, 201, 181, 191, 171, 211},
                   {0, 120, 1250, 202, 182, 192, 172, 212},
                   {1, 60, 400, 203, 183, 193, 173, 213}};
    CapturedScreens shown;
    reportCalibration(shown.screens, answer, rides, calibrationNotes(answer, rides));
    expectTold(shown.lower + figuresOf(calibrationFigures(answer), calibrationFigureInfos()) +
                   rowsBy([&](RowWriter& rows) { writeCalibrationRows(rows, answer); }) +
                   linesOf(calibrationGraph(answer)),
               "tests/report/told/calibration.txt");
    answer.angle.reset();
    reportCalibration(shown.screens, answer, rides, {});
    EXPECT_EQ(shown.lower.find("as an angle"), std::string::npos);
}

TEST(WholeReport, ofAComparison)
{
    RideComparison rides = comparedRides();
    CapturedScreens shown;
    reportComparison(shown.screens, rides, "in/one.fit", "two.fit");
    expectTold(shown.lower + figuresOf(comparisonFigures(rides), comparisonFigureInfos()) +
                   rowsBy([&](RowWriter& rows) { writeComparisonRows(rows, rides); }),
               "tests/report/told/comparison.txt");
}

} // namespace

} // namespace torvane
