// What stands between the sheets, the profile files and the model in force.
#include "command/settings_command.h"

#include "captured_screens.h"
#include "command/command_table.h"
#include "command/session.h"
#include "core/command_ids.h"
#include "core/parameter_file.h"
#include "fit/fit_builder.h"
#include "forms/form.h"
#include "report/listed_figures.h"
#include "ride/ride_run.h"

#include <cmath>
#include <cstring>

namespace torvane {

namespace {

class SettingsCommand : public testing::Test {
protected:
    CapturedScreens shown;
    Session session = {shown.screens};
    ModelState& inForce = session.model.state;
};

} // namespace

TEST_F(SettingsCommand, aCancelledSheetLeavesEveryFigure)
{
    inForce.windSpeed = 3; // out of a profile file: no block holds it
    session.working.theoryCadence[1] = 70;
    ModelState model = inForce;
    ParameterBlock working = session.working;
    for (int sheet : {321, 324, 325}) {
        EXPECT_EQ(findCommand(sheet)->operation(session), 0u) << sheet;
        EXPECT_EQ(std::memcmp(&inForce, &model, sizeof model), 0) << sheet;
        EXPECT_EQ(std::memcmp(&session.working, &working, sizeof working), 0) << sheet;
    }
    EXPECT_EQ(shown.upper, "");
    session.working.calibration = {0.9F, 0.125F, 20000, 15}; // factor, half its interval, a day, Cel
    findCommand(commandReportHuman)->operation(session);
    EXPECT_NE(listed(session.pageFigures.values).find("HalfInterval 0.125 ; dragFactorTemperature 15 Cel"),
              std::string::npos);
}

// A run may leave figures that are no numbers; they are none of the rider's.
TEST_F(SettingsCommand, aProfileSavedAfterARunWithoutAnAnswerLoads)
{
    TestFolder folder;
    session.profilePath = folder.path + "a.pro";
    session.working.rideMode = rideAcceleration;
    session.working.rideTarget = 4; // sector time
    session.working.rideEndVelocity[rideAcceleration] = 140 / 3.6;
    findCommand(802)->operation(session);
    ASSERT_FALSE(std::isfinite(inForce.frontWeightRatio));
    EXPECT_EQ(findCommand(323)->operation(session), 0u);
    auto put = [&](size_t offset) {
        Bytes bytes = bytesOf(session.profilePath);
        double none = std::nan("");
        std::memcpy(bytes.data() + profileHeaderSize + offset, &none, sizeof none);
        writeBytes(session.profilePath, bytes);
    };
    for (size_t leftover : {offsetof(ModelState, totalWeight), offsetof(ModelState, brakeHeat)}) {
        EXPECT_EQ(findCommand(322)->operation(session), 0u) << shown.status;
        EXPECT_EQ(inForce.totalWeight, 60 + 7.39) << leftover;
        EXPECT_TRUE(std::isfinite(inForce.frontWeightRatio)) << leftover;
        EXPECT_TRUE(std::isfinite(inForce.brakeHeat[0])) << leftover;
        put(leftover); // as older versions wrote them
    }
    EXPECT_EQ(findCommand(322)->operation(session), 0u) << shown.status;
    put(offsetof(ModelState, crankLength));
    EXPECT_EQ(findCommand(322)->operation(session), 1u);
}

TEST_F(SettingsCommand, aProfileHoldsWhatItsPagesTake)
{
    constexpr std::pair<void (*)(ModelState&), std::string_view> cases[] = {
        {[](ModelState& m) { m.crankLength = 0; }, "crankLength is 0, its limits are 100 to 200 mm"},
        {[](ModelState& m) { m.sprocket[10] = 41; }, "sprocket[10] is 41, its limits are 8 to 40"},
        {[](ModelState& m) { m.altitude = 2e4; }, "altitude is 20000, its limits are -100 to 10000 m"},
        {[](ModelState& m) { m.brakeType[0] = 1, m.brakeWeight[1][0] = 9; },
         "brakeWeight[1][0] is 9, its limits are 50 to 700 g"},
        // What its page would not open.
        {[](ModelState& m) { m.sprocket[11] = 41, m.brakeWeight[1][0] = 9, m.ftp = 50, m.hectoPascal = 9e3; }, ""},
        {[](ModelState& m) { m.bikeWeight = 40, m.maxEPower = -1, m.assistRangeRatio[0] = 11; }, ""},
    };
    TestFolder folder;
    session.profilePath = folder.path + "a.pro";
    for (auto [change, fault] : cases) {
        startFrom(session, defaultBlock());
        ModelState model = inForce;
        change(inForce);
        EXPECT_EQ(findCommand(323)->operation(session), 0u) << fault;
        inForce = model;
        EXPECT_EQ(findCommand(322)->operation(session), fault.empty() ? 0u : 1u) << fault;
        EXPECT_EQ(session.profileFault, fault);
        EXPECT_EQ(std::memcmp(&inForce, &model, sizeof model) == 0, !fault.empty()) << fault;
    }
}

} // namespace torvane
