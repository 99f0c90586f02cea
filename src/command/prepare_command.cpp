#include "command/prepare_command.h"

#include "core/screens.h"
#include "fit/fit_tools.h"
#include "gps/prepare.h"
#include "gps/ride_comparison.h"
#include "report/comparison_report.h"
#include "report/fit_report.h"
#include "report/prepare_report.h"

namespace torvane {

ResultStatus prepareCommand()
{
    beginProgress();
    ToolOutcome outcome = runPrepare(toolInputs);
    endProgress();
    if (outcome.code == fitPrepared) {
        theScreens.setText(Pane::lower, "");
        reportPreparation(theScreens, prepareFindings);
    }
    return reportStatus(theScreens, outcome.path, outcome.code);
}

ResultStatus compareCommand()
{
    RideComparison comparison;
    const std::string paths[] = {toolInputs.files[0].path, toolInputs.files[1].path};
    beginProgress();
    ComparisonOutcome outcome = compareRides(paths[0], paths[1], comparison);
    endProgress();
    if (outcome.code != fitOk)
        return reportStatus(theScreens, paths[outcome.second], outcome.code);
    theScreens.setText(Pane::lower, "");
    reportComparison(theScreens, comparison, paths[0], paths[1]);
    return reportStatus(theScreens, paths[0], fitOk);
}

} // namespace torvane
