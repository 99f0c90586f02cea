// Rides over time against what must be true of them: the steady states of the calculators, energy.
#include "plan/made_course.h"

#include "model/assist.h"
#include "model/derived.h"
#include "model/solver.h"

#include <algorithm>
#include <tuple>

namespace torvane {

namespace {

// Up, down and around, with bends.
Course windingCourse(const PlanOptions& options)
{
    auto heading = [](double way) { return 60 * std::sin(way / 150); };
    auto height = [](double way) { return 300 + 40 * std::sin(way / 700) + 8 * std::sin(way / 130); };
    return madeCourse(20000, height, heading, options, 2);
}

} // namespace

TEST_F(PlanTest, EndsInTheVelocityOfTheCalculators)
{
    options.altitudeSmoothing = 0;
    options.topSpeed = 100;
    for (auto [slope, watts] :
         {std::pair{-6.0, 0.0}, {-4.0, 0.0}, {-1.0, 200.0}, {0.0, 200.0}, {3.0, 250.0}, {7.0, 300.0}}) {
        // Level with the sea where it is measured, since air thins on the way up.
        auto height = [slope = slope](double way) { return (way - 6000) * slope / 100; };
        setAir(now, 1013.25, 20);
        takeRoad(slope);
        double steady = velocityForPower(model, now, watts > 0 ? stagePedaling : stageThrust, watts).value;
        double ended = ride(madeCourse(6000, height, northward, options), watts).steps.back().speed;
        EXPECT_NEAR(ended / steady, 1, 1e-3) << slope << " %";
    }
}

TEST_F(PlanTest, KeepsItsTimeAndItsEnergyInFinerSteps)
{
    double seconds[3];
    const std::pair<double, double> steps[3] = {{0.5, 10}, {0.25, 10}, {0.5, 5}}; // s, m
    for (int i = 0; i < 3; ++i) {
        std::tie(options.timeStep, options.courseStep) = steps[i];
        CourseRide ridden = ride(windingCourse(options), 220);
        const EnergyBalance& e = ridden.energy;
        EXPECT_NEAR((e.slope + e.air + e.rolling + e.brakes + e.kinetic) / e.thrust, 1, 1e-3);
        EXPECT_NEAR((e.slope - e.heights) / e.thrust, 0, 1e-3);
        EXPECT_GT(e.brakes, 0);
        seconds[i] = ridden.seconds;
    }
    EXPECT_NEAR(seconds[1] / seconds[0], 1, 5e-4);
    EXPECT_NEAR(seconds[2] / seconds[0], 1, 2e-3);
}

TEST_F(PlanTest, BrakesInFrontOfBendsAndStops)
{
    // A descent with a bend of 20 m radius after 2 km, and a stop after 3 km.
    auto turn = [](double way) { return std::clamp((way - 2000) / 20 * 180 / pi, 0.0, 180.0); };
    options.stops = {{3000, 300}, {3000, 200}, {3010, 100}};
    Course course = madeCourse(4000, slopeOf(-6), turn, options, 1);
    CourseRide ridden = ride(course, 100);
    double slowest = 100, standing = 0;
    for (size_t i = 1; i < ridden.steps.size(); ++i) {
        const CourseStep &from = ridden.steps[i - 1], &to = ridden.steps[i];
        if (to.going == Going::standing)
            standing += to.time - from.time;
        else
            EXPECT_GT(to.speed - from.speed, -options.brakeDeceleration * options.timeStep * 1.1) << to.distance;
        if (to.distance > 1900 && to.distance < 2200)
            slowest = std::min(slowest, to.speed);
        EXPECT_LE(to.speed, options.topSpeed + 1e-9);
    }
    EXPECT_NEAR(slowest, std::sqrt(4.0 * 20), 1.5); // positions smoothed over 30 m cut the bend a little
    EXPECT_EQ(standing, 600);
    EXPECT_NEAR(ridden.seconds - ridden.movingSeconds, 600, 1e-6);
    EXPECT_GT(ridden.hottest[0], 25);
}

TEST_F(PlanTest, WalksWhereTheLowestGearIsTooHigh)
{
    Course course = madeCourse(
        3000, [](double way) { return std::clamp(way - 1000, 0.0, 500.0) * 0.2; }, northward);
    CourseRide weak = ride(course, 150), strong = ride(course, 400);
    EXPECT_NEAR(weak.walkMetres, 500, 60);
    EXPECT_NEAR(weak.walkSeconds, weak.walkMetres / (4 / 3.6), 1);
    EXPECT_EQ(strong.walkMetres, 0);
    const EnergyBalance& e = weak.energy;
    EXPECT_NEAR((e.slope + e.air + e.rolling + e.brakes + e.kinetic) / (e.thrust + e.walked), 1, 1e-3);
    double slowest = options.leastCadence * model.gearTable[0].ratio * m.rearCircumference / 60000;
    EXPECT_GE(strong.lowestCadence, options.leastCadence);
    EXPECT_LT(slowest, 2.5);
}

TEST_F(PlanTest, RidesWithAMotorAsFarAsItHelps)
{
    Course course = madeCourse(10000, slopeOf(3), northward);
    double alone = ride(course, 150).seconds;
    for (int32_t motor : {motorHub, motorCrank}) {
        block.motorLocation = motor;
        std::fill(std::begin(block.assistRangeMode), std::end(block.assistRangeMode), rangeConstant);
        restart();
        CourseRide ridden = ride(course, 150);
        takeRoad(3);
        setAir(now, airPressureAt(20, 300), 20);
        double steady = assistedVelocityForPower(model, now, stagePedaling, 150).value;
        EXPECT_NEAR(ridden.steps.back().speed / steady, 1, 2e-3);
        EXPECT_NEAR(ridden.steps.back().power, 150, 1e-6);
        EXPECT_GT(ridden.steps.back().motor, 100);
        EXPECT_LT(ridden.seconds, 0.8 * alone);
        const EnergyBalance& e = ridden.energy;
        EXPECT_NEAR((e.slope + e.air + e.rolling + e.brakes + e.kinetic) / e.thrust, 1, 1e-3);
    }
}

TEST_F(PlanTest, LosesMoreAgainstTheWindThanItGainsWithIt)
{
    Course out = madeCourse(10000, slopeOf(0), northward);
    Course back = madeCourse(10000, slopeOf(0), [](double) { return 180; });
    double still = ride(out, 200).seconds + ride(back, 200).seconds;
    options.windSpeed = 4;
    double against = ride(out, 200).seconds, with = ride(back, 200).seconds;
    EXPECT_GT(against, with);
    EXPECT_GT(against + with, still * 1.02);
    takeRoad(0);
    now.physics = Physics::ofTheRoad;
    now.headWind = 4;
    setAir(now, 1013.25, 20);
    EXPECT_NEAR(ride(out, 200).steps.back().speed / velocityForPower(model, now, stagePedaling, 200).value, 1, 1e-3);
}

} // namespace torvane
