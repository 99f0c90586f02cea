// The loaded activity opens and greys the commands that work on it.
#include "command/menu_rules.h"

namespace torvane {

namespace {

using EnableCommand = void (*)(int id, bool enabled);

constexpr int expressCommand = 902;
constexpr int analyseCommand = 903;
constexpr int createCommand = 904;

void afterLoad(AnalysisReadiness readiness, EnableCommand enableCommand)
{
    enableCommand(expressCommand, (readiness & analysisImpossible) == 0);
    enableCommand(analyseCommand, readiness == readyForAnalysis);
    enableCommand(createCommand, false);
}

} // namespace

void greyActivityCommands(EnableCommand enableCommand)
{
    for (int id : {expressCommand, analyseCommand, createCommand})
        enableCommand(id, false);
}

void adjustMenu(MenuAfter rule, ResultStatus status, AnalysisReadiness readiness, EnableCommand enableCommand)
{
    bool succeeded = status == 0;
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
        enableCommand(createCommand, succeeded && readiness == readyForAnalysis);
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
