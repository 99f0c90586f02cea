// Grids against the single evaluations that they stand for, to the last bit: any rider, road, air and velocity.
#include "model/road_grid.h"

#include "core/parallel.h"
#include "model/assist.h"
#include "model/drivetrain.h"
#include "model/model_fixture.h"
#include "model/road_points.h"

#include <chrono>
#include <limits>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace torvane {

namespace {

std::vector<double> someOf(Random& random, double low, double high, size_t most)
{
    constexpr double odd[] = {0.0, -0.0, 1e-310, 1e300, -1e300, INFINITY, std::numeric_limits<double>::quiet_NaN()};
    std::vector<double> values(1 + random() % most);
    for (double& value : values)
        value = random() % 24 == 0 ? odd[random() % std::size(odd)] : uniform(random, low, high);
    return values;
}

int32_t anyOf(Random& random, uint64_t count)
{
    return static_cast<int32_t>(random() % count);
}

// A rider, a bicycle and a train such as can be entered.
void change(Random& random, ModelState& m)
{
    m.humanWeight = uniform(random, 40, 120);
    m.torsoAngle = uniform(random, 5, 60);
    m.helmet = anyOf(random, 3);
    m.wear = anyOf(random, 5);
    m.shellType = anyOf(random, 3);
    m.wheelResistVelocity[1] = random() % 2 == 0 ? 50.0 : uniform(random, 30, 60);
    m.pelotonMode = anyOf(random, 2);
    m.pelotonNumber = anyOf(random, 20);
    m.motorLocation = random() % 5 == 0 ? anyOf(random, 3) : 0;
    m.chainringCount = 1 + anyOf(random, 3);
    m.sprocket[0] = 9 + anyOf(random, 4);
    m.cadenceUsual = uniform(random, 60, 110);
    m.assistRangeMode[0] = 1;
    m.assistRangeRatio[0] = 1.0;
}

} // namespace

struct RoadGridTest : ModelTest {
    RoadGrid grid;
    Random random{1816};
    std::vector<double> inclinations, headWinds, asked;

    void takeGrid(double low, double high, size_t most)
    {
        restart();
        change(random, m);
        rebuildModel(model);
        model.calibration.dragFactor = random() % 2 == 0 ? 1.0f : 1.1f;
        keepDragFactors(model);
        now.physics = Physics{anyOf(random, 2)};
        inclinations = someOf(random, -8, 12, 4);
        headWinds = someOf(random, -6, 6, 3);
        asked = someOf(random, low, high, most);
        grid = {inclinations, headWinds, asked};
    }
    // Calls single(point, asked) on the road of each point.
    template <class Single>
    void overPoints(Single single)
    {
        size_t point = 0;
        for (double inclination : inclinations) {
            for (double headWind : headWinds) {
                for (double value : asked) {
                    Evaluation e = now;
                    e.inclination = inclination;
                    e.headWind = headWind;
                    updateLoadAndGrip(model, e, 0.0);
                    single(e, point++, value);
                }
            }
        }
    }
};

// By its rule: a look at every row.
int plainNearestGear(const Model& model, double ratio)
{
    int nearest = 0;
    double distance = 1000.0;
    for (int row = 0; row < model.state.gearCount; ++row) {
        double away = std::fabs(model.gearTable[row].ratio - ratio);
        if (away < distance) {
            distance = away;
            nearest = row;
        }
    }
    return nearest;
}

TEST_F(RoadGridTest, theNearestGearIsThatOfALookAtEveryRow)
{
    for (int round = 0; round < 3000; ++round) {
        takeGrid(0, 1, 1);
        const GearEntry* table = model.gearTable;
        double between = (table[random() % 9].ratio + table[random() % 9].ratio) / 2; // often just in the middle
        for (double ratio : {between, someOf(random, 0.2, 6, 1)[0], uniform(random, 0, 6), 1001.0})
            ASSERT_EQ(nearestGear(model, ratio), plainNearestGear(model, ratio)) << round << " " << ratio;
    }
}

TEST_F(RoadGridTest, everyPowerIsThatOfTheSingleEvaluation)
{
    for (int round = 0; round < 2000; ++round) {
        takeGrid(-5, 25, round % 50 == 0 ? 9000 : 40); // also more than one thread takes at a time
        int stage = anyOf(random, stageCount);
        std::vector<double> powers(pointsOf(grid));
        powersOverGrid(model, now, stage, grid, 1 + static_cast<size_t>(round % 3), powers);
        overPoints([&](Evaluation& e, size_t point, double velocity) {
            ASSERT_EQ(bitsOf(powers[point]), bitsOf(solvePowerAtVelocity(model, e, stage, velocity).value))
                << "round " << round << " stage " << stage << " velocity " << velocity;
        });
    }
}

TEST_F(RoadGridTest, pointsOfAnyRoadsAreThoseOfTheSingleEvaluation)
{
    for (int round = 0; round < 2000; ++round) {
        takeGrid(-5, 25, 5); // at most 60 points
        int stage = anyOf(random, stageCount);
        RoadPoints points;
        points.count = pointsOf(grid);
        overPoints([&](Evaluation& e, size_t point, double velocity) {
            points.headWind[point] = e.headWind;
            points.airRatio[point] = e.airRatio;
            points.inclination[point] = e.inclination;
            points.velocity[point] = velocity;
            points.cadence[point] = uniform(random, 0, 120);
        });
        takeSlopes(points);
        takeLoads(model, points);
        takeThrustPowers(model, now.physics, points);
        takeStagePowers(model, stage, points);
        overPoints([&](Evaluation& e, size_t point, double velocity) {
            setLoads(model, e);
            double thrust = resistanceAtVelocity(model, e, velocity).value;
            stagesFromThrust(model, e, thrust, radiansPerSecond(wheelRpmAt(model, velocity)),
                             radiansPerSecond(points.cadence[point]));
            ASSERT_EQ(bitsOf(points.thrustPower[point]), bitsOf(thrust)) << "round " << round;
            ASSERT_EQ(bitsOf(points.stagePower[point]), bitsOf(stagePower(e, stage))) << "round " << round;
        });
    }
}

TEST_F(RoadGridTest, everyVelocityAndStatusIsThatOfTheSingleSearch)
{
    for (int round = 0; round < 300; ++round) {
        takeGrid(-50, 900, 25);
        int stage = anyOf(random, stageCount);
        std::vector<Solved> found(pointsOf(grid));
        velocitiesOverGrid(model, now, stage, grid, 1 + static_cast<size_t>(round % 3), found);
        overPoints([&](Evaluation& e, size_t point, double power) {
            Solved single = solveVelocityForPower(model, e, stage, power);
            ASSERT_EQ(bitsOf(found[point].value), bitsOf(single.value)) << "round " << round << " power " << power;
            ASSERT_EQ(found[point].status, single.status) << "round " << round << " power " << power;
        });
    }
}

// Work that is slow enough for every thread to get a piece.
TEST(InParallel, noMoreThreadsThanAskedRunEachPieceOnce)
{
    for (auto [count, threads] : {std::pair<size_t, size_t>{12, 3}, {2, 8}, {5, 1}, {0, 3}}) {
        std::mutex held;
        std::set<std::thread::id> seen;
        std::vector<int> runs(count);
        inParallel(count, threads, [&](size_t piece) {
            std::this_thread::sleep_for(std::chrono::milliseconds(3));
            std::lock_guard lock(held);
            seen.insert(std::this_thread::get_id());
            ++runs[piece];
        });
        EXPECT_LE(seen.size(), std::min(count, threads)) << count << " pieces";
        EXPECT_EQ(runs, std::vector<int>(count, 1)) << threads << " threads";
    }
}

} // namespace torvane
