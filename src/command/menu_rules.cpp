// The loaded activity opens and greys the commands that work on it.
#include "command/menu_rules.h"

#include "fit/fit_tools.h"
#include "gps/gps_load.h"

namespace torvane {

namespace {

using EnableCommand = void (*)(int id, bool enabled);

constexpr int expressCommand = 902;
constexpr int analyseCommand = 903;
constexpr int createCommand = 904;

bool mayExpress()
{
    return (analysisReadiness & 1) == 0;
}

bool mayPredict()
{
    return analysisReadiness == 0;
}

void afterLoad(bool loaded, EnableCommand enableCommand)
{
    enableCommand(expressCommand, loaded && mayExpress());
    enableCommand(analyseCommand, loaded && mayPredict());
    enableCommand(createCommand, false);
}

// The file just written is the loaded one from now on.
void afterOneStroke(EnableCommand enableCommand)
{
    fitInputFileName = toolInputs.files[toolDestination].path;
    afterLoad(true, enableCommand);
}

} // namespace

void greyActivityCommands(EnableCommand enableCommand)
{
    for (int id : {expressCommand, analyseCommand, createCommand})
        enableCommand(id, false);
}

void adjustMenu(MenuAfter rule, ResultStatus status, EnableCommand enableCommand)
{
    bool succeeded = status == 0;
    switch (rule) {
    case MenuAfter::none:
        break;
    case MenuAfter::loaded:
        afterLoad(succeeded, enableCommand);
        break;
    case MenuAfter::expressed:
        if (!succeeded)
            greyActivityCommands(enableCommand);
        break;
    case MenuAfter::analysed:
        enableCommand(createCommand, succeeded && mayPredict());
        break;
    case MenuAfter::toolRan:
        greyActivityCommands(enableCommand);
        break;
    case MenuAfter::oneStroke:
        if (succeeded)
            afterOneStroke(enableCommand);
        break;
    }
}

} // namespace torvane
