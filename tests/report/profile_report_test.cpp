// Awkward spots of the profile and condition reports.
#include "captured_screens.h"
#include "report/profile_report.h"
#include "told.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace torvane {

namespace {

struct ProfileReport : testing::Test {
    ProfileReport()
    {
        applyProfile(m, working);
        applyCondition(m, working);
        shown.upper = "what stood there before";
    }

    // A section without the head line and the title.
    std::string section(uint32_t bit)
    {
        reportProfile(shown.screens, Pane::upper, m, working, bit);
        return behindTitle("\n\t\tcurrent profile   : default.pro\n\n ");
    }

    std::string condition(uint32_t bit)
    {
        reportCondition(shown.screens, Pane::upper, m, bit);
        return behindTitle("\n\t\tcurrent condition\n\n ");
    }

    std::string behindTitle(const std::string& head)
    {
        EXPECT_EQ(shown.upper.substr(0, head.size()), head);
        size_t titleEnd = shown.upper.find("\n\n", head.size());
        return titleEnd == std::string::npos ? "no title" : shown.upper.substr(titleEnd + 2);
    }

    ModelState m = {};
    CapturedScreens shown;
    ParameterBlock working = defaultBlock();
};

TEST_F(ProfileReport, sectionsInTheirOrderWhateverTheMask)
{
    reportProfile(shown.screens, Pane::upper, m, working, sectionAssist | sectionEquipment);
    EXPECT_EQ(shown.upper, "\n\t\tcurrent profile   : default.pro\n"
                           "\n principal equipment\n\n"
                           "\twear selected is\t\t:    'bike summer'\n"
                           "\thelmet selected is\t:    'normal helmet'\n"
                           "\tequipment weight\t\t:    5.8 kg except wheels\n"
                           "\tshell air drag ratio\t:    1.000 normal shell\n"
                           "\n e-Assist\n\n"
                           "\te-Assist Power\t\t:  none\n\n");
}

// Wheel 0 is the front one: every field holds a number of its own.
TEST_F(ProfileReport, everyFieldStandsAtItsName)
{
    std::tie(m.humanHeight, m.humanWeight, m.torsoAngle, m.cadenceUsual) = std::tuple(181, 72, 41, 91);
    std::tie(m.cadencePoweredMax, m.cadenceShiftUp, m.cadenceShiftDown, m.ftp) = std::tuple(121, 111, 81, 261);
    m.position = 2;
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        std::tie(m.wheelWeight[wheel], m.wheelSize[wheel], m.wheelResist[wheel]) =
            std::tuple(801 + wheel, 26 + wheel, 31 + wheel);
        std::tie(m.wheelResistVelocity[wheel], m.rimDepth[wheel]) = std::tuple(41 + wheel, 51 + wheel);
        std::tie(m.spokeCount[wheel], m.modelYear[wheel]) = std::tuple(21 + wheel, 2011 + wheel);
        std::tie(m.tyreSize[wheel], m.tyreWeight[wheel]) = std::tuple(23 + wheel, 201 + wheel);
        std::tie(m.rollingCoefficient[wheel], m.frictionCoefficient[wheel]) =
            std::tuple(0.004 + 0.001 * wheel, 0.8 + 0.1 * wheel);
    }
    std::tie(m.shellLossPercent, m.shellLossTorque, m.missionLossPercent) = std::tuple(1.5, 33, 2.5);
    std::tie(m.wheelLossPercent, m.wheelLossTorque) = std::tuple(3.5, 9);
    expectTold(section(sectionHuman) + section(sectionWheel) + section(sectionTyre) + section(sectionPowerLoss),
               "tests/report/told/profile.txt");
}

TEST_F(ProfileReport, freeTorsoAngleNamesNoPosition)
{
    m.torsoAngle = 33.26;
    constexpr std::pair<int, const char*> cases[] = {
        {0, "kg\n\ttorso angle\t\t\t:   33.3 deg\n"},
        {5, "kg\n\tposition selected is 'dancing' typified torso angle as follow:\n\ttorso"}};
    for (auto [position, lines] : cases) {
        m.position = position;
        EXPECT_NE(section(sectionHuman).find(lines), std::string::npos) << lines << shown.upper;
    }
}

TEST_F(ProfileReport, aDragFactorIsToldWithItsOrigin)
{
    constexpr std::pair<Calibration, const char*> cases[] = {
        {{0, 0.1F, 1, 1}, "score\n\n"},
        {{0.92F, 0, 0, 0}, "score\n\tair drag factor\t\t:    0.920\n\n"},
        {{1.25F, 0.06F, 20593, -3},
         "score\n\tair drag factor\t\t:    1.250 +- 0.060, learned on 2026-05-20 at -3 Cel\n\n"}};
    for (const auto& [calibration, ending] : cases) {
        working.calibration = calibration;
        EXPECT_TRUE(section(sectionHuman).ends_with(ending)) << ending << shown.upper;
    }
}

TEST_F(ProfileReport, oneChainringKeepsItsComma)
{
    m.chainringCount = 1;
    m.sprocketCount = 2;
    EXPECT_EQ(section(sectionShifting), "\tshifting time loss\t:    0.350 sec\n"
                                        "\tcrank length\t\t:  172.5 mm\n"
                                        "\tchainring count\t\t:    1\n"
                                        "\tchainring teeth\t\t:   51, \n"
                                        "\tsprocket count\t\t:    2\n"
                                        "\tcluster teeth\t\t:   11, 12, \n\n");
}

TEST_F(ProfileReport, eachBrakeByItsOwnType)
{
    std::tie(m.brakeType[0], m.brakeMaterial[1][0]) = std::tuple(1, 2);
    std::tie(m.brakeType[1], m.brakeMaterial[0][1]) = std::tuple(0, 1);
    std::tie(m.brakeWeight[1][0], m.brakeSurfaceSize[1][0]) = std::tuple(120, 160);
    std::tie(m.brakeWeight[0][1], m.brakeSurfaceSize[0][1]) = std::tuple(410, 24);
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
    std::tie(m.motorLocation, m.maxEPower) = std::tuple(2, 250);
    std::tie(m.assistRangeMode[0], m.assistRangeMode[1], m.assistRangeMode[2]) = std::tuple(1, 2, 0);
    std::tie(m.assistRangeSpeed[0], m.assistRangeSpeed[1]) = std::tuple(10, 24.5);
    std::tie(m.assistRangeRatio[0], m.assistRangeRatio[1]) = std::tuple(1.5, 0.25001);
    std::string head = "\te-Assist Power\t\t:  250.0 watts as maximum\n";
    EXPECT_EQ(section(sectionAssist),
              head + "\tfirst range\n\t-- type\t\t\t:  constant\n\t-- range\t\t\t:  ~  10.0 kph\n"
                     "\t-- ratio\t\t\t:    1.5\n\tsecond range\n\t-- type\t\t\t:  linear\n"
                     "\t-- range\t\t\t:  ~  24.5 kph\n\t-- ratio\t\t\t:    0.3, at the end of range\n\n");
    m.assistRangeMode[0] = 0;
    EXPECT_EQ(section(sectionAssist), head + "\n");
}

TEST_F(ProfileReport, courseByTheSourceOfItsPressure)
{
    std::tie(m.windSpeed, m.altitude, m.temperature, m.hectoPascal) = std::tuple(-2.5, 310, 21, 976.5);
    std::tie(m.bpn, m.roadSurface) = std::tuple(75, 0);
    std::string wind = "\twind speed\t\t\t:   -2.500 mps\n",
                road = "\tBPN\t\t\t\t:   75 bpn\n\troad surface condition is ";
    m.airPressureSource = pressureComputed;
    EXPECT_EQ(condition(sectionCourse),
              wind + "\taltitude\t\t\t:  310.0 m\n\ttemperature\t\t\t:   21.0 Cel\n" + road + "'dry'\n\n");
    m.airPressureSource = pressureEntered;
    EXPECT_EQ(condition(sectionCourse), wind + "\thecto pascal\t\t:  976.5 hPa\n" + road + "'dry'\n\n");
}

TEST_F(ProfileReport, peloton)
{
    EXPECT_EQ(condition(sectionPeloton), "\tnot under peloton or train but alone\n");
    m.pelotonRatio = 0.85; // the double lies just under, so the one decimal is rounded down
    m.pelotonVelocity = 40.0;
    EXPECT_EQ(condition(sectionPeloton), "\tair drag ratio\t\t:        0.8\n\t-- case of velocity\t:   40.0 kph\n\n");
    std::tie(m.pelotonMode, m.pelotonNumber, m.wheelDistance, m.rotateTop) = std::tuple(1, 8, 30, 1);
    EXPECT_EQ(condition(sectionPeloton), "\tpeloton number\t\t:    8\n\twheel distance\t\t:   30 cm\n"
                                         "\trotation top\t\t:     do\n\n");
}

} // namespace

} // namespace torvane
