// The resistances at one velocity. Figures to three decimals were computed independently.
#include "figures.h"
#include "model/model_fixture.h"
#include "model/resistance.h"

namespace torvane {

using ResistanceTest = ModelTest;

TEST_F(ResistanceTest, pelotonRatio)
{
    // Riders, rotation, kph, ratio: a long train takes a step at fifteen; slow, still and following air stay at 1.
    constexpr double cases[][4] = {
        {2, 1, 40, 0.893001543},
        {14, 0, 40, 0.532604269},
        {15, 0, 40, 0.515387002},
        {15, 1, 40, 0.547694535},
        {1, 1, 40, 1},
        {10, 0, 2, 1},
        {10, 1, -3, 1},
    };
    for (auto [riders, rotate, velocity, ratio] : cases) {
        m.pelotonNumber = static_cast<int32_t>(riders);
        m.rotateTop = static_cast<int32_t>(rotate);
        rebuildModel(model);
        EXPECT_NEAR(pelotonRatioAt(model, kph(velocity)), ratio, 1e-9) << riders << " riders at " << velocity;
    }
}

TEST_F(ResistanceTest, dragForces)
{
    resistanceAtVelocity(model, now, kph(40));
    expectFigures({now.shellDrag, now.humanDrag, now.wheelDrag}, {0.302175725, 1.700910997, 0.138105398}, 1e-9);

    m.shellType = 1; // takes 30 percent off the shell alone
    m.helmet = 2;
    now.headWind = kph(10);
    resistanceAtVelocity(model, now, kph(30));
    EXPECT_NEAR(now.shellDrag, 0.211523007, 1e-9);
    EXPECT_NEAR(now.humanDrag, 1.700910997 - 0.64 * 4.12 / 136.203472222, 1e-9);

    m.wheelResistVelocity[0] = 40.0; // the same force: W become kgf as if they were met at 50 kph
    m.wheelResist[0] *= 0.64;
    rebuildModel(model);
    now.headWind = kph(-60); // a wind from behind turns the powers, never the forces
    resistanceAtVelocity(model, now, kph(20));
    EXPECT_NEAR(now.wheelDrag, 0.138105398, 1e-9);
}

TEST_F(ResistanceTest, postureAndRoad)
{
    m.helmet = helmetNormal;
    // Torso's angle, and what it makes of the drag at 30 degrees: 0.2 + 0.8 sin / sin 30, and below 20 sin (20 - it)
    // more.
    constexpr double cases[][2] = {{30, 1}, {90, 1.8}, {20, 0.747232}, {10, 0.651485}};
    double at30 = 0.0;
    for (auto [torso, factor] : cases) {
        m.torsoAngle = torso;
        rebuildModel(model);
        resistanceAtVelocity(model, now, kph(40));
        at30 = torso == 30 ? now.humanDrag : at30;
        EXPECT_NEAR(now.humanDrag / at30, factor, 1e-6) << torso;
    }
    double dry = now.rollingLoad;
    for (auto [surface, factor] : {std::pair(surfaceDamp, 0.8), std::pair(surfaceRain, 1.1)}) {
        m.roadSurface = surface;
        takeRoad(0.0);
        EXPECT_NEAR(now.rollingLoad / dry, factor, 1e-12) << surface;
    }
    now.physics = Physics::ofTheRoad; // cold air is denser, 293.15 / 273.15
    setAir(now, seaLevelPressure, 0);
    EXPECT_NEAR(now.airRatio, 1.0732, 0.0001);
}

} // namespace torvane
