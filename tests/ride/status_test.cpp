// What every simulation answers when it cannot run, or runs into a limit.
#include "core/result_status.h"

#include "ride/ride_fixture.h"

#include <limits>

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
    {"start is end", rideAcceleration, 0, [](Block b) { level(b, 1, 40, 40); }, statusIllegalValue},
    {"start above end", rideAcceleration, 4, [](Block b) { level(b, 1, 50, 40); }, statusIllegalValue},
    {"negative power", rideAcceleration, 0, [](Block b) { b.ridePower[1] = -1; }, statusIllegalValue},
    {"distance 0", rideAcceleration, 5, [](Block b) { b.rideDistance[1] = 0; }, statusIllegalValue},
    {"no interval", rideAcceleration, 0, [](Block b) { b.accelerationIntervalMode = 1, b.accelerationInterval = 0; },
     statusIllegalValue},
    {"less than the start", rideAcceleration, 0, [](Block b) { level(b, 1, 35, 40), b.ridePower[1] = 100; },
     statusTooShortPower},
    {"a wall", rideAcceleration, 0, [](Block b) { b.rideInclination[1] = 100; }, statusNoAcceleration},
    {"no kick", rideAcceleration, 0, [](Block b) { b.initialKickTime = 0; }, statusNotConverged},
    {"time too long", rideAcceleration, 4, [](Block b) { b.rideLegTime[1] = 1000; }, statusTooLongTime},
    {"distance too long", rideAcceleration, 5, [](Block b) { b.rideDistance[1] = 100000; }, statusTooLongDistance},
    {"accele too small", rideAcceleration, 6, [](Block b) { b.rideAccele[1] = 0.01; }, statusTooHighAccele},
    {"spin", rideAcceleration, 0, [](Block b) { b.frictionCoefficient[0] = b.frictionCoefficient[1] = 0.05; },
     statusWheelSpin},
    {"beyond the gears", rideAcceleration, 8, [](Block b) { level(b, 1, 60, 75), b.ridePower[1] = 3000; },
     statusOverReach},
    {"end beyond the gears", rideAcceleration, 2, [](Block b) { level(b, 1, 60, 75); }, statusEndNotReached},
    {"shifting eats gravity", rideAcceleration, 7, [](Block b) { b.rideGravity[1] = 1.2; }, statusNotConverged},

    {"no such way downhill", rideAcceleration, 5,
     [](Block b) { level(b, 1, 53.47, 54), b.rideInclination[1] = -9, b.rideDistance[1] = 1644; },
     statusLooseTolerance},

    {"time 0", rideDeceleration, 3, [](Block b) { b.rideLegTime[2] = 0; }, statusIllegalValue},
    {"time, start below end", rideDeceleration, 3, [](Block b) { level(b, 2, 30, 40); }, statusIllegalValue},
    {"distance 0", rideDeceleration, 4, [](Block b) { b.rideDistance[2] = 0; }, statusIllegalValue},
    {"distance, start below end", rideDeceleration, 4, [](Block b) { level(b, 2, 30, 40); }, statusIllegalValue},
    {"accele, start below end", rideDeceleration, 5, [](Block b) { level(b, 2, 30, 40); }, statusIllegalValue},
    {"positive accele", rideDeceleration, 5, [](Block b) { b.rideAccele[2] = 0.1; }, statusIllegalValue},
    {"rolls on by itself", rideDeceleration, 0, rollDown, statusNoDeceleration},
    {"mean power above", rideDeceleration, 1, [](Block b) { b.ridePower[2] = 300; }, statusTooLargePower},
    {"more than the end", rideDeceleration, 0, [](Block b) { b.ridePower[2] = 300; }, statusDeclineMayStop},
    {"time too long", rideDeceleration, 3, [](Block b) { b.rideLegTime[2] = 1000; }, statusTooLongTime},
    {"time too long for what holds", rideDeceleration, 3, [](Block b) { level(b, 2, 61.62, 56.88); },
     statusTooLongTime | statusDeclineMayStop},
    {"distance too long", rideDeceleration, 4, [](Block b) { b.rideDistance[2] = 100000; }, statusTooLongDistance},
    {"accele too small", rideDeceleration, 5, [](Block b) { b.rideAccele[2] = 0; }, statusTooHighAccele},

    {"full, start below end", ridePatternBraking, 1, [](Block b) { level(b, 3, 30, 40); }, statusIllegalValue},
    {"no friction", ridePatternBraking, 1, [](Block b) { b.frictionCoefficient[0] = b.frictionCoefficient[1] = 0; },
     statusNotConverged},
    {"more than the tyres take", ridePatternBraking, 0, [](Block b) { b.rideForce[3] = -100; }, statusSlip},
    {"no force", ridePatternBraking, 0, [](Block b) { b.rideForce[3] = 0; }, 0},
    {"velocity 0", ridePatternBraking, 2, [](Block b) { level(b, 3, 70, 0); }, statusIllegalValue},
    {"velocity on the level", ridePatternBraking, 2, [](Block b) { b.brakingInclination[2] = 0; },
     statusTooSmallGradient},
    {"above what rolls", ridePatternBraking, 2, [](Block b) { level(b, 3, 70, 90); }, statusNoBrakingNeeded},
    {"a way of years", ridePatternBraking, 2, [](Block b) { level(b, 3, 70, 0.001), b.totalDistance = 100000; },
     statusIllegalValue},
    {"intervals too short", ridePatternBraking, 3, [](Block b) { b.intervalDistance = 10; }, statusTooShortInterval},
    {"an interval of hours", ridePatternBraking, 3, [](Block b) { b.intervalDistance = b.totalDistance = 100000; },
     statusNotConverged},
    {"one that is not ridden", ridePatternBraking, 3, [](Block b) { b.intervalDistance = 100000; }, 0},

    {"level", rideInclinationAndVelocity, 0, [](Block b) { b.rideInclination[4] = 0; }, statusTooSmallGradient},
    {"velocity 0", rideInclinationAndVelocity, 1, [](Block b) { b.rideVelocity[4] = 0; }, statusTooSmallVelocity},
    {"always faster", rideInclinationAndVelocity, 1,
     [](Block b) { b.inclinationLimit = 1, b.rideStartVelocity[4] = kph(60), b.rideVelocity[4] = kph(10); },
     statusBeyondTolerance},
    {"no interval", rideInclinationAndVelocity, 0,
     [](Block b) { b.accelerationIntervalMode = 1, b.accelerationInterval = std::numeric_limits<double>::quiet_NaN(); },
     statusIllegalValue},
    {"all power lost", ridePowerAndVelocity, 0, [](Block b) { b.missionLossPercent = 100; }, statusNotConverged},
    {"all power lost behind a motor", ridePowerAndVelocity, 0,
     [](Block b) { b.missionLossPercent = 100, b.motorLocation = 1, b.assistRangeMode[0] = b.assistRangeMode[1] = 1; },
     statusNotConverged},
    {"beyond the gears", rideCriticalCornering, 0, [](Block b) { b.corneringRadius = 100; }, statusOverReach},
};

} // namespace

using RideStatus = RideTest;

TEST_F(RideStatus, isAnswered)
{
    for (const StatusCase& c : cases) {
        SCOPED_TRACE(std::to_string(c.mode) + ": " + c.name);
        setDefaults(block);
        block.expressGraph = 1;
        c.change(block);
        run(c.mode, c.target);
        EXPECT_EQ(ride->status, c.status);
        EXPECT_EQ(ride->graph.has_value(), !isFatal(c.status) && c.mode != rideCriticalCornering);
        EXPECT_TRUE(!isFatal(c.status) || (ride->log.rows.empty() && ride->log.sectors.empty()))
            << ride->log.rows.size() << " rows, " << ride->log.sectors.size() << " sectors";
    }
}

// The title quotes what was asked for, the message what would be possible.
TEST_F(RideStatus, limitsStandBesideTheWantedFigure)
{
    level(block, 2, 30, 40);
    block.rideAccele[2] = -0.3;
    EXPECT_EQ(run(rideDeceleration, 5).status, statusIllegalValue);
    EXPECT_EQ(ride->found.accele, -0.3);
    level(block, 1, 40, 40);
    EXPECT_EQ(run(rideAcceleration, 2).status, statusIllegalValue);
    EXPECT_EQ(ride->found.power, 800.0);

    setDefaults(block);
    block.rideLegTime[1] = 1000.0;
    EXPECT_EQ(run(rideAcceleration, 4).status, statusTooLongTime);
    EXPECT_EQ(ride->found.sectorTime, 1000.0);
    EXPECT_EQ(ride->found.seekLow, 0.0);
    EXPECT_NEAR(ride->found.seekHigh, 104.72, 0.005);

    block.rideGravity[1] = 0.001;
    EXPECT_EQ(run(rideAcceleration, 7).status, statusTooHighAccele);
    EXPECT_NEAR(ride->found.seekLow, 40.0 / 3.6 / 104.72 / 35.30394, 1e-6);
    EXPECT_EQ(ride->found.seekHigh, 0.0);

    block.rideDistance[2] = 100000.0;
    EXPECT_EQ(run(rideDeceleration, 4).status, statusTooLongDistance);
    EXPECT_EQ(ride->found.distance, 100000.0);
    EXPECT_NEAR(ride->found.seekLow, 313.417, 0.001);
}

} // namespace torvane
