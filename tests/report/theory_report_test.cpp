// The theory reports around their status blocks, and the lines that only one target has.
#include "captured_screens.h"
#include "report/theory_report.h"

#include <gtest/gtest.h>

#include <tuple>

namespace torvane {

namespace {

struct TheoryReport : testing::Test {
    TheoryReport()
    {
        shown.lower = "before";
    }

    void choose(int calculator, int target)
    {
        theory.calculator = calculator;
        theory.target = target;
    }

    Theory theory = {};
    CapturedScreens shown;
};

TEST_F(TheoryReport, warningStandsBeforeTheEmptyLine)
{
    choose(1, 2);
    reportTheoryResult(shown.screens, theory, 0x40000);
    EXPECT_EQ(shown.lower, "\n pedaling dynamics which calculation target is 'torque, forca'\n"
                           "warning :\nnon-sence variate value\n\n"
                           "\tcadence\t\t\t:    0.0 rpm\n"
                           "\tpedaling power\t\t:    0.0 W\n"
                           "\t-- torque\t\t\t:    0.0 Nm\n"
                           "\t-- force\t\t\t:    0.0 kgf\n"
                           "\tcadence powered max\t:    0.0 rpm\n"
                           "\tmaximal power\t\t:    0.0 W\n");
    EXPECT_EQ(shown.status, "status : pedaling dynamics which calculation target is 'torque, forca', with any warning");
}

TEST_F(TheoryReport, gearTeethQuoteTheCadenceEntered)
{
    choose(2, 2);
    std::tie(theory.askedCadence, theory.cadence, theory.velocity) = std::tuple(95, 93.2, 10);
    std::tie(theory.frontTooth, theory.rearTooth) = std::tuple(47, 16);
    std::tie(theory.gearRatio, theory.expectedRatio) = std::tuple(47.0 / 16.0, 2.8812);
    std::string lines = "\n gear combination which calculation target is 'gear teeth'\n\n"
                        "\tcadence\t\t\t:   93.2 rpm\n"
                        "\tvelocity\t\t\t:   36.0 kph\n"
                        "\tfront chainring tooth\t:   47\n"
                        "\trear cluster tooth\t:   16\n"
                        "\tgear ratio\t\t\t:    2.938\n"
                        "\texpected gear ratio\t:    2.881 case of 95.0 rpm\n";
    reportTheoryResult(shown.screens, theory, 0);
    EXPECT_EQ(shown.lower, lines + "\t-- case of unuse current mission profile,\n"
                                   "\t-- teeth coverage both of chainring and cluster are same as current profile\n");
    theory.useMissionProfile = 1;
    reportTheoryResult(shown.screens, theory, 0);
    EXPECT_EQ(shown.lower, lines);
}

TEST_F(TheoryReport, roadIsAppendedWithItsOwnStatus)
{
    choose(0, 0);
    std::tie(theory.road.inclination, theory.velocity, theory.maxPower) = std::tuple(1.5, 20, 1000);
    std::tie(theory.frontTooth, theory.rearTooth, theory.gearRatio) = std::tuple(51, 11, 51.0 / 11.0);
    reportTheoryReal(shown.screens, theory, 0x100000);
    EXPECT_EQ(shown.lower, "before"
                           "\treal performance with inclination 1.500 per and current profile as follows:\n"
                           "warning :\nover maximal velocity under current profile\n"
                           "\tvelocity\t\t\t:   72.0 kph for the power\n"
                           "\texpected cadence\t\t:    0.0 rpm, geared 51/11 ratio 4.636\n"
                           "\t-- torque\t\t\t:    0.0 Nm\n"
                           "\t-- force\t\t\t:    0.0 kgf\n"
                           "\tcadence powered max\t:    0.0 rpm\n"
                           "\t-- required power\t\t: 1000.0 W\n");
    EXPECT_EQ(shown.status, "status : cadence theory which calculation target is 'cadence', with any warning");
}

} // namespace

} // namespace torvane
