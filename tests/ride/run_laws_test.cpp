// Laws that hold for every run over time, whatever its figures: dry and logged run are one physics, energy is kept.
#include "model/resistance.h"
#include "ride/acceleration.h"
#include "ride/brake_energy.h"
#include "ride/braking_run.h"
#include "ride/deceleration.h"
#include "ride/ride_fixture.h"
#include "ride/rolling_run.h"

#include <cmath>
#include <ostream>
#include <variant>

namespace torvane {

namespace {

struct RunCase {
    const char* name;
    std::variant<PowerLaw, BrakeLaw, RollLimit> law;
    double start, end;  // kph
    double amount;      // W, or kgf of brakes
    double inclination; // %
    int motor = 0;
};

std::ostream& operator<<(std::ostream& out, const RunCase& c)
{
    return out << c.name;
}

RideMode modeOf(const RunCase& c)
{
    if (std::holds_alternative<PowerLaw>(c.law))
        return c.start < c.end ? rideAcceleration : rideDeceleration;
    return std::holds_alternative<BrakeLaw>(c.law) ? ridePatternBraking : rideInclinationAndVelocity;
}

ResultStatus dryRun(RideRun& ride, const RunCase& c)
{
    if (const PowerLaw* law = std::get_if<PowerLaw>(&c.law))
        return c.start < c.end ? accelerateDryRun(ride, *law) : decelerateDryRun(ride, *law);
    if (const BrakeLaw* law = std::get_if<BrakeLaw>(&c.law))
        return brakeDryRun(ride, *law);
    return rollDryRun(ride, std::get<RollLimit>(c.law));
}

void loggedRun(RideRun& ride, const RunCase& c)
{
    if (const PowerLaw* law = std::get_if<PowerLaw>(&c.law))
        c.start < c.end ? accelerateLoggedRun(ride, *law) : decelerateLoggedRun(ride, *law);
    else if (const BrakeLaw* brake = std::get_if<BrakeLaw>(&c.law))
        brakeLoggedRun(ride, *brake);
    else
        rollLoggedRun(ride, std::get<RollLimit>(c.law));
}

const RunCase runCases[] = {
    {"sprint from standstill", PowerLaw::parabola, 0, 40, 800, 0},
    {"climb", PowerLaw::parabola, 15, 25, 450, 6},
    {"constant power", PowerLaw::constant, 5, 35, 500, 1},
    {"motor at the crank", PowerLaw::parabola, 5, 40, 500, 0, 1},
    {"motor at the hub", PowerLaw::parabola, 0, 30, 300, 2, 2},
    {"fades before the end", PowerLaw::parabola, 5, 45, 250, 0},
    {"coasting down", PowerLaw::parabola, 60, 20, 0, 0},
    {"easing off at constant power", PowerLaw::constant, 50, 30, 90, -0.5},
    {"easing off with a motor", PowerLaw::parabola, 50, 30, 60, 1, 2},
    {"constant force", BrakeLaw::force, 60, 20, -20, 0},
    {"constant force to a stop", BrakeLaw::force, 60, 0, -25, -6},
    {"constant braking power", BrakeLaw::power, 60, 20, -900, 0},
    {"until steady", RollLimit{limitNone, 0, 0}, 10, 0, 0, -5},
    {"over a distance", RollLimit{limitDistance, 150, 0}, 0, 0, 0, -7},
    {"over a time", RollLimit{limitTime, 0, 20}, 30, 0, 0, -3},
};

struct Outcome {
    double velocity, time, distance, accele, mean, force;

    bool operator==(const Outcome&) const = default;
};

Outcome outcome(const RideFigures& r)
{
    return {
        r.velocity, r.sectorTime, r.distance, r.accele, r.meanStagePower[stageThrust], r.meanStageForce[stageThrust]};
}

} // namespace

class RunLaws : public RideTest, public ::testing::WithParamInterface<RunCase> {
protected:
    void prepareCase()
    {
        const RunCase& c = GetParam();
        useMotor(c.motor);
        RideMode mode = modeOf(c);
        block.rideStartVelocity[mode] = kph(c.start);
        block.rideEndVelocity[mode] = kph(c.end);
        block.ridePower[mode] = block.rideForce[mode] = c.amount;
        block.rideInclination[mode] = block.brakingInclination[0] = c.inclination;
        prepare(mode, 0);
    }

    const SampleLog& runBoth()
    {
        EXPECT_FALSE(isFatal(dryRun(*ride, GetParam())));
        counted = ride->log.sampleCount;
        dry = outcome(ride->found);
        clearBrakeEnergy(*ride);
        loggedRun(*ride, GetParam());
        return ride->log;
    }

    int counted = 0;
    Outcome dry = {};
};

TEST_P(RunLaws, dryAndLoggedRunAgreeToTheLastBit)
{
    prepareCase();
    const SampleLog& log = runBoth();
    EXPECT_EQ(outcome(ride->found), dry);
    ASSERT_EQ(log.sampleCount, counted);
    EXPECT_EQ(log.rows.back().velocity, dry.velocity);
    EXPECT_EQ(log.rows.back().distance, dry.distance);
    EXPECT_EQ(shownRows(log), counted + 1);
}

// Work at the road less resistances is the change of kinetic energy. A step of constant power adds m dv^2 / 2 of its
// own; the resistances lag half a step, which over a run is half a step of their change.
TEST_P(RunLaws, energyIsKept)
{
    prepareCase();
    const SampleLog& log = runBoth();
    Evaluation& road = ride->now;
    updateLoadAndGrip(model, road, 0.0);
    setLoads(model, road);
    double resisted = 0.0;
    double bound = ride->in.startVelocity == 0.0 ? 10.0 : 1e-6; // J; the kick goes by force, not by power
    for (size_t i = 0; i + 1 < log.rows.size(); ++i) {
        const SampleRow &from = log.rows[i], &to = log.rows[i + 1];
        double low = resistanceAtVelocity(model, road, from.velocity).value;
        double high = resistanceAtVelocity(model, road, to.velocity).value;
        double gain = to.velocity - from.velocity, dt = to.time - from.time;
        resisted += (low + high) * 0.5 * dt;
        bound += 0.5 * m.inertialWeight * gain * gain + std::fabs(high - low) * dt;
    }
    double from = log.rows.front().velocity, to = log.rows.back().velocity;
    double kinetic = 0.5 * m.inertialWeight * (to * to - from * from);
    double work = dry.mean * dry.time;
    EXPECT_NEAR(work - resisted, kinetic, bound);
    EXPECT_LT(bound, 0.03 * (std::fabs(work) + std::fabs(resisted)));
}

// Torque over force is the lever at which both are, whatever the run cuts off at its end. A force of brakes is that of
// the rolling circumference.
TEST_P(RunLaws, torqueOverForceIsTheLever)
{
    prepareCase();
    runBoth();
    const BrakeLaw* law = std::get_if<BrakeLaw>(&GetParam().law);
    bool rolls = law != nullptr && *law == BrakeLaw::force;
    double wheel = rolls ? m.rearCircumference / 2.0 / pi : m.rimDiameter[1] * 0.5 + m.tyreSize[1]; // mm
    for (auto [stage, lever] : {std::pair(stagePedaling, m.crankLength), std::pair(stageThrust, wheel)}) {
        double torque = ride->found.meanStageTorque[stage];
        double byForce = ride->found.meanStageForce[stage] * 9.80665 * lever / 1000.0;
        EXPECT_NEAR(torque, byForce, 1e-9 * std::fabs(torque)) << "stage " << stage;
    }
    for (Stage stage : {stageCrank, stageHub}) { // the chain, on 11 to 51 teeth
        double torque = ride->found.meanStageTorque[stage],
               perTooth = ride->found.meanStageForce[stage] * 9.80665 * 0.00202;
        EXPECT_GE(torque, 11 * perTooth) << "stage " << stage;
        EXPECT_LE(torque, 52 * perTooth) << "stage " << stage;
    }
}

TEST_P(RunLaws, curvesFollowTheTable)
{
    block.expressGraph = 1;
    prepareCase();
    const SampleLog& log = runBoth();
    const GraphSeries& graph = *ride->graph;
    int last = graph.pointCount() - 1;
    const SampleRow& row = log.rows[static_cast<size_t>(last)];
    int found = 0;
    for (auto [name, value] : {std::pair("time(sec)", row.time), std::pair("velocity(kph)", row.velocity * 3.6),
                               std::pair("distance(m)", row.distance), std::pair("accele(mpss)", row.accele),
                               std::pair("crank cadence(rpm)", row.cadence)}) {
        for (int series = 0; series < graph.seriesCount(); ++series) {
            if (graph.seriesNames[static_cast<size_t>(series)] == name) {
                EXPECT_EQ(graph.value(last, series), value) << name;
                ++found;
            }
        }
    }
    EXPECT_GE(found, 3);
}

INSTANTIATE_TEST_SUITE_P(Runs, RunLaws, ::testing::ValuesIn(runCases));

} // namespace torvane
