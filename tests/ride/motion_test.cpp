// The laws that all runs share: step lengths, gears, one step of motion.
#include "ride/motion.h"

#include "ride/ride_fixture.h"

#include <limits>

namespace torvane {

TEST(QuantizeInterval, takesTheNearestPartOfASecond)
{
    struct Case {
        double wanted, step;
    };
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr Case cases[] = {
        {0.5, 1.0 / 2},      {0.3, 1.0 / 4},    {0.37, 1.0 / 4},   {0.38, 1.0 / 2},    {0.21, 1.0 / 5},
        {0.13, 1.0 / 8},     {0.11, 1.0 / 10},  {0.076, 1.0 / 10}, {0.07, 1.0 / 20},   {0.041, 1.0 / 25},
        {0.03, 1.0 / 40},    {0.023, 1.0 / 40}, {0.018, 1.0 / 50}, {0.012, 1.0 / 100}, {0.0, 1.0 / 100},
        {infinity, 1.0 / 2}, {7.0, 1.0 / 2},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(quantizeInterval(c.wanted), c.step) << c.wanted;
    }
}

using MotionTest = RideTest;

TEST_F(MotionTest, aStepOfConstantAcceleration)
{
    StepState s;
    s.velocity = 10.0;
    s.accele = -2.0;
    s.distance = 100.0;
    advance(s, 0.5);
    EXPECT_DOUBLE_EQ(s.velocity, 9.0);
    EXPECT_DOUBLE_EQ(s.distance, 104.75);
}

TEST_F(MotionTest, theEndTakesTheOvershootForAFractionOfTheStep)
{
    runState.endVelocity = 10.0;
    StepState s;
    s.velocity = 10.4;
    s.accele = 2.0; // 0.2 s beyond the end, used as 0.2 of a step of 0.5 s
    s.distance = 50.0;
    s.time = 3.0;
    EXPECT_NEAR(settleAtVelocity(s, 0.5), 0.2, 1e-12);
    EXPECT_NEAR(s.distance, 50.0 - 20.4 * 0.5 * 0.5 * 0.2, 1e-12);
    EXPECT_NEAR(s.time, 3.4, 1e-12);
    EXPECT_EQ(s.velocity, 10.0);
}

TEST_F(MotionTest, standstillKnowsForcesAlone)
{
    modelState.totalWeight = 80.0;
    modelState.inertialWeight = 82.0;
    runState.inclination = -75.0; // 3-4-5: the sine is -0.6
    EXPECT_NEAR(gravityAcceleration(0.0), 48.0 * 9.80665 / 82.0, 1e-12);
    EXPECT_NEAR(gravityAcceleration(-48.0), 0.0, 1e-12);
}

TEST_F(MotionTest, aChosenStartGearStaysWithinTheTable)
{
    runState.startGearMode[1] = 1;
    runState.startGearIndex[1] = 99;
    EXPECT_EQ(startGear(1, 5.0), modelState.gearCount - 1);
    runState.startGearIndex[1] = -1;
    EXPECT_EQ(startGear(1, 5.0), 0);
    EXPECT_EQ(startGear(0, 0.0), 0); // automatic, from standstill
}

TEST_F(MotionTest, theLargestAcceleKeepsItsSign)
{
    for (double accele : {-0.5, 0.3, -1.5, 1.4}) {
        followLargestAccele(accele);
    }
    EXPECT_EQ(runState.maxAccele, -1.5);
}

} // namespace torvane
