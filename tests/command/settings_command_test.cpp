// What stands between the sheets, the profile files and the model in force.
#include "command/settings_command.h"

#include "command/session.h"

#include "captured_screens.h"
#include "command/command_table.h"
#include "core/parameter_file.h"
#include "fit/fit_builder.h"
#include "forms/form.h"
#include "ride/ride_run.h"

#include <cmath>
#include <cstring>

namespace torvane {

namespace {

class SettingsCommand : public testing::Test {
protected:
    SettingsCommand()
    {
        setDefaults(savedBlock);
        workingBlock = savedBlock;
        formMarks = {};
        startModel();
    }
    ~SettingsCommand() override
    {
        modelState = {};
    }

    CapturedScreens shown;
    Session session = {shown.screens, {}, {}};
};

} // namespace

TEST_F(SettingsCommand, aCancelledSheetLeavesEveryFigure)
{
    modelState.windSpeed = 3; // out of a profile file: no block holds it
    workingBlock.theoryCadence[1] = 70;
    const ModelState model = modelState;
    const ParameterBlock working = workingBlock;
    for (int sheet : {321, 324, 325}) {
        EXPECT_EQ(finishSettings(session, *findCommand(sheet)), 0u);
        EXPECT_EQ(std::memcmp(&modelState, &model, sizeof model), 0) << sheet;
        EXPECT_EQ(std::memcmp(&workingBlock, &working, sizeof working), 0) << sheet;
    }
    EXPECT_EQ(shown.upper, "");
}

// A run may leave figures that are no numbers; they are none of the rider's.
TEST_F(SettingsCommand, aProfileSavedAfterARunWithoutAnAnswerLoads)
{
    TestFolder folder;
    session.profilePath = folder.path + "a.pro";
    workingBlock.rideMode = rideAcceleration;
    workingBlock.rideTarget = 4; // sector time
    workingBlock.rideEndVelocity[rideAcceleration] = 140 / 3.6;
    findCommand(802)->operation();
    ASSERT_FALSE(std::isfinite(modelState.frontWeightRatio));
    EXPECT_EQ(finishSettings(*findCommand(323)), 0u);
    auto put = [&](size_t offset) {
        Bytes bytes = bytesOf(session.profilePath);
        const double none = std::nan("");
        std::memcpy(bytes.data() + profileHeaderSize + offset, &none, sizeof none);
        writeBytes(session.profilePath, bytes);
    };
    for (size_t leftover : {offsetof(ModelState, totalWeight), offsetof(ModelState, brakeHeat)}) {
        EXPECT_EQ(finishSettings(*findCommand(322)), 0u) << shown.status;
        EXPECT_EQ(modelState.totalWeight, 60 + 7.39);
        EXPECT_TRUE(std::isfinite(modelState.frontWeightRatio) && std::isfinite(modelState.brakeHeat[0]));
        put(leftover); // as older versions wrote them
    }
    EXPECT_EQ(finishSettings(*findCommand(322)), 0u) << shown.status;
    put(offsetof(ModelState, crankLength));
    EXPECT_EQ(finishSettings(*findCommand(322)), 1u);
}

} // namespace torvane
