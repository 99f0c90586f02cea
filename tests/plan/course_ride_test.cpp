// Rides over time against what must be true of them: the steady states of the calculators, energy.
#include "plan/made_course.h"

#include "model/assist.h"
#include "model/derived.h"
#include "model/solver.h"

#include <algorithm>
#include <tuple>

namespace torvane {

TEST_F(PlanTest, EndsInTheVelocityOfTheCalculators)
{
    options.altitudeSmoothing = 0;
    options.topSpeed = 100;
    struct Case {
        double slope, watts, heading, from, ahead; // %, W, deg, deg, m/s
    };
    for (const Case& c : {Case{-6, 0, 0, 0, 0},
                          {-4, 0, 0, 0, 0},
                          {-1, 200, 0, 0, 0},
                          {3, 250, 0, 0, 0},
                          {7, 300, 0, 0, 0},
                          {0, 200, 0, 0, 4},
                          {0, 200, 180, 0, -4},
                          {0, 200, 60, 0, 2},
                          {0, 200, -60, 0, 2},
                          {0, 200, 0, 60, 2},
                          {0, 200, 90, 0, 0}}) {
        options.windSpeed = c.watts == 200 && c.slope == 0 ? 4 : 0;
        options.windDirection = c.from;
        // Level with the sea where it is measured, since air thins on the way up.
        auto height = [&](double way) { return (way - 6000) * c.slope / 100; };
        auto heading = [&](double) { return c.heading; };
        CourseRide ridden = ride(madeCourse(6000, height, heading, options), c.watts);
        takeRoad(c.slope);
        setAir(now, 1013.25, 20);
        now.physics = Physics::ofTheRoad;
        now.headWind = c.ahead;
        double steady = velocityForPower(model, now, c.watts > 0 ? stagePedaling : stageThrust, c.watts).value;
        EXPECT_NEAR(ridden.steps.back().speed / steady, 1, 1e-3) << c.slope << " %, " << c.heading << ", " << c.from;
    }
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
        EXPECT_LE(to.speed, options.topSpeed + 1e-9) << to.distance;
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
    EXPECT_GE(strong.lowestCadence, options.leastCadence);
}

TEST_F(PlanTest, RidesWithAMotorAsFarAsItHelps)
{
    Course course = madeCourse(10000, slopeOf(3), northward);
    double alone = ride(course, 150).seconds;
    for (int32_t motor : {motorHub, motorCrank}) {
        SCOPED_TRACE(motor);
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

} // namespace torvane
