// The three calculators. Hand arithmetic: 900 W at 120 rpm make 843.75 W at 90 rpm; 40 Nm at 90 rpm make 376.991 W.
#include "model/theory.h"

#include "figures.h"
#include "model/model_fixture.h"

namespace torvane {

class TheoryTest : public ModelTest {
protected:
    ResultStatus calculate(int calculator, int target)
    {
        block.theoryCalculator = calculator;
        block.theoryTarget = target;
        restart();
        theory = theorySetUp(model, block);
        return theoryCalculate(model, theory);
    }

    Theory theory;
};

TEST_F(TheoryTest, everyFigureOfTheParabolaIsFoundFromTheOthers)
{
    constexpr double unknown = 55.0;
    for (int target = 0; target < 4; ++target) {
        double figures[] = {90.0, 843.75, 120.0, 900.0};
        figures[target] = target == 0 || target == 2 ? unknown : 1.0;
        block.cadenceUsual = figures[0]; // the theory cadences follow the profile's
        block.theoryPower[0] = figures[1];
        block.cadencePoweredMax = figures[2];
        block.theoryMaxPower[0] = figures[3];
        ASSERT_EQ(calculate(0, target), 0u) << target;
        SCOPED_TRACE(target);
        expectFigures({theory.cadence, theory.power, theory.cadenceMax, theory.maxPower, theory.torque, theory.force},
                      {90.0, 843.75, 120.0, 900.0, 89.524655, 52.921590}, 1e-6); // 843.75 / (3 pi)
    }
}

TEST_F(TheoryTest, powerAboveItsMaximumIsRefusedAndChangesNothing)
{
    block.theoryPower[0] = 900.0; // the summit
    EXPECT_EQ(calculate(0, 0), 0u);
    expectFigures({theory.cadence, theory.torque}, {120, 0}); // the torque as entered
    EXPECT_EQ(calculate(0, 2), 0u);
    EXPECT_EQ(theory.cadenceMax, 90.0);
    block.theoryPower[0] = 900.5;
    for (int target : {0, 2}) {
        SCOPED_TRACE(target);
        EXPECT_EQ(calculate(0, target), statusIllegalValue);
        expectFigures({theory.cadence, theory.power, theory.cadenceMax}, {90.0, 900.5, 120.0});
    }
}

TEST_F(TheoryTest, pedalingDynamics)
{
    // Target, of torque or of force; cadence, power, torque, force, maximum. Defaults: 90 rpm, 400 W, 40 Nm, 25 kgf on
    // a crank of 172.5 mm.
    constexpr double cases[][7] = {
        {0, 0, 95.493, 400.0, 40.0, 23.645593, 417.4},      {0, 1, 90.321, 400.0, 42.291178, 25.0, 426.065},
        {1, 0, 90.0, 376.991118, 40.0, 23.645593, 402.124}, {1, 1, 90.0, 398.584961, 42.291178, 25.0, 425.157},
        {2, 0, 90.0, 400.0, 42.441318, 25.088754, 426.667},
    };
    for (auto [target, byForce, cadence, power, torque, force, maxPower] : cases) {
        SCOPED_TRACE(power);
        block.torqueOrForce = static_cast<int32_t>(byForce);
        ASSERT_EQ(calculate(1, static_cast<int>(target)), 0u);
        EXPECT_NEAR(theory.cadence, cadence, 0.002);
        expectFigures({theory.power, theory.torque, theory.force}, {power, torque, force}, 1e-5);
        EXPECT_NEAR(theory.maxPower, maxPower, 0.05);
    }
}

TEST_F(TheoryTest, gearCombination)
{
    // Target, own gears or any; cadence, kph, teeth.
    constexpr double cases[][6] = {{0, 1, 85.527, 40.0, 52, 14},
                                   {1, 1, 90.0, 42.092, 52, 14},
                                   {2, 1, 87.205, 40.0, 51, 14},
                                   {2, 0, 89.778, 40.0, 46, 13}};
    for (auto [target, ownGears, cadence, velocity, front, rear] : cases) {
        SCOPED_TRACE(cadence);
        block.useMissionProfile = static_cast<int32_t>(ownGears);
        ASSERT_EQ(calculate(2, static_cast<int>(target)), 0u);
        expectFigures({theory.cadence, theory.velocity * 3.6, theory.frontTooth, theory.rearTooth},
                      {cadence, velocity, front, rear}, 0.001);
    }
    EXPECT_NEAR(theory.expectedRatio, 3.530, 0.0005);
}

TEST_F(TheoryTest, zeroInputs)
{
    block.theoryPower[0] = 0.0;
    for (int target : {0, 2, 3}) {
        SCOPED_TRACE(target);
        EXPECT_EQ(calculate(0, target), statusZeroValue);
        expectFigures({theory.cadence, theory.cadenceMax, theory.maxPower, theory.torque}, {0, 0, 0, 0});
    }
    block.theoryMaxPower[0] = 0.0;
    EXPECT_EQ(calculate(0, 1), statusZeroValue);
    block.theoryTorque[1] = 0.0; // looked at before a force is turned into torque
    block.torqueOrForce = 1;
    EXPECT_EQ(calculate(1, 0), statusZeroValue);
    EXPECT_EQ(calculate(1, 1), statusZeroValue);
    block.theoryVelocity[2] = 0.0;
    for (int target : {0, 2}) {
        SCOPED_TRACE(target);
        EXPECT_EQ(calculate(2, target), statusZeroValue);
        expectFigures({theory.cadence, theory.frontTooth, theory.rearTooth}, {0, 42, 27});
    }
    block.cadenceUsual = 0.0;
    EXPECT_EQ(calculate(2, 1), statusZeroValue);
    expectFigures({theory.velocity, theory.frontTooth, theory.rearTooth}, {0, 42, 27});
}

TEST_F(TheoryTest, realPerformance)
{
    // Calculator, target, %; kph, cadence, teeth, Nm, W.
    constexpr double cases[][9] = {{0, 0, 0.0, 58.6, 100.4, 51, 11, 80.8, 873.2},
                                   {1, 1, 0.0, 44.7, 90.5, 51, 13, 39.8, 401.2},
                                   {1, 0, 6.0, 26.2, 94.0, 42, 19, 40.6, 419.7},
                                   {2, 2, 0.0, 40.0, 87.2, 51, 14, 29.9, 295.2}};
    for (const auto& [calculator, target, inclination, velocity, cadence, front, rear, torque, maxPower] : cases) {
        SCOPED_TRACE(velocity);
        block.theoryInclination[static_cast<int>(calculator)] = inclination;
        ASSERT_EQ(calculate(static_cast<int>(calculator), static_cast<int>(target)), 0u);
        EXPECT_EQ(theoryVerify(model, theory), 0u);
        expectFigures({theory.velocity * 3.6, theory.cadence, theory.frontTooth, theory.rearTooth, theory.torque,
                       theory.maxPower},
                      {velocity, cadence, front, rear, torque, maxPower}, 0.05);
        EXPECT_NEAR(theory.force, theory.torque / (9.80665 * 0.1725), 1e-9); // at a crank of 172.5 mm
    }
    block.windSpeed = 5.0; // 58.6 kph in still air
    ASSERT_EQ(calculate(0, 0), 0u);
    EXPECT_EQ(theoryVerify(model, theory), 0u);
    EXPECT_LT(theory.velocity, kph(50));
}

} // namespace torvane
