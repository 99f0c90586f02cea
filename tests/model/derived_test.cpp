// Masses, wheels, air and brake surfaces from the entries.
#include "model/derived.h"

#include "figures.h"
#include "model/model_fixture.h"

namespace torvane {

using DerivedTest = ModelTest;

TEST_F(DerivedTest, wheelWeightMovesTheWholeBikeOnlyWhenItIsEnteredWithoutWheels)
{
    m.wheelWeight[0] += 1000.0;
    computeDerived(model);
    EXPECT_NEAR(m.bikeWeight, 8.39, 1e-12);
    m.exceptWheels = 0;
    m.bikeWeight = 8.0;
    double before = m.bikeInertialWeight;
    m.wheelWeight[0] -= 1000.0;
    computeDerived(model);
    EXPECT_DOUBLE_EQ(m.bikeWeight, 8.0);
    EXPECT_NEAR(m.bikeInertialWeight, before - 0.39 - 0.5, 1e-12);
}

// 1013.25 hPa x (1 - 6.5 K / 288.15 K) ^ 5.2559 at 1000 m; above the air there is none. Cold air is denser.
TEST(AirPressure, fallsWithHeight)
{
    EXPECT_NEAR(airPressureAt(15, 1000), 898.746, 0.005);
    EXPECT_EQ(airPressureAt(15, 60000), 0.0);
    Evaluation freezing;
    freezing.physics = Physics::ofTheRoad;
    setAir(freezing, seaLevelPressure, 0);
    EXPECT_NEAR(freezing.airRatio, 1.0732, 0.0001);
}

TEST(WheelResist, improvesWithDepthAndYearUpTo2017)
{
    // Depth, spokes, year, resist.
    constexpr double cases[][4] = {
        {50, 16, 2011, 19.97966296}, {50, 24, 2030, 20.08649748}, {20, 32, 2000, 41.43523991}};
    for (auto [depth, spokes, year, resist] : cases) {
        auto whole = [](double value) { return static_cast<int>(value); };
        EXPECT_NEAR(predictWheelResist(whole(depth), whole(spokes), whole(year)).resist, resist, 1e-7) << year;
    }
}

} // namespace torvane
