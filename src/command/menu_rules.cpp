// The loaded activity opens and greys the commands that work on it.
#include "command/menu_rules.h"

#include "core/command_ids.h"

namespace torvane {

namespace {

using EnableCommand = void (*)(int id, bool enabled);

void afterLoad(AnalysisReadiness readiness, EnableCommand enableCommand)
{
    enableCommand(commandExpress, (readiness & analysisImpossible) == 0);
    enableCommand(commandAnalyse, readiness == readyForAnalysis);
    enableCommand(commandCreate, false);
}

} // namespace

void greyActivityCommands(EnableCommand enableCommand)
{
    for (int id : {commandExpress, commandAnalyse, commandCreate})
        enableCommand(id, false);
}

void adjustMenu(MenuAfter rule, ResultStatus status, AnalysisReadiness readiness, EnableCommand enableCommand)
{
    bool succeeded = status == statusDone;
    switch (rule) {
    case MenuAfter::none:
        break;
    case MenuAfter::loaded:
        afterLoad(succeeded ? readiness : analysisImpossible, enableCommand);
        break;
    case MenuAfter::expressed:
        if (!succeeded)
            greyActivityCommands(enableCommand);
        break;
    case MenuAfter::analysed:
        enableCommand(commandCreate, succeeded && readiness == readyForAnalysis);
        break;
    case MenuAfter::toolRan:
        greyActivityCommands(enableCommand);
        break;
    case MenuAfter::oneStroke:
        if (succeeded)
            afterLoad(readiness, enableCommand);
        break;
    }
}

} // namespace torvane
