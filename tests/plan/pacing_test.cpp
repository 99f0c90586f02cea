// What a plan promises: never slower than even power, even where nothing is to be gained, harder uphill by what theory
// allows; and the efforts that are solved for.
#include "plan/made_course.h"

#include "figures.h"
#include "fit/fit_builder.h"
#include "model/derived.h"
#include "model/solver.h"
#include "plan/least_time.h"
#include "plan/planning.h"
#include "plan/point_mass.h"
#include "rides/made_ride_file.h"

#include <numeric>

namespace torvane {

namespace {

double heightOfSteep(double way)
{
    return 300 + std::min(way, 3000.0) * 0.08;
}

} // namespace

TEST_F(PlanTest, LeastTimeIsNeverSlowerThanEvenPower)
{
    // m, m/s, and the least gain of the time of even power
    const std::tuple<const char*, OverWay, double, double, double> cases[] = {
        {"flat", slopeOf(0), 20000, 0, -1e-4},
        {"wind", slopeOf(0), 20000, 5, -1e-4},
        {"wall first", heightOfSteep, 20000, 0, 0.015},
        {"hills of 4 km", hills(50, 4000), 40000, 0, 0.015},
        {"down alone", slopeOf(-5), 10000, 0, -5e-4},
        {"much on foot", hills(55.7, 700), 6000, 0, 0}, // where steady states lead astray
    };
    options.pacing = pacingPlan;
    options.stops = {{5000, 600}};
    for (const auto& [what, height, length, wind, leastGain] : cases) {
        SCOPED_TRACE(what);
        options.windSpeed = wind;
        auto square = [wind = wind](double way) { return wind > 0 ? std::floor(way / 5000) * 90 : 0; };
        PlannedCourse planned = plan(madeCourse(length, height, square));
        EXPECT_NEAR(planned.ride.normalisedPower / planned.even.normalisedPower, 1, 2e-4);
        EXPECT_GE(1 - planned.ride.movingSeconds / planned.even.movingSeconds, leastGain);
        EXPECT_LE(planned.stretches.size(), 12u);
        EXPECT_LE(planned.stretchSeconds, planned.even.movingSeconds);
        EXPECT_GE(planned.stretchSeconds, planned.ride.movingSeconds) << "else the stretches are the plan";
    }
}

// Where all is best, a second costs as much of the mean fourth power on each road: for s = (P / 200)4 the price p in
// t' + p (t (s - 1))' = 0 is one. Times are those of the calculators, a climb of 8 percent and a level road.
TEST_F(PlanTest, LeastTimeOfSteadyStatesCostsTheSameEverywhere)
{
    Course course = madeCourse(20000, heightOfSteep, northward);
    PowerProfile profile = LeastTime({model, block, course, options}, 200, 100).solve();
    double excess = 0, prices[2];
    const std::tuple<double, double, double> roads[] = {{8, 420, 3000}, {0, 540, 17000}}; // %, m above the sea, m
    for (size_t i : {0, 1}) {
        auto [slope, height, metres] = roads[i];
        now.physics = Physics::ofTheRoad;
        setAir(now, airPressureAt(20, height), 20);
        takeRoad(slope);
        auto seconds = [&, metres = metres](double watts) {
            return metres / velocityForPower(model, now, stagePedaling, watts).value;
        };
        double watts = profile.at(i == 0 ? 1500 : 12000), s = std::pow(watts / 200, 4);
        double fall = (seconds(watts * 1.01) - seconds(watts * 0.99)) / (0.02 * watts);
        prices[i] = -fall / (fall * (s - 1) + seconds(watts) * 4 * s / watts);
        excess += seconds(watts) * (s - 1);
    }
    EXPECT_NEAR(prices[0] / prices[1], 1, 0.03);
    EXPECT_NEAR(excess, 0, 15) << "s of some 2,800";
}

// The slope of its time by a little more power in one place; and that the normalised power grows as all powers do.
TEST_F(PlanTest, APointOfMassKnowsWhatALittleMorePowerChanges)
{
    Course course = madeCourse(12000, hills(60, 3000), northward);
    PointMass mass({model, block, course, options}, 200);
    std::vector<double> powers(mass.cells(), 200);
    mass.ride(powers);
    CourseRide ridden = ride(course, 200);
    EXPECT_NEAR(mass.seconds / ridden.movingSeconds, 1, 0.02) << "which sets off from a stand";
    EXPECT_NEAR(mass.normalisedPower / ridden.normalisedPower, 1, 0.01);
    PointMass::Gradient gradient = mass.gradient(powers);
    EXPECT_NEAR(std::inner_product(powers.begin(), powers.end(), gradient.normalised.begin(), 0.0), 1, 0.05);
    for (size_t cell : {15U, 25U, 80U, 90U, 140U}) { // up, where nobody rests
        auto secondsAt = [&](double watts) {
            powers[cell] = watts;
            mass.ride(powers);
            powers[cell] = 200;
            return mass.seconds;
        };
        double slope = (secondsAt(205) - secondsAt(195)) / 10;
        EXPECT_NEAR(gradient.seconds[cell] / slope, 1, 0.05) << cell;
    }
}

TEST_F(PlanTest, TakesTheFastestOfItsPlans)
{
    Course course = madeCourse(20000, hills(30, 1500), northward);
    options.pacing = pacingPlan;
    PlannedCourse planned = plan(course);
    Planning planning(model, block, course, options);
    for (double slopesOver : {100.0, 400.0, 800.0}) {
        PowerProfile other = LeastTime(planning.conditions(), planned.power, slopesOver).solve();
        ASSERT_TRUE(planning.solve(other, {false, planned.even.normalisedPower}, planned.power));
        EXPECT_GE(planning.ride(other).movingSeconds, planned.ride.movingSeconds - 0.5) << slopesOver;
    }
    for (double watts : plan(madeCourse(20000, slopeOf(0), northward)).profile.watts)
        EXPECT_NEAR(watts, 200, 1) << "on the flat";
}

TEST_F(PlanTest, SolvesForWhatIsWanted)
{
    Course course = madeCourse(20000, hills(60, 5000), northward);
    options.evenStops = 1;
    options.evenStopSeconds = 120;
    for (int32_t pacing : {pacingEven, pacingThree, pacingPlan}) {
        SCOPED_TRACE(pacingLabels[pacing]);
        options.pacing = pacing;
        options.effort = effortTime;
        options.time = 2700;
        EXPECT_NEAR(plan(course).ride.seconds, 2700, 0.5);
        options.effort = effortNormalised;
        options.power = 230;
        EXPECT_NEAR(plan(course).ride.normalisedPower, 230, 0.1);
        options.effort = effortFtpShare;
        EXPECT_NEAR(plan(course).ride.normalisedPower, m.ftp * 0.75, 0.1);
    }
    options.pacing = pacingThree;
    PlannedCourse three = plan(course);
    EXPECT_NEAR(three.threePowers[0] / three.threePowers[1], 1.15, 1e-6);
    EXPECT_NEAR(three.threePowers[2] / three.threePowers[1], 0.60, 1e-6);
    options.effort = effortTime;
    options.time = 60;
    plan(course, planTimeOutOfReach);
}

// A ride of 20.6 km, its second half harder: along a road of nearly its length to the same share of it, and along
// another one to the same metres.
TEST_F(PlanTest, TakesThePowersOfARideAlongItsRoad)
{
    TestFolder folder;
    MeasuredRide ride;
    for (uint32_t i = 0; i <= 2060; ++i)
        ride.seconds.push_back(
            {1000000000 + i, 47 + i * 10 / metresPerDegree, 8, 300, 10, i < 1030 ? 150.0 : 250.0, 90});
    options.effort = effortAsRidden;
    options.asRidden = folder.path + "ride.fit";
    writeBytes(options.asRidden, fileOf(ride));
    for (auto [length, change] : {std::pair{20000.0, 10000.0}, {15000.0, 10300.0}}) {
        PowerProfile profile = plan(madeCourse(length, slopeOf(0), northward)).profile;
        EXPECT_NEAR(profile.at(change - 300), 150, 1e-9) << length;
        EXPECT_NEAR(profile.at(change + 300), 250, 1e-9) << length;
    }
}

TEST_F(PlanTest, TellsTheBandOfTheTime)
{
    Course course = madeCourse(20000, slopeOf(0), northward);
    PlannedCourse planned = plan(course);
    double less = ride(course, 200 / 1.02).movingSeconds; // power that was meant as normalised power
    EXPECT_NEAR(planned.fastest, planned.ride.movingSeconds * 0.9, 1);
    EXPECT_NEAR(planned.slowest, less * 1.1, 1);
    for (auto [halfInterval, wider] : {std::pair{0.1F, 1.05}, {0.0F, 1.1}, {0.3F, 1.1}}) { // 0: entered by hand
        model.calibration = {.dragFactor = 1, .halfInterval = halfInterval, .day = 0, .temperature = 0};
        EXPECT_NEAR(plan(course).slowest, less * wider, 1) << halfInterval;
    }
}

TEST_F(PlanTest, TellsWhatElseWouldHaveComeOfIt)
{
    Course course = madeCourse(
        20000, [](double way) { return std::clamp(way - 5000, 0.0, 2000.0) * 0.18; }, northward);
    PlannedCourse planned = plan(course);
    auto answers = whatIfs(model, block, course, options, planned);
    EXPECT_NEAR(answers[ifMorePower].seconds, ride(course, 210).seconds - planned.ride.seconds, 1e-9);
    for (WhatIf faster : {ifMorePower, ifLessWeight, ifLessDrag, ifLowerGear})
        EXPECT_LT(answers[faster].seconds, 0) << faster;
    EXPECT_GT(answers[ifHeadWind].seconds, 60);
    EXPECT_LT(answers[ifLowerGear].walkMetres, planned.ride.walkMetres);
    Course down = madeCourse(
        10000, [](double way) { return -std::min(way, 5000.0) * 0.05; }, northward);
    CourseRide more;
    rideCourse({model, block, down, options}, {5000, {0, 210}}, more);
    planned.profile = {5000, {0, 200}};
    planned.ride.seconds = 0;
    EXPECT_NEAR(whatIfs(model, block, down, options, planned)[ifMorePower].seconds, more.seconds, 1e-9)
        << "who rests, rests";
}

TEST(PlanOptions, TakeStopsInWords)
{
    PlanOptions options;
    ASSERT_TRUE(takeStops("85.5:300s, 3x10min 40:1h", options));
    ASSERT_EQ(options.stops.size(), 2u);
    const Stop &first = options.stops[0], &second = options.stops[1];
    expectFigures({first.distance, first.seconds, second.distance, second.seconds}, {40000, 3600, 85500, 300});
    expectFigures({options.evenStops, options.evenStopSeconds}, {3, 600});
    for (const char* text : {"3", "x10min", "3x", "3x10", "3x10 min", "-1:5s", "1.5x3s", "nan:3s", "3x1min 2x1min",
                             "100x240h", "1:240h 2:1s"})
        EXPECT_FALSE(takeStops(text, options)) << text;
    EXPECT_EQ(options.evenStops, 3);
    EXPECT_TRUE(takeStops("", options));
    expectFigures({options.stops.size(), options.evenStops}, {0, 0});
}

} // namespace torvane
