// From accepted pages and profile files to the live model and its report.
#include "command/settings_command.h"

#include "core/parameter_file.h"
#include "forms/form.h"
#include "model/gear_table.h"
#include "report/profile_report.h"

#include <cstring>
#include <utility>

namespace torvane {

SessionState session;

namespace {

constexpr int firstTheoryCommand = 701;
constexpr int firstRideCommand = 801;

void choose(int32_t& present, int32_t& target, int32_t number)
{
    if (present != number)
        target = 0;
    present = number;
}

// Of both sheets: what was accepted comes into force. A sheet that was cancelled leaves the figures as they are, those
// that a profile file has put into the model alone among them.
ResultStatus finishProfile()
{
    commitProfile(savedBlock, workingBlock);
    bool accepted = std::exchange(formMarks.profile, false);
    if (accepted)
        applyProfile(workingBlock);
    rebuildModel();
    if (accepted)
        reportProfile(theScreens, Pane::upper, workingBlock, allProfileSections);
    return 0;
}

ResultStatus finishCondition()
{
    commitCondition(savedBlock, workingBlock);
    bool accepted = std::exchange(formMarks.condition, false);
    if (accepted)
        applyCondition(workingBlock);
    rebuildModel();
    if (accepted)
        reportCondition(theScreens, Pane::upper, allConditionSections);
    return 0;
}

ResultStatus finishPreference()
{
    commitPreference(savedBlock, workingBlock);
    return 0;
}

// The file's condition enters the model alone: the blocks keep theirs, and the next accepted condition puts them back.
ResultStatus loadNamedProfile()
{
    if (loadProfile(workingBlock, session.profilePath) != 0)
        return 1;
    memcpy(savedBlock.profileFileName, workingBlock.profileFileName, sizeof savedBlock.profileFileName);
    fetchProfile(workingBlock);
    fetchProfile(savedBlock);
    rebuildModel();
    reportProfile(theScreens, Pane::upper, workingBlock, allProfileSections);
    formMarks.profile = false;
    return 0;
}

ResultStatus saveNamedProfile()
{
    return saveProfile(workingBlock, session.profilePath) == 0 ? 0 : 1;
}

struct Settings {
    int command;
    ResultStatus (*finish)();
};

constexpr Settings settings[] = {
    {321, finishProfile},   {322, loadNamedProfile}, {323, saveNamedProfile},
    {324, finishCondition}, {325, finishPreference},
};

} // namespace

void startModel()
{
    startModel(workingBlock);
    rebuildModel();
}

void chooseCalculator(const Command& command, ParameterBlock& working)
{
    if (command.family == Family::theory)
        choose(working.theoryCalculator, working.theoryTarget, command.id - firstTheoryCommand);
    if (command.family == Family::ride)
        choose(working.rideMode, working.rideTarget, command.id - firstRideCommand);
}

ResultStatus finishSettings(const Command& command)
{
    for (const Settings& row : settings)
        if (row.command == command.id)
            return row.finish();
    return 1;
}

} // namespace torvane
