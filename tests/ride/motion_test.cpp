// What all runs share: step lengths, start gears, the record of a run.
#include "ride/motion.h"

#include "captured_screens.h"
#include "core/progress.h"
#include "core/text.h"
#include "ride/ride_fixture.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace torvane {

TEST(QuantizeInterval, takesTheNearestPartOfASecond)
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double cases[][2] = {
        {0.5, 1.0 / 2},   {0.3, 1.0 / 4},   {0.37, 1.0 / 4},  {0.38, 1.0 / 2},   {0.21, 1.0 / 5},  {0.13, 1.0 / 8},
        {0.11, 1.0 / 10}, {0.07, 1.0 / 20}, {0.03, 1.0 / 40}, {0.018, 1.0 / 50}, {0.0, 1.0 / 100}, {infinity, 1.0 / 2},
    };
    for (auto [wanted, step] : cases)
        EXPECT_EQ(quantizeInterval(wanted), step) << wanted;
}

using MotionTest = RideTest;

TEST_F(MotionTest, aChosenStartGearStaysWithinTheTable)
{
    block.startGearMode[1] = 1;
    block.startGearIndex[1] = 99;
    EXPECT_EQ(startGear(prepare(rideDeceleration, 0), startOfDeceleration, 5.0), m.gearCount - 1);
    block.startGearIndex[1] = -1;
    EXPECT_EQ(startGear(prepare(rideDeceleration, 0), startOfDeceleration, 5.0), 0);
}

// Up a hill until it hardly moves: every gear in its turn, the highest first. Nobody pedals slower than who shifts down
// while a lower gear is there.
TEST_F(MotionTest, aDecelerationEndsInTheLowestGear)
{
    block.expressGraph = 1;
    block.rideStartVelocity[rideDeceleration] = kph(70);
    block.rideEndVelocity[rideDeceleration] = kph(3);
    block.rideInclination[rideDeceleration] = 12;
    block.ridePower[rideDeceleration] = 100;
    run(rideDeceleration, 0);
    std::string gears;
    for (const SampleRow& row : ride->log.rows)
        if (std::string gear = formatText("%dx%d ", row.frontTooth, row.rearTooth);
            row.time > 0 && !gears.ends_with(gear))
            gears += gear;
    for (const SampleRow& row : ride->log.rows)
        EXPECT_TRUE(row.cadence > 84 || row.rearTooth == 27 || row.time == 0) << row.time;
    EXPECT_EQ(gears, "51x11 51x12 51x13 51x14 51x15 51x17 42x17 42x19 42x21 42x23 42x25 42x27 ");
}

TEST_F(MotionTest, theBarOnlyGrowsAndReachesItsEnd)
{
    // Without acceleration, which loses velocity while it shifts.
    constexpr std::tuple<RideMode, int, int> cases[] = {
        {rideDeceleration, 0, 0},
        {ridePatternBraking, 0, 0},
        {ridePatternBraking, 2, 0},
        {ridePatternBraking, 3, 0},
        {rideInclinationAndVelocity, 0, limitDistance},
        {rideInclinationAndVelocity, 0, limitTime},
    };
    for (auto [mode, target, limit] : cases) {
        SCOPED_TRACE(testing::Message() << mode << ' ' << target << ' ' << limit);
        block.inclinationLimit = limit;
        RideInputs in = inputs(mode, target);
        CapturedScreens shown;
        Progress progress(shown.screens);
        runRide(model, in, &progress);
        ASSERT_GT(shown.progress.size(), 15u);
        EXPECT_TRUE(std::is_sorted(shown.progress.begin(), shown.progress.end()));
        EXPECT_GE(shown.progress.back(), 95);
    }
}

} // namespace torvane
