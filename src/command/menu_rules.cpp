// The loaded activity opens and greys the commands that work on it.
#include "command/menu_rules.h"

namespace torvane {

namespace {

using EnableCommand = void (*)(int id, bool enabled);

void enableUses(RideUse use, bool enabled, EnableCommand enableCommand)
{
    for (const Command& command : commandTable())
        if (command.ride == use)
            enableCommand(command.id, enabled);
}

void afterLoad(AnalysisReadiness readiness, EnableCommand enableCommand)
{
    enableUses(RideUse::loaded, (readiness & analysisImpossible) == 0, enableCommand);
    enableUses(RideUse::ready, readiness == readyForAnalysis, enableCommand);
    enableUses(RideUse::analysed, false, enableCommand);
}

} // namespace

void greyActivityCommands(EnableCommand enableCommand)
{
    for (RideUse use : {RideUse::loaded, RideUse::ready, RideUse::analysed})
        enableUses(use, false, enableCommand);
}

std::optional<Box> whyGreyed(const Command& command, AnalysisReadiness readiness)
{
    if (readiness & analysisImpossible)
        return Box{"error", "can not analyse and predict due to a source file"};
    if (command.ride != RideUse::loaded && readiness != readyForAnalysis)
        return Box{"warning", "no need to analyse and predict cause power and cadence are already existing"};
    return std::nullopt;
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
        enableUses(RideUse::analysed, succeeded && readiness == readyForAnalysis, enableCommand);
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
