// Awkward spots of the profile and condition reports.
#include "captured_screens.h"
#include "report/profile_report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace torvane {

namespace {

struct ProfileReport : testing::Test {
    ProfileReport()
    {
        setDefaults(workingBlock);
        applyProfile(workingBlock);
        applyCondition(workingBlock);
        shown.upper = "what stood there before";
    }

    // A section without the head line and the title.
    std::string section(uint32_t bit)
    {
        reportProfile(Pane::upper, workingBlock, bit);
        return behindTitle("\n\t\tcurrent profile   : default.pro\n\n ");
    }

    std::string condition(uint32_t bit)
    {
        reportCondition(Pane::upper, bit);
        return behindTitle("\n\t\tcurrent condition\n\n ");
    }

    std::string behindTitle(const std::string& head)
    {
        EXPECT_EQ(shown.upper.substr(0, head.size()), head);
        size_t titleEnd = shown.upper.find("\n\n", head.size());
        return titleEnd == std::string::npos ? "no title" : shown.upper.substr(titleEnd + 2);
    }

    CapturedScreens shown;
};

TEST_F(ProfileReport, sectionsInTheirOrderWhateverTheMask)
{
    reportProfile(Pane::upper, workingBlock, sectionAssist | sectionEquipment);
    EXPECT_EQ(shown.upper, "\n\t\tcurrent profile   : default.pro\n"
                           "\n principal equipment\n\n"
                           "\twear selected is\t\t:    'bike summer'\n"
                           "\thelmet selected is\t:    'normal helmet'\n"
                           "\tequipment weight\t\t:    5.8 kg except wheels\n"
                           "\tshell air drag ratio\t:    1.000 normal shell\n"
                           "\n e-Assist\n\n"
                           "\te-Assist Power\t\t:  none\n\n");
}

TEST_F(ProfileReport, freeTorsoAngleNamesNoPosition)
{
    modelState.position = 0;
    modelState.torsoAngle = 33.26;
    std::string text = section(sectionHuman);
    EXPECT_NE(text.find("kg\n\ttorso angle\t\t\t:   33.3 deg\n"), std::string::npos) << text;
    modelState.position = 5;
    text = section(sectionHuman);
    EXPECT_NE(text.find("kg\n\tposition selected is 'dancing' typified torso angle as follow:\n\ttorso"),
              std::string::npos)
        << text;
}

TEST_F(ProfileReport, oneChainringKeepsItsComma)
{
    modelState.chainringCount = 1;
    modelState.sprocketCount = 2;
    EXPECT_EQ(section(sectionShifting), "\tshifting time loss\t:    0.350 sec\n"
                                        "\tcrank length\t\t:  172.5 mm\n"
                                        "\tchainring count\t\t:    1\n"
                                        "\tchainring teeth\t\t:   51, \n"
                                        "\tsprocket count\t\t:    2\n"
                                        "\tcluster teeth\t\t:   11, 12, \n\n");
}

TEST_F(ProfileReport, eachBrakeByItsOwnType)
{
    modelState.brakeType[0] = 1;
    modelState.brakeType[1] = 0;
    modelState.brakeMaterial[1][0] = 2;
    modelState.brakeMaterial[0][1] = 1;
    modelState.brakeWeight[1][0] = 120.0;
    modelState.brakeSurfaceSize[1][0] = 160.0;
    modelState.brakeWeight[0][1] = 410.0;
    modelState.brakeSurfaceSize[0][1] = 24.0;
    EXPECT_EQ(section(sectionBrake), "\tfront brake system\t:  disc brake\n"
                                     "\tfront brake material\t:  stainless\n"
                                     "\tfront rotor weight\t:  120.0 g\n"
                                     "\tfront rotor diameter\t:  160.0 mm\n"
                                     "\trear brake system\t\t:  rim brake\n"
                                     "\trear brake material\t:  aluminum\n"
                                     "\trear rim weight\t\t:  410.0 g\n"
                                     "\trear rim depth\t\t:   24.0 mm\n\n");
}

TEST_F(ProfileReport, assistRangesUpToTheFirstInactive)
{
    struct Case {
        const char* name;
        int32_t modes[3];
        const char* ranges;
    };
    constexpr Case cases[] = {
        {"void first range", {0, 1, 1}, ""},
        {"linear second, void third",
         {1, 2, 0},
         "\tfirst range\n\t-- type\t\t\t:  constant\n\t-- range\t\t\t:  ~  10.0 kph\n\t-- ratio\t\t\t:    1.5\n"
         "\tsecond range\n\t-- type\t\t\t:  linear\n\t-- range\t\t\t:  ~  24.5 kph\n"
         "\t-- ratio\t\t\t:    0.3, at the end of range\n"},
    };
    modelState.motorLocation = 2;
    modelState.maxEPower = 250.0;
    modelState.assistRangeSpeed[0] = 10.0;
    modelState.assistRangeSpeed[1] = 24.5;
    modelState.assistRangeRatio[0] = 1.5;
    modelState.assistRangeRatio[1] = 0.25001;
    for (const Case& c : cases) {
        std::copy(std::begin(c.modes), std::end(c.modes), modelState.assistRangeMode);
        EXPECT_EQ(section(sectionAssist),
                  std::string("\te-Assist Power\t\t:  250.0 watts as maximum\n") + c.ranges + "\n")
            << c.name;
    }
}

TEST_F(ProfileReport, peloton)
{
    EXPECT_EQ(condition(sectionPeloton), "\tnot under peloton or train but alone\n");
    modelState.pelotonRatio = 0.85; // the double lies just under, so the one decimal is rounded down
    modelState.pelotonVelocity = 40.0;
    EXPECT_EQ(condition(sectionPeloton), "\tair drag ratio\t\t:        0.8\n\t-- case of velocity\t:   40.0 kph\n\n");
    modelState.pelotonMode = 1;
    modelState.pelotonNumber = 8;
    modelState.wheelDistance = 30;
    modelState.rotateTop = 1;
    EXPECT_EQ(condition(sectionPeloton), "\tpeloton number\t\t:    8\n\twheel distance\t\t:   30 cm\n"
                                         "\trotation top\t\t:     do\n\n");
}

} // namespace

} // namespace torvane
