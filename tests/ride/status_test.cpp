// What every simulation answers when it cannot run, or runs into a limit.
#include "ride/ride_status.h"

#include "ride/ride_fixture.h"

#include <limits>
#include <ostream>

namespace torvane {

namespace {

using Block = ParameterBlock&;

struct StatusCase {
    const char* name;
    RideMode mode;
    int target;
    void (*change)(Block);
    ResultStatus status;
};

std::ostream& operator<<(std::ostream& out, const StatusCase& c)
{
    return out << c.name;
}

void level(Block b, int mode, double start, double end)
{
    b.rideStartVelocity[mode] = kph(start);
    b.rideEndVelocity[mode] = kph(end);
}

void rollDown(Block b)
{
    level(b, 2, 35, 30);
    b.rideInclination[2] = -15;
}

constexpr StatusCase cases[] = {
    {"acceleration: start is end", rideAcceleration, 0, [](Block b) { level(b, 1, 40, 40); }, statusIllegalValue},
    {"acceleration: seek with start above end", rideAcceleration, 4, [](Block b) { level(b, 1, 50, 40); },
     statusIllegalValue},
    {"acceleration: negative power", rideAcceleration, 0, [](Block b) { b.ridePower[1] = -1; }, statusIllegalValue},
    {"acceleration: distance 0", rideAcceleration, 5, [](Block b) { b.rideDistance[1] = 0; }, statusIllegalValue},
    {"acceleration: no interval", rideAcceleration, 0,
     [](Block b) { b.accelerationIntervalMode = 1, b.accelerationInterval = 0; }, statusIllegalValue},
    {"acceleration: power holds less than the start", rideAcceleration, 0,
     [](Block b) { level(b, 1, 35, 40), b.ridePower[1] = 100; }, statusTooShortPower},
    {"acceleration: a wall", rideAcceleration, 0, [](Block b) { b.rideInclination[1] = 100; }, statusNoAcceleration},
    {"acceleration: no kick from standstill", rideAcceleration, 0, [](Block b) { b.initialKickTime = 0; },
     statusNotConverged},
    {"acceleration: sector time too long", rideAcceleration, 4, [](Block b) { b.rideLegTime[1] = 1000; },
     statusTooLongTime},
    {"acceleration: distance too long", rideAcceleration, 5, [](Block b) { b.rideDistance[1] = 100000; },
     statusTooLongDistance},
    {"acceleration: accele too small", rideAcceleration, 6, [](Block b) { b.rideAccele[1] = 0.01; },
     statusTooHighAccele},
    {"acceleration: a wheel that spins", rideAcceleration, 0,
     [](Block b) { b.frictionCoefficient[0] = b.frictionCoefficient[1] = 0.05; }, statusWheelSpin},
    {"acceleration: beyond the gears", rideAcceleration, 8, [](Block b) { level(b, 1, 60, 75), b.ridePower[1] = 3000; },
     statusOverReach},
    {"acceleration: an ending velocity beyond the gears is no news", rideAcceleration, 2,
     [](Block b) { level(b, 1, 60, 75); }, statusEndNotReached},
    {"acceleration: gravity that shifting eats up", rideAcceleration, 7, [](Block b) { b.rideGravity[1] = 1.2; },
     statusNotConverged},

    {"deceleration: positive accele", rideDeceleration, 5, [](Block b) { b.rideAccele[2] = 0.1; }, statusIllegalValue},
    {"deceleration: rolls on by itself", rideDeceleration, 0, rollDown, statusNoDeceleration},
    {"deceleration: mean power above that of the end", rideDeceleration, 1, [](Block b) { b.ridePower[2] = 300; },
     statusTooLargePower},
    {"deceleration: power holds more than the end", rideDeceleration, 0, [](Block b) { b.ridePower[2] = 300; },
     statusDeclineMayStop},
    {"deceleration: sector time too long", rideDeceleration, 3, [](Block b) { b.rideLegTime[2] = 1000; },
     statusTooLongTime},
    {"deceleration: distance too long", rideDeceleration, 4, [](Block b) { b.rideDistance[2] = 100000; },
     statusTooLongDistance},
    {"deceleration: accele too small", rideDeceleration, 5, [](Block b) { b.rideAccele[2] = 0; }, statusTooHighAccele},

    {"braking: full, start below end", ridePatternBraking, 1, [](Block b) { level(b, 3, 30, 40); }, statusIllegalValue},
    {"braking: full, without friction", ridePatternBraking, 1,
     [](Block b) { b.frictionCoefficient[0] = b.frictionCoefficient[1] = 0; }, statusNotConverged},
    {"braking: more than the tyres take", ridePatternBraking, 0, [](Block b) { b.rideForce[3] = -100; }, statusSlip},
    {"braking: no force slows in its own time", ridePatternBraking, 0, [](Block b) { b.rideForce[3] = 0; }, 0},
    {"braking: velocity 0", ridePatternBraking, 2, [](Block b) { level(b, 3, 70, 0); }, statusIllegalValue},
    {"braking: velocity on the level", ridePatternBraking, 2, [](Block b) { b.brakingInclination[2] = 0; },
     statusTooSmallGradient},
    {"braking: velocity above what rolls", ridePatternBraking, 2, [](Block b) { level(b, 3, 70, 90); },
     statusNoBrakingNeeded},
    {"braking: a way of years", ridePatternBraking, 2,
     [](Block b) { level(b, 3, 70, 0.001), b.totalDistance = 100000; }, statusIllegalValue},
    {"braking: intervals too short", ridePatternBraking, 3, [](Block b) { b.intervalDistance = 10; },
     statusTooShortInterval},
    {"braking: an interval of hours", ridePatternBraking, 3, [](Block b) { b.intervalDistance = 100000; },
     statusNotConverged},

    {"rolling: level", rideInclinationAndVelocity, 0, [](Block b) { b.rideInclination[4] = 0; },
     statusTooSmallGradient},
    {"rolling: velocity 0", rideInclinationAndVelocity, 1, [](Block b) { b.rideVelocity[4] = 0; },
     statusTooSmallVelocity},
    {"rolling: faster than asked, even on the gentlest slope", rideInclinationAndVelocity, 1,
     [](Block b) { b.inclinationLimit = 1, b.rideStartVelocity[4] = kph(60), b.rideVelocity[4] = kph(10); },
     statusBeyondTolerance},
    {"rolling: no interval", rideInclinationAndVelocity, 0,
     [](Block b) { b.accelerationIntervalMode = 1, b.accelerationInterval = std::numeric_limits<double>::quiet_NaN(); },
     statusIllegalValue},
    {"cornering: beyond the gears", rideCriticalCornering, 0, [](Block b) { b.corneringRadius = 100; },
     statusOverReach},
};

} // namespace

class RideStatus : public RideTest, public ::testing::WithParamInterface<StatusCase> {};

TEST_P(RideStatus, isAnswered)
{
    const StatusCase& c = GetParam();
    c.change(workingBlock);
    workingBlock.expressGraph = 1;
    const RideResult result = ride(c.mode, c.target);
    EXPECT_EQ(result.status, c.status) << c.name;
    EXPECT_EQ(result.graph.has_value(), !isFatal(c.status) && c.mode != rideCriticalCornering) << c.name;
    if (isFatal(c.status)) {
        EXPECT_TRUE(result.log.rows.empty() && result.log.sectors.empty()) << c.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Rides, RideStatus, ::testing::ValuesIn(cases));

using SeekLimits = RideTest;

// The title quotes what was asked for, the message what would be possible.
TEST_F(SeekLimits, standBesideTheWantedFigure)
{
    workingBlock.rideLegTime[1] = 1000.0;
    EXPECT_EQ(ride(rideAcceleration, 4).status, statusTooLongTime);
    EXPECT_EQ(runState.sectorTime, 1000.0);
    EXPECT_EQ(runState.seekLow, 0.0);
    EXPECT_NEAR(runState.seekHigh, 104.72, 0.005);

    workingBlock.rideGravity[1] = 0.001;
    EXPECT_EQ(ride(rideAcceleration, 7).status, statusTooHighAccele);
    EXPECT_NEAR(runState.seekLow, 40.0 / 3.6 / 104.72 / 35.30394, 1e-6);
    EXPECT_EQ(runState.seekHigh, 0.0);

    workingBlock.rideDistance[2] = 100000.0;
    EXPECT_EQ(ride(rideDeceleration, 4).status, statusTooLongDistance);
    EXPECT_EQ(runState.distance, 100000.0);
    EXPECT_NEAR(runState.seekLow, 313.417, 0.001);
}

// Nothing of the run before may answer for one that did not run.
TEST_F(SeekLimits, aRefusedRunHasNoResults)
{
    ASSERT_EQ(ride(rideAcceleration, 0).status, 0u);
    ASSERT_GT(runState.peakPower[stagePedaling], 0.0);
    workingBlock.ridePower[1] = -1;
    workingBlock.rideMode = rideAcceleration;
    prepareRideRun();
    RideResult result;
    runRide(result);
    EXPECT_EQ(runState.peakPower[stagePedaling], 0.0);
    EXPECT_EQ(runState.meanStagePower[stagePedaling], 0.0);
}

} // namespace torvane
