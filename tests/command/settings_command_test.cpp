// What stands between the sheets, the profile files and the model in force.
#include "command/settings_command.h"

#include "command/session.h"

#include "captured_screens.h"
#include "command/command_table.h"
#include "fit/fit_builder.h"
#include "forms/form.h"

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

} // namespace torvane
