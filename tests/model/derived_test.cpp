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
    struct Case {
        const char* name;
        double temperature, altitude, hectoPascal;
    };
    constexpr Case cases[] = {
        {"sea level", 15.0, 0.0, 1013.25},
        {"pass", 10.0, 2000.0, 791.4715620},
        {"above the air", 20.0, 60000.0, 0.0},
        {"no temperature left", -273.15, 100.0, 0.0},
    };
    for (const Case& c : cases) {
        EXPECT_NEAR(airPressureAt(c.temperature, c.altitude), c.hectoPascal, 1e-6) << c.name;
    }
}

TEST_F(DerivedTest, enteredPressureIsLeftAlone)
{
    modelState.airPressureSource = 1;
    modelState.hectoPascal = 950.0;
    computeDerived();
    EXPECT_DOUBLE_EQ(modelState.hectoPascal, 950.0);
}

TEST_F(DerivedTest, brakeSurfaces)
{
    struct Case {
        const char* name;
        int type;
        double size, area;
    };
    constexpr Case cases[] = {
        {"rim", 0, 50.0, 0.187553081},
        {"low rim counts as 25", 0, 20.0, 0.095740036},
        {"rim of 30 counts in full", 0, 30.0, 0.114416804},
        {"rotor", 1, 160.0, 0.040212386},
    };
    for (const Case& c : cases) {
        modelState.brakeType[1] = c.type;
        modelState.brakeSurfaceSize[c.type][1] = c.size;
        computeBrakeSurfaceArea();
        EXPECT_NEAR(modelState.brakeSurfaceArea[1], c.area, 1e-9) << c.name;
        EXPECT_NEAR(modelState.brakeSurfaceArea[0], 0.187553081, 1e-9) << c.name;
    }
}

TEST(TorsoAngle, followsThePositionsAndLeavesFreeEntryAlone)
{
    constexpr double expected[] = {0.0, 24.0, 30.0, 41.0, 47.3, 72.5, 0.0};
    for (int position = 0; position < 7; ++position) {
        EXPECT_DOUBLE_EQ(torsoAngleForPosition(position), expected[position]) << position;
    }
}

TEST(WheelResist, improvesWithDepthAndYearUpTo2017)
{
    struct Case {
        int depth, spokes, year;
        double resist;
    };
    constexpr Case cases[] = {
        {50, 16, 2011, 19.97966296}, {50, 24, 2017, 20.08649748}, {50, 24, 2030, 20.08649748},
        {20, 32, 2001, 41.43523991}, {20, 32, 2000, 41.43523991},
    };
    for (const Case& c : cases) {
        WheelResist predicted = predictWheelResist(c.depth, c.spokes, c.year);
        EXPECT_NEAR(predicted.resist, c.resist, 1e-7) << c.depth << ' ' << c.spokes << ' ' << c.year;
        EXPECT_DOUBLE_EQ(predicted.velocity, 50.0);
    }
}

} // namespace torvane
