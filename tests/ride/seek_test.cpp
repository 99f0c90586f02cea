// The search loops, on runs whose answer is known in closed form.
#include "ride/seek.h"

#include "core/result_status.h"
#include "ride/ride_fixture.h"

#include <limits>

namespace torvane {

namespace {

int runs;

// A run of 1200 s and W: the stronger, the shorter.
ResultStatus shorterByPower(RideRun& ride)
{
    ++runs;
    ride.found.sectorTime = 1200.0 / ride.found.power;
    return 0;
}

} // namespace

class SeekTest : public RideTest {
protected:
    SeekTest()
    {
        runs = 0;
        block.rideEndVelocity[rideAcceleration] = 10.0;
        prepare(rideAcceleration, 0).found.velocity = 10.0;
    }

    Seek timeSeek(double wanted, double first, double step)
    {
        ride->found.power = first;
        return {&ride->found.power, &ride->found.sectorTime, wanted, step, 0.01, HighSide::belowWanted, 0.0};
    }
};

TEST_F(SeekTest, theVelocityReachedIsJudged)
{
    ride->found.velocity = 9.51; // 4.9 % of 10, 5.2 % of itself
    EXPECT_EQ(seekTarget(*ride, timeSeek(6.0, 100.0, 20.0), shorterByPower), statusLooseTolerance);
    ride->found.velocity = 9.0;
    EXPECT_EQ(seekTarget(*ride, timeSeek(6.0, 100.0, 20.0), shorterByPower), statusBeyondTolerance);
}

TEST_F(SeekTest, thePowerNeverGoesBelowZero)
{
    auto alwaysTooStrong = [](RideRun& r) -> ResultStatus {
        ++runs;
        EXPECT_GE(r.found.power, 0.0);
        r.found.sectorTime = 1.0;
        return statusNotConverged; // not even a tolerance that has grown beyond the error takes it
    };
    EXPECT_EQ(seekTarget(*ride, timeSeek(6.0, 100.0, 20.0), alwaysTooStrong), statusNotConverged);
    EXPECT_EQ(runs, 6); // from 100 W down to 0 in steps of 20; the rounds that stay there repeat the last
}

TEST_F(SeekTest, whatIsNoNumberEndsIt)
{
    auto noTime = [](RideRun& r) -> ResultStatus {
        ++runs;
        r.found.sectorTime = std::numeric_limits<double>::quiet_NaN();
        return 0;
    };
    EXPECT_EQ(seekTarget(*ride, timeSeek(6.0, 100.0, 20.0), noTime), statusNotConverged);
    EXPECT_EQ(ride->found.sectorTime, 6.0); // what was asked, for the title
    EXPECT_EQ(seekTarget(*ride, timeSeek(6.0, std::numeric_limits<double>::infinity(), 20.0), shorterByPower),
              statusNotConverged);
    EXPECT_EQ(runs, 2);
}

TEST_F(SeekTest, aPeakBeyondItsLimitEndsIt)
{
    Seek seek = timeSeek(6.0, 100.0, 20.0);
    seek.peakLimit = 150.0;
    auto peaking = [](RideRun& r) {
        r.found.peakPower[stagePedaling] = r.found.power;
        return shorterByPower(r);
    };
    EXPECT_EQ(seekTarget(*ride, seek, peaking), statusTooLargePower);
    EXPECT_EQ(ride->found.power, 160.0);
}

TEST(Settle, tellsHowItFailed)
{
    Stepper beyond{0.0, 1.0, 0.3}, stuck{0.0, 1.0, 0.3}, lost{0.0, 1.0, 0.3};
    EXPECT_EQ(settle(nullptr, beyond, 0.1, 10.0, [](double) { return 1.0; }), Settled::beyond);
    EXPECT_EQ(beyond.value, 11.0);
    EXPECT_EQ(settle(nullptr, stuck, 0.1, [](double) { return -1.0; }), Settled::never);
    EXPECT_EQ(stuck.value, -5000.0);
    EXPECT_EQ(settle(nullptr, lost, 0.1, [](double x) { return std::sqrt(-1.0 - x); }), Settled::never);
    EXPECT_EQ(lost.value, 0.0);
}

TEST(Settle, aStepThatIsUsedUpEndsTheWalk)
{
    int rounds = 0;
    for (double edge : {-8.3, 1e-12, 0.7, 4.0}) {
        auto jump = [&](double x) {
            ++rounds;
            return x < edge ? 5.0 : -5.0;
        };
        Stepper walked{-3.0, 0.1, 0.3}, plain = walked;
        EXPECT_EQ(settle(nullptr, walked, 0.01, jump), Settled::never) << edge;
        EXPECT_LT(rounds, 500) << edge;
        for (rounds = 0; rounds < seekRounds;) {
            jump(plain.value) > 0.0 ? plain.raise() : plain.lower();
        }
        EXPECT_EQ(walked.value, plain.value) << edge;
        rounds = 0;
    }
}

} // namespace torvane
