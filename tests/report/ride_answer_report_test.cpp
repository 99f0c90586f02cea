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
    EXPECT_EQ(shown.lower.substr(shown.lower.find("\tmoving")),
              "\tmoving          : 01:00:00h, standing 00:05:00h\n"
              "\tdistance        : 36.500 km\n"
              "\tclimbed         : 420 m\n"
              "\tspeed           : average 36.0 kph, highest 54.0 kph\n"
              "\n power and work          predicted  measured\n\n"
              "\tmean, coasting too         202       212 W\n"
              "\tnormalised                 203       213 W\n"
              "\thighest of 5 s             204       214 W\n"
              "\thighest of 1 min           205       215 W\n"
              "\thighest of 5 min           206       216 W\n"
              "\thighest of 20 min          207       217 W\n"
              "\thighest of 60 min          208 W\n"
              "\twork                       727       737 kJ\n"
              "\tfood for it                700       710 kcal\n"
              "\tcadence, pedalling          81        91 rpm\n"
              "\n prediction against the meter, over 3400 seconds that have both\n\n"
              "\tpredicted 190 W is 0.950 of measured 200 W\n"
              "\tcorrelation of means over 30 s: 0.750 to 0.850, by where they begin\n"
              "\n laps\n\n\t  no  from km        km       time     kph   climb m  predicted W  measured W\n"
              "\t   1    0.000    18.000  00:30:00h    36.0       220          221         231\n"
              "\t   2   18.000    18.500  00:30:50h    36.0       200          222           -\n"
              "\n climbs\n\n\t  no  from km        km       time     kph   climb m  slope %  predicted W  measured W\n"
              "\t   1    5.000     4.000  00:13:20h    18.0       200      5.0          301         311\n"
              "\n gears, by speed and measured cadence\n\n"
              "\t 42 x 27  00:00:30h   3.0 %\n"
              "\t 42 x 19  00:16:08h  96.8 %\n"
              "\n brakes\n\n"
              "\tgreatest force  : 25.0 kgf\n"
              "\tfront brake     : highest 110.0 Cel, 130.0 kJ taken up\n"
              "\trear brake      : highest 120.0 Cel, 140.0 kJ taken up\n");
    Figures figures = answerFigures(model, ride.answer);
    EXPECT_EQ(
        listed(figures.values),
        "start 1.6310656e+09 sec since 1970; seconds 3600 sec; standing 300 sec; distance 36.5 km; climbed 420 m; "
        "speed 36 kph; highestSpeed 54 kph; recordsRead 3900 ; recordsUsed 3800 ; meterSeconds 3400 sec; "
        "meterPredictedMean 190 W; meterMeasuredMean 200 W; meterRatio 0.95 ; leastCorrelation 0.75 ; "
        "mostCorrelation 0.85 ; comparisonWindow 30 sec; mostBrakeForce 25 kgf; frontBrakeHighest 110 Cel; "
        "rearBrakeHighest 120 Cel; frontBrakeKiloJoule 130 kJ; rearBrakeKiloJoule 140 kJ; "
        "predictedCadence 81 rpm; predictedMean 202 W; predictedNormalised 203 W; predictedBest5 204 W; "
        "predictedBest60 205 W; "
        "predictedBest300 206 W; predictedBest1200 207 W; predictedBest3600 208 W; predictedKiloJoule 727 kJ; "
        "predictedFoodKiloCalorie 700 kcal; "
        "measuredCadence 91 rpm; measuredMean 212 W; measuredNormalised 213 W; measuredBest5 214 W; measuredBest60 215 "
        "W; "
        "measuredBest300 216 W; measuredBest1200 217 W; measuredKiloJoule 737 kJ; "
        "measuredFoodKiloCalorie 710 kcal; ");
    ASSERT_EQ(figures.groups.size(), 3u);
    EXPECT_EQ(listed(figures.groups[0].items[1]),
              "from 18 km; distance 18.5 km; seconds 1850 sec; speed 36 kph; climbed 200 m; predictedMean 222 W; ");
    EXPECT_EQ(listed(figures.groups[1].items[0]), "from 5 km; distance 4 km; seconds 800 sec; speed 18 kph; "
                                                  "climbed 200 m; predictedMean 301 W; measuredMean 311 W; ");
    EXPECT_EQ(listed(figures.groups[2].items[0]), "frontTooth 42 t; rearTooth 27 t; seconds 30 sec; ");
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
