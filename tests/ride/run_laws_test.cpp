// Laws that hold for every run over time, whatever its figures: dry and logged run are one physics, energy is kept,
// and a finer step changes little.
#include "model/resistance.h"
#include "ride/acceleration.h"
#include "ride/brake_energy.h"
#include "ride/braking_run.h"
#include "ride/deceleration.h"
#include "ride/ride_fixture.h"
#include "ride/rolling_run.h"

#include <cmath>
#include <functional>
#include <ostream>

namespace torvane {

namespace {

struct RunCase {
    const char* name;
    RideMode mode;
    double start, end; // kph
    double power;      // W
    double force;      // kgf
    double inclination;
    int motor;
    std::function<ResultStatus(SampleLog&)> dry;
    std::function<void(SampleLog&)> logged;
};

std::ostream& operator<<(std::ostream& out, const RunCase& c)
{
    return out << c.name;
}

RunCase pedaled(const char* name, PowerLaw law, double start, double end, double power, double inclination, int motor)
{
    if (start < end) {
        return {name,
                rideAcceleration,
                start,
                end,
                power,
                0.0,
                inclination,
                motor,
                [law](SampleLog& log) { return accelerateDryRun(law, log); },
                [law](SampleLog& log) { accelerateLoggedRun(law, log, nullptr); }};
    }
    return {name,
            rideDeceleration,
            start,
            end,
            power,
            0.0,
            inclination,
            motor,
            [law](SampleLog& log) { return decelerateDryRun(law, log); },
            [law](SampleLog& log) { decelerateLoggedRun(law, log, nullptr); }};
}

RunCase braked(const char* name, BrakeLaw law, double start, double end, double amount, double inclination)
{
    return {name,
            ridePatternBraking,
            start,
            end,
            amount,
            amount,
            inclination,
            0,
            [law](SampleLog& log) { return brakeDryRun(law, log); },
            [law](SampleLog& log) { brakeLoggedRun(law, log, nullptr); }};
}

RunCase rolled(const char* name, RollLimit limit, double start, double inclination)
{
    return {name,
            rideInclinationAndVelocity,
            start,
            0.0,
            0.0,
            0.0,
            inclination,
            0,
            [limit](SampleLog& log) { return rollDryRun(limit, log); },
            [limit](SampleLog& log) { rollLoggedRun(limit, log, nullptr); }};
}

std::vector<RunCase> runCases()
{
    using enum PowerLaw;
    return {
        pedaled("sprint from standstill", parabola, 0.0, 40.0, 800.0, 0.0, 0),
        pedaled("climb", parabola, 15.0, 25.0, 450.0, 6.0, 0),
        pedaled("constant power", constant, 5.0, 35.0, 500.0, 1.0, 0),
        pedaled("motor at the crank", parabola, 5.0, 40.0, 500.0, 0.0, 1),
        pedaled("motor at the hub", parabola, 0.0, 30.0, 300.0, 2.0, 2),
        pedaled("fades before the end", parabola, 5.0, 45.0, 250.0, 0.0, 0),
        pedaled("coasting down", parabola, 60.0, 20.0, 0.0, 0.0, 0),
        pedaled("easing off", parabola, 50.0, 30.0, 90.0, 0.0, 0),
        pedaled("easing off at constant power", constant, 50.0, 30.0, 90.0, -0.5, 0),
        pedaled("easing off with a motor", parabola, 50.0, 30.0, 60.0, 1.0, 2),
        braked("constant force", BrakeLaw::force, 60.0, 20.0, -20.0, 0.0),
        braked("constant force to a stop", BrakeLaw::force, 60.0, 0.0, -25.0, -6.0),
        braked("constant power", BrakeLaw::power, 60.0, 20.0, -900.0, 0.0),
        rolled("until steady", {RollUntil::steady, 0.0, 0.0}, 10.0, -5.0),
        rolled("over a distance", {RollUntil::distance, 150.0, 0.0}, 0.0, -7.0),
        rolled("over a time", {RollUntil::time, 0.0, 20.0}, 30.0, -3.0),
    };
}

struct Outcome {
    double velocity, time, distance, accele, mean, force;

    bool operator==(const Outcome&) const = default;
};

Outcome outcome()
{
    return {runState.velocity,
            runState.sectorTime,
            runState.distance,
            runState.accele,
            runState.meanStagePower[stageThrust],
            runState.meanStageForce[stageThrust]};
}

} // namespace

class RunLaws : public RideTest, public ::testing::WithParamInterface<RunCase> {
protected:
    static void prepareCase()
    {
        const RunCase& c = GetParam();
        useMotor(c.motor);
        const int m = c.mode;
        workingBlock.rideStartVelocity[m] = kph(c.start);
        workingBlock.rideEndVelocity[m] = kph(c.end);
        workingBlock.ridePower[m] = c.power;
        workingBlock.rideForce[m] = c.force;
        workingBlock.rideInclination[m] = workingBlock.brakingInclination[0] = c.inclination;
        prepare(c.mode, 0);
    }

    SampleLog runBoth()
    {
        SampleLog log;
        EXPECT_FALSE(isFatal(GetParam().dry(log)));
        counted = log.sampleCount;
        dry = outcome();
        clearBrakeEnergy();
        GetParam().logged(log);
        return log;
    }

    int counted = 0;
    Outcome dry = {};
};

TEST_P(RunLaws, dryAndLoggedRunAgreeToTheLastBit)
{
    prepareCase();
    const SampleLog log = runBoth();
    EXPECT_EQ(outcome(), dry);
    ASSERT_EQ(log.sampleCount, counted);
    const SampleRow& last = log.rows.back();
    EXPECT_EQ(last.velocity, dry.velocity);
    EXPECT_EQ(last.time, dry.time);
    EXPECT_EQ(last.distance, dry.distance);
    EXPECT_EQ(shownRows(log), counted + 1);
}

// Whatever ran before, a run is the same: here one on another slope and with another grip.
TEST_P(RunLaws, aRunForgetsWhatRanBefore)
{
    prepareCase();
    SampleLog log;
    GetParam().dry(log);
    const Outcome first = outcome();
    updateLoadAndGrip(-40.0);
    runState.thrustForce = runState.rollingLoad = 77.0;
    GetParam().dry(log);
    EXPECT_EQ(outcome(), first);
}

// Work at the road less resistances is the change of kinetic energy. A step of constant power adds m dv^2 / 2 of its
// own; the resistances lag half a step, which over a run is half a step of their change.
TEST_P(RunLaws, energyIsKept)
{
    prepareCase();
    const SampleLog log = runBoth();
    updateLoadAndGrip(0.0);
    setLoads();
    double resisted = 0.0;
    double bound = runState.startVelocity == 0.0 ? 10.0 : 1e-6; // J; the kick goes by force, not by power
    for (size_t i = 0; i + 1 < log.rows.size(); ++i) {
        const SampleRow &from = log.rows[i], &to = log.rows[i + 1];
        const double low = resistanceAtVelocity(from.velocity).value, high = resistanceAtVelocity(to.velocity).value;
        const double gain = to.velocity - from.velocity, dt = to.time - from.time;
        resisted += (low + high) * 0.5 * dt;
        bound += 0.5 * modelState.inertialWeight * gain * gain + std::fabs(high - low) * dt;
    }
    const double from = log.rows.front().velocity, to = log.rows.back().velocity;
    const double kinetic = 0.5 * modelState.inertialWeight * (to * to - from * from);
    const double work = dry.mean * dry.time;
    EXPECT_NEAR(work - resisted, kinetic, bound);
    EXPECT_LT(bound, 0.03 * (std::fabs(work) + std::fabs(resisted)));
}

// The method is of first order, and a shift lasts whole steps.
TEST_P(RunLaws, halfTheIntervalChangesLittle)
{
    Outcome results[2];
    for (int i = 0; i < 2; ++i) {
        workingBlock.accelerationIntervalMode = workingBlock.decelerationIntervalMode = 1;
        workingBlock.accelerationInterval = workingBlock.decelerationInterval = i == 0 ? 0.02 : 0.01;
        prepareCase();
        SampleLog log;
        ASSERT_FALSE(isFatal(GetParam().dry(log)));
        results[i] = outcome();
    }
    const Outcome &coarse = results[0], &fine = results[1];
    EXPECT_NEAR(coarse.velocity, fine.velocity, 0.002 * fine.velocity + 0.001);
    EXPECT_NEAR(coarse.time, fine.time, 0.01 * fine.time + 0.02);
    EXPECT_NEAR(coarse.distance, fine.distance, 0.01 * fine.distance + 0.1);
    EXPECT_NEAR(coarse.mean, fine.mean, 0.01 * std::fabs(fine.mean));
}

INSTANTIATE_TEST_SUITE_P(Runs, RunLaws, ::testing::ValuesIn(runCases()));

} // namespace torvane
