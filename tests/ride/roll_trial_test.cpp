// Trials of rolls that are given up early, against the whole runs, to the last bit: what a slope seek answers must not
// depend on them.
#include "core/result_status.h"
#include "model/solver.h"
#include "ride/inclination_run.h"
#include "ride/motion.h"
#include "ride/ride_fixture.h"
#include "ride/seek.h"

namespace torvane {

namespace {

// Rider, air and interval within the limits of their dialogs.
void takeAnyConditions(ParameterBlock& in, Random& random)
{
    setDefaults(in);
    in.humanWeight = uniform(random, 30.0, 200.0);
    in.humanHeight = uniform(random, 100.0, 250.0);
    in.torsoAngle = uniform(random, 0.0, 90.0);
    constexpr double strongestWind[] = {0.0, 3.0, 30.0};
    in.windSpeed = uniform(random, -1.0, 1.0) * strongestWind[random() % 3];
    in.altitude = uniform(random, -100.0, 10000.0);
    in.pelotonMode = random() % 2 != 0;
    in.pelotonNumber = static_cast<int32_t>(2 + random() % 99);
    in.accelerationIntervalMode = 1;
    in.accelerationInterval = uniform(random, 0.01, 0.1);
    in.rideStartVelocity[rideInclinationAndVelocity] = random() % 4 == 0 ? 0.0 : uniform(random, 0.0, 55.0);
}

RollLimit anyLimit(Random& random)
{
    if (random() % 2 == 0)
        return {limitTime, 0.0, uniform(random, 0.0, 150.0)};
    return {limitDistance, uniform(random, 0.0, 3000.0), 0.0};
}

using Figures = std::vector<uint64_t>;

// All that a run leaves behind.
Figures figuresOf(ResultStatus status, const RideRun& ride)
{
    const RideFigures& f = ride.found;
    const Evaluation& now = ride.now;
    Figures figures{status, static_cast<uint64_t>(ride.log.sampleCount)};
    for (double value : {now.inclination, f.velocity, f.sectorTime, f.distance, f.accele, now.airDrag, now.airDragPower,
                         now.totalLoad, now.rollingPower, now.slopePower})
        figures.push_back(bitsOf(value));
    return figures;
}

ResultStatus plainSeek(RideRun& ride, const RollLimit& limit)
{
    double wanted = ride.in.velocity;
    Stepper slope{-3.0, 0.1, 0.3};
    ride.now.inclination = slope.value;
    resetGrip(ride);
    ResultStatus status = 0;
    Settled settled = settle(nullptr, slope, 0.01, rollThreshold(ride), [&](double percent) {
        ride.now.inclination = percent;
        status = rollDryRun(ride, limit);
        return ride.found.velocity - wanted;
    });
    return status | (settled == Settled::never ? statusNotConverged : toleranceClass(ride.found.velocity, wanted));
}

} // namespace

class RollTrialTest : public RideTest {
protected:
    Figures seekOnce(double wanted, const RollLimit& limit, ResultStatus (*seek)(RideRun&, const RollLimit&))
    {
        block.rideVelocity[rideInclinationAndVelocity] = wanted;
        ResultStatus status = seek(prepare(rideInclinationAndVelocity, 1), limit);
        return figuresOf(status, *ride);
    }
};

TEST_F(RollTrialTest, aSeekAnswersAsIfEveryRunWentToItsEnd)
{
    Random random(12);
    int met = 0;
    for (int round = 0; round < 80; ++round) {
        takeAnyConditions(block, random);
        RollLimit limit = anyLimit(random);
        double wanted = uniform(random, 0.0, 35.0);
        block.accelerationInterval = 0.1;
        Figures plain = seekOnce(wanted, limit, plainSeek);
        EXPECT_EQ(seekOnce(wanted, limit, seekInclinationOver), plain) << round;
        met += plain[0] == 0;
    }
    EXPECT_GT(met, 20);
    // No slope is enough: what shows is the last run, whole.
    setDefaults(block);
    block.accelerationIntervalMode = 1;
    block.accelerationInterval = 0.05;
    RollLimit brief{limitTime, 0.0, 6.0};
    Figures plain = seekOnce(80.0, brief, plainSeek);
    EXPECT_EQ(plain[0], statusNotConverged);
    EXPECT_EQ(seekOnce(80.0, brief, seekInclinationOver), plain);
}

TEST_F(RollTrialTest, aTrialBelowWhatItCanReachIsGivenUp)
{
    block.rideInclination[rideInclinationAndVelocity] = -4.0; // poised at 42 kph
    prepare(rideInclinationAndVelocity, 0);
    EXPECT_FALSE(rollTrial(*ride, {limitTime, 0.0, 600.0}, kph(60)));
    EXPECT_TRUE(rollTrial(*ride, {limitTime, 0.0, 600.0}, kph(20)));
}

} // namespace torvane
