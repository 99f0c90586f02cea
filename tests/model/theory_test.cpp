// The three calculators. Hand arithmetic: 900 W at 120 rpm make 843.75 W at 90 rpm; 40 Nm at 90 rpm make 376.991 W.
#include "model/theory.h"

#include "figures.h"
#include "model/model_fixture.h"

namespace torvane {

class TheoryTest : public ModelTest {
protected:
    static ResultStatus calculate(int calculator, int target)
    {
        workingBlock.theoryCalculator = calculator;
        workingBlock.theoryTarget = target;
        restart();
        theorySetUp();
        return theoryCalculate();
    }
};

TEST_F(TheoryTest, everyFigureOfTheParabolaIsFoundFromTheOthers)
{
    constexpr double unknown = 55.0;
    for (int target = 0; target < 4; ++target) {
        double figures[] = {90.0, 843.75, 120.0, 900.0};
        figures[target] = target == 0 || target == 2 ? unknown : 1.0;
        workingBlock.cadenceUsual = figures[0]; // the theory cadences follow the profile's
        workingBlock.theoryPower[0] = figures[1];
        workingBlock.cadencePoweredMax = figures[2];
        workingBlock.theoryMaxPower[0] = figures[3];
        ASSERT_EQ(calculate(0, target), 0u) << target;
        SCOPED_TRACE(target);
        expectFigures({runState.cadence, runState.power, runState.cadenceMax, runState.maxPower},
                      {90.0, 843.75, 120.0, 900.0}, 1e-9);
        EXPECT_NEAR(runState.torque, 89.524655, 1e-6) << target; // 843.75 / (3 pi)
        EXPECT_NEAR(runState.force, 52.921590, 1e-6) << target;
    }
}

TEST_F(TheoryTest, powerAboveItsMaximumIsRefusedAndChangesNothing)
{
    workingBlock.theoryPower[0] = 900.0; // the summit
    EXPECT_EQ(calculate(0, 0), 0u);
    expectFigures({runState.cadence, runState.torque}, {120, 0}); // the torque as entered
    EXPECT_EQ(calculate(0, 2), 0u);
    EXPECT_EQ(runState.cadenceMax, 90.0);
    workingBlock.theoryPower[0] = 900.5;
    for (int target : {0, 2}) {
        EXPECT_EQ(calculate(0, target), statusIllegalValue);
        expectFigures({runState.cadence, runState.power, runState.cadenceMax}, {90.0, 900.5, 120.0});
    }
}

TEST_F(TheoryTest, pedalingDynamics)
{
    struct Case {
        const char* name;
        int target, torqueOrForce;
        double cadence, power, torque, force, maxPower;
    };
    // Defaults: 90 rpm, 400 W, 40 Nm, 25 kgf on a crank of 172.5 mm.
    constexpr Case cases[] = {
        {"cadence of torque", 0, 0, 95.492966, 400.0, 40.0, 23.645593, 417.4},
        {"cadence of force", 0, 1, 90.321, 400.0, 42.291178, 25.0, 426.065},
        {"power of torque", 1, 0, 90.0, 376.991118, 40.0, 23.645593, 402.124},
        {"power of force", 1, 1, 90.0, 398.584961, 42.291178, 25.0, 425.157},
        {"torque", 2, 0, 90.0, 400.0, 42.441318, 25.088754, 426.667},
    };
    for (const Case& c : cases) {
        workingBlock.torqueOrForce = c.torqueOrForce;
        ASSERT_EQ(calculate(1, c.target), 0u) << c.name;
        EXPECT_NEAR(runState.cadence, c.cadence, 0.002) << c.name;
        SCOPED_TRACE(c.name);
        expectFigures({runState.power, runState.torque, runState.force}, {c.power, c.torque, c.force}, 1e-5);
        EXPECT_NEAR(runState.maxPower, c.maxPower, 0.05) << c.name;
    }
}

TEST_F(TheoryTest, gearCombination)
{
    struct Case {
        const char* name;
        int target, ownGears;
        double cadence, kph;
        int front, rear;
    };
    constexpr Case cases[] = {
        {"cadence", 0, 1, 85.527, 40.0, 52, 14},
        {"velocity", 1, 1, 90.0, 42.092, 52, 14},
        {"own teeth", 2, 1, 87.205, 40.0, 51, 14},
        {"any teeth", 2, 0, 89.778, 40.0, 46, 13},
    };
    for (const Case& c : cases) {
        workingBlock.useMissionProfile = c.ownGears;
        ASSERT_EQ(calculate(2, c.target), 0u) << c.name;
        EXPECT_NEAR(runState.cadence, c.cadence, 0.001) << c.name;
        EXPECT_NEAR(runState.velocity * 3.6, c.kph, 0.001) << c.name;
        EXPECT_EQ(runState.frontTooth, c.front) << c.name;
        EXPECT_EQ(runState.rearTooth, c.rear) << c.name;
        EXPECT_NEAR(runState.gearRatio, static_cast<double>(c.front) / c.rear, 1e-12) << c.name;
    }
    EXPECT_NEAR(runState.expectedRatio, 3.530, 0.0005);
}

TEST_F(TheoryTest, zeroInputs)
{
    for (int target : {0, 2, 3}) {
        setDefaults(workingBlock);
        workingBlock.theoryPower[0] = 0.0;
        EXPECT_EQ(calculate(0, target), statusZeroValue) << target;
        EXPECT_EQ(runState.cadence + runState.cadenceMax + runState.maxPower + runState.torque, 0.0) << target;
    }
    setDefaults(workingBlock);
    workingBlock.theoryMaxPower[0] = 0.0;
    EXPECT_EQ(calculate(0, 1), statusZeroValue);
    workingBlock.theoryTorque[1] = 0.0; // looked at before a force is turned into torque
    workingBlock.torqueOrForce = 1;
    EXPECT_EQ(calculate(1, 0), statusZeroValue);
    EXPECT_EQ(calculate(1, 1), statusZeroValue);
    workingBlock.theoryVelocity[2] = 0.0;
    for (int target : {0, 2}) {
        EXPECT_EQ(calculate(2, target), statusZeroValue) << target;
        expectFigures({runState.cadence, runState.frontTooth, runState.rearTooth}, {0, 42, 27});
    }
}

TEST_F(TheoryTest, realPerformance)
{
    struct Case {
        const char* name;
        int calculator, target;
        double inclination, kph, cadence;
        int front, rear;
        double torque, maxPower;
    };
    constexpr Case cases[] = {
        {"cadence theory", 0, 0, 0.0, 58.6, 100.4, 51, 11, 80.8, 873.2},
        {"pedaling dynamics", 1, 1, 0.0, 44.7, 90.5, 51, 13, 39.8, 401.2},
        {"on a climb", 1, 0, 6.0, 26.2, 94.0, 42, 19, 40.6, 419.7},
        {"gears", 2, 2, 0.0, 40.0, 87.2, 51, 14, 29.9, 295.2},
    };
    for (const Case& c : cases) {
        workingBlock.theoryInclination[c.calculator] = c.inclination;
        ASSERT_EQ(calculate(c.calculator, c.target), 0u) << c.name;
        EXPECT_EQ(theoryVerify(), 0u) << c.name;
        EXPECT_NEAR(runState.velocity * 3.6, c.kph, 0.05) << c.name;
        EXPECT_NEAR(runState.cadence, c.cadence, 0.05) << c.name;
        EXPECT_EQ(runState.frontTooth, c.front) << c.name;
        EXPECT_EQ(runState.rearTooth, c.rear) << c.name;
        EXPECT_NEAR(runState.torque, c.torque, 0.05) << c.name;
        EXPECT_NEAR(runState.maxPower, c.maxPower, 0.05) << c.name;
    }
}

TEST_F(TheoryTest, fatalBitsOfTheRoadMoveUpByFour)
{
    workingBlock.theoryPower[1] = 1e300; // beyond all rounds, and beyond the top gear
    ASSERT_EQ(calculate(1, 2), 0u);
    EXPECT_EQ(theoryVerify(), 0x1000020u);
    workingBlock.theoryPower[1] = 2246.382; // a warning alone stays
    ASSERT_EQ(calculate(1, 2), 0u);
    EXPECT_EQ(theoryVerify(), statusOverReach);
}

} // namespace torvane
