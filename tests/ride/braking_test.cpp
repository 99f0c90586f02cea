// Brakes: closed forms of force and heat, the ledger's odd factor, intervals and their remainder.
#include "ride/brake_energy.h"
#include "ride/braking_run.h"
#include "ride/pattern_braking.h"
#include "ride/ride_fixture.h"

namespace torvane {

using BrakingTest = RideTest;

TEST_F(BrakingTest, tenKiloWattTurnTheLog)
{
    block.rideForce[3] = -52.0; // -9915 W at 70 kph
    EXPECT_LT(run(ridePatternBraking, 0).log.rows[1].power, -9000.0);
    block.rideForce[3] = -53.0;
    EXPECT_NEAR(run(ridePatternBraking, 0).log.rows[1].power, -53.0 * 9.80665 * 70.0 / 3.6 / 1000.0, 0.001);
    EXPECT_EQ(ride->found.drive.kiloWattLog, 1);
}

// On the level all weight presses, and the largest force is friction times weight, the friction being that of the
// split the force itself makes.
TEST_F(BrakingTest, fullBrakingUsesAllTheGripThereIs)
{
    block.frictionCoefficient[0] = block.frictionCoefficient[1] = 0.6;
    block.bpn = 75;
    ASSERT_EQ(run(ridePatternBraking, 1).status, 0u);
    EXPECT_NEAR(ride->found.force, -0.6 * m.totalWeight, 0.0015);
    block.roadSurface = 1;
    ASSERT_EQ(run(ridePatternBraking, 1).status, 0u);
    EXPECT_NEAR(ride->found.force, -0.42 * m.totalWeight, 0.0015);
}

TEST_F(BrakingTest, constantVelocityTurnsTheHillIntoHeat)
{
    block.expressGraph = 1;
    run(ridePatternBraking, 2);
    ASSERT_EQ(ride->status, 0u);
    EXPECT_EQ(ride->found.sectorTime, 600.0); // 5 km at 30 kph
    double held = ride->heat.brakeHeat[0] + ride->heat.brakeHeat[1];
    EXPECT_NEAR(held, -ride->found.force * standardGravity * 5000.0, 0.001 * held);
    double spent = held + ride->found.airDragQuantity + ride->found.rollingDragQuantity;
    EXPECT_NEAR(spent, ride->found.potentialEnergy, 0.001 * spent);
    ASSERT_TRUE(ride->graph);
    EXPECT_EQ(ride->graph->pointCount(), 6000); // as many as were stored: one in 0.1 s
    EXPECT_NEAR(ride->graph->value(5999, 2), 4999.17, 0.01);
}

TEST_F(BrakingTest, intervalsRepeatAndTheRestIsRidden)
{
    // Way and sectors: whole intervals; the rest coasts, ends in braking; less than an interval; nothing.
    constexpr std::pair<double, size_t> cases[] = {{1500.0, 10}, {1600.0, 11}, {1790.0, 12}, {200.0, 1}, {0.0, 0}};
    for (auto [total, count] : cases) {
        SCOPED_TRACE(total);
        block.totalDistance = total;
        run(ridePatternBraking, 3);
        ASSERT_EQ(ride->status, 0u);
        const std::vector<SectorRow>& sectors = ride->log.sectors;
        ASSERT_EQ(sectors.size(), count);
        if (count > 0) {
            EXPECT_NEAR(sectors.back().distance, total, 1e-9);
            EXPECT_EQ(sectors.back().time, ride->found.sectorTime);
        }
        for (size_t i = 3; i < count && i < 10; i += 2) { // the spots
            EXPECT_NEAR(sectors[i].velocity, kph(30), 1e-12) << i;
            EXPECT_NEAR(sectors[i - 1].velocity, sectors[i - 3].velocity, 1e-3) << i;
            EXPECT_NEAR(sectors[i].heat[0] - sectors[i - 2].heat[0], sectors[1].heat[0], 0.001) << i;
            EXPECT_NEAR(sectors[i].residual[0], sectors[i].heat[0] + sectors[i].radiate[0], 1e-12) << i;
        }
    }
}

// What a sector needs for coasting and braking does not depend on the interval asked of it: the graph is continuous in
// time and distance, and the brakes only cool while they coast.
TEST_F(BrakingTest, theCurvesOfIntervalsRunOn)
{
    block.expressGraph = 1;
    block.totalDistance = 700.0;
    run(ridePatternBraking, 3);
    ASSERT_TRUE(ride->graph);
    const GraphSeries& g = *ride->graph;
    for (int i = 1; i < g.pointCount(); ++i) {
        ASSERT_GE(g.value(i, 0), g.value(i - 1, 0)) << i;
        ASSERT_GE(g.value(i, 2), g.value(i - 1, 2) - 1e-9) << i;
        bool coasting = g.value(i, 1) > g.value(i - 1, 1);
        ASSERT_TRUE(!coasting || g.value(i, 3) <= g.value(i - 1, 3)) << i;
    }
    for (int wheel : {0, 1})
        EXPECT_NEAR(g.value(g.pointCount() - 1, 3 + wheel), ride->log.sectors.back().brake[wheel], 0.2) << wheel;
}

// A way that ends while the brakes are on: over steps of 3 cm, less than the run takes in one of its own, the square of
// the velocity falls evenly, and the time grows by the way over the velocity.
TEST_F(BrakingTest, aWayThatEndsInBrakingIsCutWithinAStep)
{
    constexpr double step = 0.03; // m
    SectorRow last = {};
    double fall = 0.0;
    for (int i = 0; i < 10; ++i) {
        block.totalDistance = 290.0 + i * step;
        ASSERT_EQ(run(ridePatternBraking, 3).status, 0u);
        ASSERT_EQ(ride->log.sectors.size(), 2u);
        const SectorRow& row = ride->log.sectors.back();
        double square = row.velocity * row.velocity, before = last.velocity * last.velocity;
        if (i > 1) {
            EXPECT_NEAR(before - square, fall, 0.02 * fall) << i;
        }
        if (i > 0) {
            EXPECT_NEAR(row.time - last.time, step / row.velocity, 0.02 * step / row.velocity) << i;
        }
        fall = before - square;
        last = row;
    }
    EXPECT_GT(last.velocity, kph(30));
    EXPECT_GT(fall, 0.0);
}

TEST_F(BrakingTest, aCurveLooksTheRearWeightUpUnderTheFrontType)
{
    block.brakeType[1] = 1;
    prepare(ridePatternBraking, 0);
    ride->heat.brakeHeat[0] = ride->heat.brakeHeat[1] = 9100.0;
    double rear = 9100.0 / (0.499 * m.brakeWeight[0][1]) + 20.0; // stainless, but a rim's weight
    EXPECT_NEAR(drawnTemperature(*ride, 0), 9100.0 / (0.91 * 350.0) + 20.0, 1e-9);
    EXPECT_NEAR(drawnTemperature(*ride, 1), rear, 1e-9);
}

} // namespace torvane
