// What is special to a dialog: which entry its target disables, what a choice reloads, what a file or a check decides.
#include "figures.h"
#include "form_fixture.h"

#include "fit/fit_tools.h"
#include "gps/analysis.h"

namespace torvane {

namespace {

void expectEnabled(int form, int control, const std::vector<int>& ids,
                   const std::vector<std::pair<int, const char*>>& cases)
{
    OpenForm open(form);
    for (auto [value, enabled] : cases)
        EXPECT_EQ(open.pick(control, value).enabledOf(ids), enabled) << form << " " << value;
}

} // namespace

TEST(Dialogs, TheTargetDisablesItsEntry)
{
    expectEnabled(2011, 4111, {4121, 4122, 4123, 4124, 4125}, {{0, "01111"}, {1, "10111"}, {2, "11011"}, {3, "11101"}});
    expectEnabled(2012, 4211, {4212, 4221, 4222, 4223, 4224, 4225}, {{0, "101101"}, {1, "110101"}, {2, "011001"}});
    expectEnabled(2013, 4311, {4321, 4322, 4323, 4324, 4325, 4351, 4352},
                  {{0, "0110011"}, {1, "1010011"}, {2, "1110000"}});
    expectEnabled(2021, 5111, {5112, 5131, 5132, 5133}, {{0, "0011"}, {1, "1101"}});
    expectEnabled(2022, 5211, {5241}, {{0, "1"}, {2, "0"}, {3, "0"}, {8, "1"}});
    expectEnabled(2023, 5311, {5341}, {{1, "1"}, {2, "0"}, {3, "1"}});
    expectEnabled(2024, 5411, {5431, 5432, 5433, 5434, 5435, 5436},
                  {{0, "111001"}, {1, "011001"}, {2, "001011"}, {3, "101111"}});
    expectEnabled(2025, 5511, {5531, 5532}, {{0, "01"}, {1, "10"}});
    expectEnabled(2025, 5521, {5533, 5534, 5535}, {{0, "200"}, {1, "110"}, {2, "101"}});
    expectEnabled(2026, 5611, {5621, 5622, 5623}, {{0, "011"}, {1, "101"}, {2, "110"}});
}

TEST(TheoryDialogs, ShowTheCadencesOfTheProfileInForce)
{
    OpenForm dialog;
    dialog.working.cadenceUsual = 82;
    dialog.working.cadencePoweredMax = 131;
    applyProfile(dialog.model.state, dialog.working);
    for (int mode : {0, 1}) {
        dialog.working.initialValueMode = mode;
        dialog.open(2011);
        EXPECT_EQ(dialog.text(4121) + dialog.text(4123), "   82.0  131.0") << mode;
        EXPECT_EQ(dialog.open(2013).text(4321), "   82.0") << mode;
    }
}

TEST(TheoryDialogs, TeethComeFromTheProfileOrFromFreeFields)
{
    OpenForm dialog(2013);
    EXPECT_EQ(rowLabels(dialog.state, dialog.at(4351)), (std::vector<std::string>{"51", "42"}));
    EXPECT_EQ(rowLabels(dialog.state, dialog.at(4352)).size(), 11u);
    dialog.pick(4351, 1).pick(4352, 10);
    EXPECT_EQ(dialog.text(4324), "42");
    EXPECT_EQ(dialog.confirm(), "");
    EXPECT_EQ(dialog.working.rearTooth, 27); // the eleventh sprocket
    dialog.open(2013).pick(4341, 0);
    EXPECT_EQ(dialog.enabledOf({4324, 4325, 4351, 4352}), "1100");
    EXPECT_EQ(dialog.text(4324), "52");
    EXPECT_EQ(dialog.type(4324, "47").pick(4341, 1).text(4324), "51");
    EXPECT_EQ(dialog.pick(4341, 0).confirm(), "");
    EXPECT_EQ(dialog.working.frontTooth, 47);
}

// Of 51 and 42, and 11 to 15, 17 to 27 in steps of 2.
TEST(TheoryDialogs, AToothThatTheProfileLacksIsTheNearestOne)
{
    constexpr int32_t cases[][4] = {{52, 14, 51, 14}, {46, 16, 42, 15}, {28, 40, 42, 27}, {80, 1, 51, 11}};
    for (auto [front, rear, nearFront, nearRear] : cases) {
        SCOPED_TRACE(testing::Message() << front << " x " << rear);
        OpenForm dialog;
        dialog.saved.frontTooth = front;
        dialog.saved.rearTooth = rear;
        EXPECT_EQ(dialog.open(2013).text(4324), std::to_string(nearFront));
        EXPECT_EQ(rowLabels(dialog.state, dialog.at(4352)).at(static_cast<size_t>(dialog.chosen(4352))),
                  std::to_string(nearRear));
        EXPECT_EQ(dialog.confirm(), "");
        expectFigures({dialog.working.frontTooth, dialog.working.rearTooth}, {nearFront, nearRear});
    }
}

TEST(RideDialogs, ShowVelocitiesInKph)
{
    OpenForm dialog(2021);
    EXPECT_EQ(dialog.text(5132), "   40.0");
    EXPECT_EQ(dialog.type(5132, "36").confirm(), "");
    EXPECT_EQ(dialog.working.rideVelocity[0], 10);
    EXPECT_EQ(dialog.open(2021).type(5132, "200").confirm(), ""); // 200 / 3.6 x 3.6 is no matter
    EXPECT_EQ(dialog.pick(5112, -1).pick(5112, 99).chosen(5112), 0) << "there is no such choice";
}

TEST(AccelerationDialog, AnotherFactorReloadsItsOwnValue)
{
    OpenForm dialog(2022);
    EXPECT_EQ(dialog.type(5241, "500").pick(5211, 8).text(5241), "  800.0");
    dialog.pick(5211, 7);
    EXPECT_EQ(dialog.text(5231) + dialog.text(5241), "G  0.100");
    dialog.pick(5211, 0).type(5241, "5000").pick(5211, 2); // the value field has no limits here
    EXPECT_EQ(dialog.confirm(), "");
    expectFigures({dialog.working.ridePower[1], dialog.working.rideTarget}, {800, 2});
}

TEST(AccelerationDialog, AKickNeedsAStartFromStanding)
{
    // Start and kick typed, whether it is enabled and what is stored. Not exactly 0; no limit holds a disabled kick.
    constexpr std::tuple<const char*, const char*, bool, double> cases[] = {
        {"0", "0.5", true, 0.5}, {"0.5", "0.5", true, 0}, {"1", "0", false, 0}};
    for (auto [start, kick, enabled, stored] : cases) {
        OpenForm dialog;
        dialog.saved.initialKickTime = 0; // of a start in motion
        EXPECT_EQ(dialog.open(2022).confirm(), "");
        dialog.open(2022);
        EXPECT_EQ(dialog.type(5242, start).type(5244, kick).enabled(5244), enabled) << start;
        EXPECT_EQ(dialog.confirm(), "") << start;
        EXPECT_EQ(dialog.working.initialKickTime, stored) << start;
    }
}

TEST(AccelerationDialog, OffersTheGearsOfTheProfile)
{
    OpenForm dialog(2022);
    std::vector<std::string> gears = rowLabels(dialog.state, dialog.at(5212));
    EXPECT_EQ(gears.size(), static_cast<size_t>(dialog.model.state.gearCount));
    EXPECT_EQ(gears.front(), "42 x 27");
    EXPECT_TRUE(dialog.pick(5221, 1).enabled(5212));
    EXPECT_EQ(dialog.pick(5212, 3).confirm(), "");
    EXPECT_EQ(dialog.working.startGearIndex[0], 3);
    // From the defaults the list starts at the gear of the default velocity, not at the one chosen before.
    EXPECT_EQ(dialog.open(2022).chosen(5212), 0);
    EXPECT_EQ(gears.at(static_cast<size_t>(dialog.open(2023).chosen(5312))), "51 x 11"); // from 70 kph
    dialog.working.initialValueMode = 1;
    EXPECT_EQ(dialog.open(2022).chosen(5212), 3);
    dialog.working.startGearIndex[0] = 99; // of another profile
    EXPECT_EQ(dialog.open(2022).chosen(5212), 0);
}

TEST(RideDialogs, LabelsAndEntriesFollowTheChoice)
{
    const std::tuple<int, int, int, std::vector<int>, const char*> cases[] = {
        {2021, 5121, 0, {5151, 5153, 5154}, "time based|min|sec|"},
        {2021, 5121, 1, {5151, 5153, 5154}, "distance based|km|m|"},
        {2024, 5411, 0, {5421, 5436}, "-- constant force braking|  0.0|"},
        {2024, 5411, 3, {5421, 5436}, "-- intermittent braking| -7.0|"},
    };
    for (const auto& [form, choice, value, ids, shown] : cases) {
        OpenForm dialog(form);
        dialog.pick(choice, value);
        std::string seen;
        for (int id : ids)
            seen += dialog.text(id) + '|';
        EXPECT_EQ(seen, shown);
    }
}

TEST(ExpressDialog, LimitsNeedSmoothingAndAltitude)
{
    OpenForm dialog(2052);
    EXPECT_EQ(dialog.enabledOf({6131, 6132}), "00");
    dialog.state.ride.presence.altitudeFlags = 1;
    EXPECT_EQ(dialog.enabledOf({6131, 6132}), "11");
    EXPECT_EQ(dialog.pick(6111, 0).enabledOf({6131, 6132}), "00");
}

TEST(AnalyseDialog, FollowsWhatTheFileHolds)
{
    struct Case {
        uint8_t FieldPresence::*field;
        uint8_t flags;
        const char* enabled; // 7111 7131 7132 7133 7151 7134 7113 7114 7121
        int flat, cadence, power;
    };
    std::vector<int> ids = {7111, 7131, 7132, 7133, 7151, 7134, 7113, 7114, 7121};
    const Case cases[] = {
        {&FieldPresence::isActivity, 1, "001201111", 1, 1, 1},
        {&FieldPresence::altitudeFlags, 1, "111201111", 0, 1, 1},
        {&FieldPresence::positionFlags, 0x10, "001111111", 1, 1, 1},
        {&FieldPresence::temperatureFlags, 1, "001200111", 1, 1, 1},
        {&FieldPresence::temperatureFlags, 3, "001202111", 1, 1, 1},
        {&FieldPresence::cadenceFlags, 1, "001201011", 1, 0, 1},
        {&FieldPresence::powerFlags, 7, "001201100", 1, 1, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.enabled);
        OpenForm dialog;
        dialog.ride.presence.*c.field = c.flags;
        dialog.open(2053);
        EXPECT_EQ(dialog.enabledOf(ids), c.enabled);
        dialog.pick(7111, 0); // the file decides
        const ParameterBlock& values = dialog.state.values;
        expectFigures({values.flatCourse, values.predictCadence, values.predictPower}, {c.flat, c.cadence, c.power});
    }
}

TEST(AnalyseDialog, NeedsSomethingToPredict)
{
    OpenForm dialog(2053);
    EXPECT_TRUE(mayConfirm(dialog.pick(7113, 0).state));
    EXPECT_FALSE(mayConfirm(dialog.pick(7114, 0).state));
    EXPECT_EQ(dialog.confirm(), "open");
    EXPECT_FALSE(dialog.enabled(7121));
    EXPECT_EQ(dialog.pick(7112, 0).enabled(7132), false);
}

TEST(AnalyseDialog, AnAverageTemperatureLandsInTheAcceleration)
{
    OpenForm dialog;
    dialog.ride.presence.temperatureFlags = 2;
    dialog.ride.presence.positionFlags = 0x01;
    dialog.ride.summary.avgTemperature = 18;
    dialog.open(2053);
    EXPECT_EQ(dialog.text(7132) + dialog.text(7134) + dialog.text(7151), " 18.0 20.0 270");
    EXPECT_TRUE(dialog.enabled(7151));
    EXPECT_FALSE(dialog.type(7132, "0").enabled(7151)); // the direction asks that entry, not the wind speed
    EXPECT_EQ(dialog.confirm(), "found too small value of unreal acceleration");
}

TEST(ToolDialogs, MessagesDecideAboutTheSport)
{
    struct Case {
        int form;
        int lap, session, activity;
        bool stored;      // the user's own choice in the sport box
        const char* seen; // path, format box, sport box enabled; sport box shown; list enabled
        bool mayConfirm;
    };
    constexpr Case cases[] = {
        {2057, 0, 0, 0, false, "00000", false}, {2057, 0, 0, 1, false, "11100", true},
        {2057, 0, 0, 1, true, "11111", true},   {2057, 1, 0, 0, false, "11011", true},
        {2057, 0, 1, 1, false, "11011", true},  {2059, 0, 0, 0, true, "00010", false},
        {2059, 1, 0, 0, true, "11111", true},   {2059, 1, 1, 0, true, "11000", true},
        {2059, 0, 1, 1, false, "11100", true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.form << ' ' << c.lap << c.session << c.activity << ' ' << c.stored);
        bool adds = c.form == 2057;
        int lap = adds ? 8311 : 8511, sport = adds ? 8342 : 8542;
        OpenForm dialog(c.form);
        dialog.pick(sport, c.stored).pick(lap, c.lap).pick(lap + 1, c.session).pick(lap + 2, c.activity);
        std::string seen = dialog.enabledOf({adds ? 8321 : 8521, adds ? 8341 : 8541, sport});
        seen += dialog.chosen(sport) ? '1' : '0';
        seen += dialog.enabledOf({adds ? 8361 : 8561});
        EXPECT_EQ(seen, c.seen);
        EXPECT_EQ(mayConfirm(dialog.state), c.mayConfirm);
    }
}

TEST(ToolDialogs, TimestampIsEnteredInParts)
{
    OpenForm dialog;
    dialog.saved.timestampOffset = 59;
    EXPECT_FALSE(mayConfirm(dialog.open(2091).state)); // below a minute
    dialog.saved.timestampOffset = 2 * 86400 + 3 * 3600 + 4 * 60 + 5;
    dialog.open(2091);
    EXPECT_EQ(dialog.text(9131) + " " + dialog.text(9132) + " " + dialog.text(9133), "2 3 4");
    EXPECT_EQ(dialog.type(9132, "23").press(9132, true).text(9132), "23");
    dialog.type(9132, "30"); // typed values are not limited
    dialog.type(9131, "0").type(9133, "0");
    EXPECT_EQ(dialog.state.values.timestampOffset, 30 * 3600);
    const std::pair<const char*, const char*> sums[] = {{"49710", "not existing a source file"}, // 28 min below 2^32 s
                                                        {"49711", "found too large value of a timestamp offset"},
                                                        {"-49710", "not existing a source file"},
                                                        {"-49711", "found too small value of a timestamp offset"}};
    for (const auto& [days, box] : sums)
        EXPECT_EQ(confirmForm(dialog.type(9132, "6").type(9131, days).state, dialog.working).boxes.at(0).text, box);
    dialog.type(9131, "0").type(9132, "0");
    EXPECT_FALSE(mayConfirm(dialog.state));
    EXPECT_EQ(dialog.type(9131, "400").press(9131, true).text(9131), "400");
    EXPECT_EQ(dialog.press(9131, false).text(9131), "399");
    EXPECT_EQ(dialog.type(9132, "-5").press(9132, false).text(9132), "-5");
    EXPECT_EQ(dialog.press(9132, true).text(9132), "-4");
    dialog.saved.timestampOffset = 86405;
    dialog.open(2091);
    dialog.state.form->store(dialog.state, dialog.working);
    EXPECT_EQ(dialog.working.timestampOffset, 86405) << "seconds are not shown, but kept";
}

} // namespace torvane
