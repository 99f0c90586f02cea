// Masses, wheels, air and brake surfaces from the entries.
#include "model/derived.h"

#include "figures.h"
#include "model/model_fixture.h"

namespace torvane {

using DerivedTest = ModelTest;

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

TEST_F(DerivedTest, defaultsGiveTheFiguresWorkedByHand)
{
    expectFigures(
        {m.frontCircumference, m.rearCircumference, m.bikeWeight, m.totalWeight, m.bikeInertialWeight, m.hectoPascal},
        {2079.734337, 2098.583893, 7.39, 67.39, 8.341, 1007.3597649}, 1e-6); // 662 pi, 668 pi
}

} // namespace torvane
