// Masses, wheels, air and brake surfaces from the entries.
#include "model/derived.h"
#include "model/model_fixture.h"

namespace torvane {

using DerivedTest = ModelTest;

TEST_F(DerivedTest, defaultsGiveTheFiguresWorkedByHand)
{
    EXPECT_DOUBLE_EQ(modelState.rimDiameter[0], 622.0);
    EXPECT_NEAR(modelState.frontCircumference, 2079.734337, 1e-6); // 662 pi
    EXPECT_NEAR(modelState.rearCircumference, 2098.583893, 1e-6);  // 668 pi
    EXPECT_DOUBLE_EQ(modelState.bikeWeight, 7.39);
    EXPECT_DOUBLE_EQ(modelState.totalWeight, 67.39);
    EXPECT_NEAR(modelState.bikeInertialWeight, 8.341, 1e-12); // 7.39 + 0.6 + 0.351
    EXPECT_NEAR(modelState.inertialWeight, 68.341, 1e-12);
    EXPECT_NEAR(modelState.hectoPascal, 1007.3597649, 1e-6);
    EXPECT_DOUBLE_EQ(trainingLevelBound[0], 0.0);
    EXPECT_DOUBLE_EQ(trainingLevelBound[3], 245.7);
    EXPECT_DOUBLE_EQ(trainingLevelBound[6], 407.7);
}

TEST_F(DerivedTest, wheelWeightMovesTheWholeBikeOnlyWhenItIsEnteredWithoutWheels)
{
    modelState.wheelWeight[0] += 1000.0;
    computeDerived();
    EXPECT_NEAR(modelState.bikeWeight, 8.39, 1e-12);
    modelState.exceptWheels = 0;
    modelState.bikeWeight = 8.0;
    double before = modelState.bikeInertialWeight;
    modelState.wheelWeight[0] -= 1000.0;
    computeDerived();
    EXPECT_DOUBLE_EQ(modelState.bikeWeight, 8.0);
    EXPECT_NEAR(modelState.bikeInertialWeight, before - 0.39 - 0.5, 1e-12);
}

TEST_F(DerivedTest, smallWheelsScaleAndKeepTheTyre)
{
    modelState.wheelSize[1] = 14;
    computeDerived();
    EXPECT_DOUBLE_EQ(modelState.rimDiameter[1], 311.0);
    EXPECT_NEAR(modelState.rearCircumference, 357.0 * 3.14159265358979, 1e-9);
}

TEST_F(DerivedTest, airPressure)
{
    // Temperature, altitude, pressure: sea level, a pass, above the air, no temperature left.
    constexpr double cases[][3] = {{15, 0, 1013.25}, {10, 2000, 791.4715620}, {20, 60000, 0}, {-273.15, 100, 0}};
    for (auto [temperature, altitude, hectoPascal] : cases)
        EXPECT_NEAR(airPressureAt(temperature, altitude), hectoPascal, 1e-6) << altitude;
}

TEST(WheelResist, improvesWithDepthAndYearUpTo2017)
{
    struct Case {
        int depth, spokes, year;
        double resist;
    };
    for (Case c : {Case{50, 16, 2011, 19.97966296},
                   {50, 24, 2017, 20.08649748},
                   {50, 24, 2030, 20.08649748},
                   {20, 32, 2001, 41.43523991},
                   {20, 32, 2000, 41.43523991}})
        EXPECT_NEAR(predictWheelResist(c.depth, c.spokes, c.year).resist, c.resist, 1e-7) << c.depth << ' ' << c.year;
}

} // namespace torvane
