// Weight split, grip, and the resistances at one velocity. Figures to three decimals were computed independently.
#include "model/model_fixture.h"
#include "model/resistance.h"

#include <cmath>

namespace torvane {

using ResistanceTest = ModelTest;

TEST_F(ResistanceTest, weightSplit)
{
    struct Case {
        const char* name;
        double inclination, thrust, rear;
    };
    constexpr Case cases[] = {
        {"level", 0.0, 0.0, 0.55},           {"climb", 10.0, 0.0, 0.600249378},
        {"descent", -7.0, 0.0, 0.515122350}, {"braking", 0.0, -30.0, 0.330512430},
        {"wall", 300.0, 0.0, 1.0},           {"drop", -300.0, 0.0, 0.0},
    };
    for (const Case& c : cases) {
        splitWeight(c.inclination, c.thrust);
        // The mass behind the thrust term is 68.341 kg.
        EXPECT_NEAR(modelState.rearWeightRatio, c.rear, 1e-5) << c.name;
        EXPECT_DOUBLE_EQ(modelState.frontWeightRatio + modelState.rearWeightRatio, 1.0) << c.name;
    }
}

TEST_F(ResistanceTest, wetRoadsRollAndGripDifferently)
{
    struct Case {
        const char* name;
        int bpn, surface;
        double rolling, friction;
    };
    // Dry at 75: 0.004 x 0.45 + 0.003 x 0.55, and 0.85 x 0.45 + 0.75 x 0.55.
    constexpr Case cases[] = {
        {"dry", 75, 0, 0.00345, 0.795},
        {"rough", 100, 0, 0.0046, 1.06},
        {"damp", 75, 1, 0.00276, 0.5565},
        {"rain", 75, 2, 0.003795, 0.5565},
    };
    for (const Case& c : cases) {
        modelState.bpn = c.bpn;
        modelState.roadSurface = c.surface;
        updateLoadAndGrip(0.0);
        EXPECT_NEAR(modelState.effectiveRolling, c.rolling, 1e-12) << c.name;
        EXPECT_NEAR(modelState.effectiveFriction, c.friction, 1e-12) << c.name;
        EXPECT_NEAR(modelState.frontFrictionShare, 0.3825 / 0.795, 1e-12) << c.name;
        EXPECT_NEAR(modelState.rearFrictionShare, 0.4125 / 0.795, 1e-12) << c.name;
    }
}

TEST_F(ResistanceTest, tyreLoadFactorPunishesNarrowTyresOnly)
{
    struct Case {
        const char* name;
        double width, human, factor;
    };
    constexpr Case cases[] = {
        {"reference", 23.0, 75.0, 1.0},
        {"wide", 25.0, 75.0, 1.0},
        {"narrow", 20.0, 75.0, 1.3225},
        {"heavy rider", 23.0, 158.0, 2.0},
    };
    modelState.bikeWeight = 8.0;
    for (const Case& c : cases) {
        modelState.tyreSize[0] = modelState.tyreSize[1] = c.width;
        modelState.humanWeight = c.human;
        EXPECT_NEAR(tyreLoadFactor(), c.factor, 1e-12) << c.name;
    }
}

TEST_F(ResistanceTest, pelotonRatio)
{
    struct Case {
        const char* name;
        int riders, rotate;
        double velocity, ratio;
    };
    constexpr Case cases[] = {
        {"pair", 2, 1, kph(40), 0.893001543},
        {"fourteen", 14, 0, kph(40), 0.532604269},
        {"fifteen take a step", 15, 0, kph(40), 0.515387002}, // length 16.5
        {"fifteen rotating", 15, 1, kph(40), 0.547694535},
        {"alone", 1, 1, kph(40), 1.0},
        {"slow is held at 1", 10, 0, kph(2), 1.0},
        {"standing air", 10, 1, 0.0, 1.0},
        {"wind from behind", 10, 1, -3.0, 1.0},
    };
    for (const Case& c : cases) {
        modelState.pelotonNumber = c.riders;
        modelState.rotateTop = c.rotate;
        EXPECT_NEAR(pelotonRatioAt(c.velocity), c.ratio, 1e-9) << c.name;
    }
}

TEST_F(ResistanceTest, posture)
{
    struct Case {
        const char* name;
        double torso;
        int wear;
        double factor;
    };
    constexpr Case cases[] = {
        {"drops", 30.0, 1, 1.0},           {"drops in a skin suit", 30.0, 0, 0.956},
        {"aerobar", 24.0, 1, 0.850778629}, {"upright in winter clothes", 41.0, 4, 1.624602780},
        {"too low", 10.0, 1, 0.651485262},
    };
    for (const Case& c : cases) {
        modelState.torsoAngle = c.torso;
        modelState.wear = c.wear;
        EXPECT_NEAR(postureFactor(), c.factor, 1e-9) << c.name;
    }
}

TEST_F(ResistanceTest, dragForces)
{
    dragForces(kph(40), 0.0);
    EXPECT_NEAR(runState.shellDrag, 0.302175725, 1e-9);
    EXPECT_NEAR(runState.humanDrag, 1.700910997, 1e-9);
    EXPECT_NEAR(runState.wheelDrag, 0.138105398, 1e-9);

    modelState.shellType = 1; // takes 30 percent off the shell alone
    modelState.helmet = 2;
    dragForces(kph(30), kph(10));
    EXPECT_NEAR(runState.shellDrag, 0.211523007, 1e-9);
    EXPECT_NEAR(runState.humanDrag, 1.700910997 - 0.64 * 4.12 / 136.203472222, 1e-9);

    dragForces(kph(-20), kph(-20)); // a wind from behind turns the powers, never the forces
    EXPECT_NEAR(runState.wheelDrag, 0.138105398, 1e-9);
}

TEST_F(ResistanceTest, requiredPowerAt40)
{
    Solved required = resistanceAtVelocity(kph(40));
    EXPECT_EQ(required.status, 0u);
    EXPECT_NEAR(required.value, 257.287, 0.0005);
    EXPECT_NEAR(runState.shellDragPower, 32.735, 0.0005);
    EXPECT_NEAR(runState.humanDragPower, 184.259, 0.0005);
    EXPECT_NEAR(runState.wheelDragPower, 14.961, 0.0005);
    EXPECT_NEAR(runState.airDragPower, 231.954, 0.0005);
    EXPECT_NEAR(runState.rollingPower, 25.333, 0.0005);
    EXPECT_NEAR(runState.totalLoad, 2.141 + 0.232, 0.001);
}

TEST_F(ResistanceTest, windAndSlopeHaveTheirSigns)
{
    runState.headWind = -kph(40);
    EXPECT_NEAR(resistanceAtVelocity(kph(40)).value, 25.333, 0.0005); // rolling alone
    EXPECT_DOUBLE_EQ(runState.airDrag, 0.0);
    resistanceAtVelocity(kph(30));
    EXPECT_GT(runState.airDrag, 0.0);
    EXPECT_LT(runState.airDragPower, 0.0);

    takeRoad(-8.0);
    Solved downhill = resistanceAtVelocity(kph(40));
    EXPECT_NEAR(runState.slopeLoad, -5.374, 0.0005); // 67.39 kg x 8 / sqrt(10064)
    EXPECT_NEAR(runState.rollingPower, 25.544, 0.0005);
    EXPECT_LT(downhill.value, 0.0);
}

TEST_F(ResistanceTest, enteredPelotonRatioCountsAtEveryVelocity)
{
    double alone = (resistanceAtVelocity(kph(40)), runState.airDragPower);
    modelState.pelotonRatio = 0.5;
    resistanceAtVelocity(kph(40));
    EXPECT_NEAR(runState.airDragPower, alone / 2.0, 1e-9);
    EXPECT_NEAR(runState.airDrag, 2.141, 0.0005); // forces stay those of free air
    modelState.pelotonMode = 1;                   // ten riders rotating
    resistanceAtVelocity(kph(40));
    EXPECT_NEAR(runState.airDragPower, alone * 0.612711147, 1e-6);
}

TEST_F(ResistanceTest, warnsAboveTheTopGear)
{
    // 120 rpm x 51 / 11 x 668 pi mm = 70.055 kph
    EXPECT_EQ(resistanceAtVelocity(kph(70.0)).status, 0u);
    EXPECT_EQ(resistanceAtVelocity(kph(70.1)).status, statusOverReach);
}

} // namespace torvane
