// What a ride cost, from an answer in which every field holds a number of its own: the report and the figures.
#include "captured_screens.h"
#include "model/gear_table.h"
#include "numbered_answers.h"
#include "report/listed_figures.h"
#include "report/ride_answer_figures.h"
#include "report/ride_answer_report.h"

#include <gtest/gtest.h>

namespace torvane {

namespace {

// With a meter, on a hill.
AnsweredRide numberedRide()
{
    AnsweredRide ride;
    RideAnswer& a = ride.answer = numberedHour();
    a.power[predictedFigure]->best = {204, 205, 206, 207, 208};
    a.power[measuredFigure]->best = {214, 215, 216, 217, {}};
    a.foodKiloCalorie = {700, 710};
    a.meter = {3400, {190, 200}, CorrelationBand{0.75, 0.85}};
    a.gearSource = measuredFigure;
    a.gears = {{0, 30}, {2, 2}, {4, 968}};
    a.climbs = {{5000, 4000, 800, 200, {301, 311}, {}}};
    a.recordsRead = 3900;
    a.recordsUsed = 3800;
    return ride;
}

TEST(RideAnswerReport, everyNumberStandsUnderItsName)
{
    ParameterBlock block = defaultBlock();
    Model model = modelOf(block);
    AnsweredRide ride = numberedRide();
    CapturedScreens shown;
    reportRideAnswer(shown.screens, model, ride, {});
    Figures figures = answerFigures(model, ride.answer);
    std::string told = shown.lower.substr(shown.lower.find("\tmoving")) + "\n" + listed(figures.values) + "\n";
    for (const Figures::Group& group : figures.groups)
        for (const FigureList& item : group.items)
            told += group.name + ": " + listed(item) + "\n";
    expectTold(told, "tests/report/told/ride.txt");
}

TEST(RideAnswerReport, tellsNothingOfWhatIsNotThere)
{
    ParameterBlock block = defaultBlock();
    Model model = modelOf(block);
    AnsweredRide ride = numberedRide();
    RideAnswer& a = ride.answer;
    a.power[measuredFigure].reset();
    a.meter.reset();
    a.brakes.reset();
    a.gears.clear();
    a.climbs.clear();
    a.hasAltitude = false;
    CapturedScreens shown;
    reportRideAnswer(shown.screens, model, ride, {});
    for (const char* words : {"measured", "meter", "climbed\t", " climbs", " gears", " brakes"})
        EXPECT_EQ(shown.lower.find(words), std::string::npos) << words;
    std::string figures = listed(answerFigures(model, a).values);
    for (const char* words : {"meter", "climbed", "measuredMean", "Brake"})
        EXPECT_EQ(figures.find(words), std::string::npos) << words;
}

// What is doubtful: records lost beyond 2 %, a sport that is none on a bicycle, a meter that stood still.
TEST(RideAnswerReport, notes)
{
    AnsweredRide ride = numberedRide();
    ride.prepared.inventory.sessionSport = {2, 1};
    ride.answer.meterStill = true;
    std::vector<std::string> notes = rideNotes(ride, fitOk);
    ASSERT_EQ(notes.size(), 3u);
    EXPECT_EQ(notes[0], "only 3800 of 3900 records could be used");
    EXPECT_EQ(notes[1], "the device calls this running; the answer is that of a bicycle");
    ride = numberedRide();
    ride.answer.recordsUsed = 3822; // 2 % lost
    ride.prepared.inventory.sessionSport = {0, 2, 21};
    EXPECT_TRUE(rideNotes(ride, fitOk).empty());
    ride.answer.whole.seconds = 299;
    EXPECT_EQ(rideNotes(ride, fitTooShort)[0].find("the ride moves for 00:04:59h at "), 0u);
    EXPECT_EQ(rideNotes(ride, fitNotSupported).size(), 1u);
}

} // namespace

} // namespace torvane
