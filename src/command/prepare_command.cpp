#include "command/prepare_command.h"

#include "core/screens.h"
#include "fit/fit_tools.h"
#include "gps/prepare.h"
#include "gps/ride_comparison.h"
#include "report/comparison_report.h"
#include "report/fit_report.h"
#include "report/prepare_report.h"

namespace torvane {

ResultStatus prepareCommand(Session& session)
{
    beginProgress();
    PrepareOutcome outcome = runPrepare(session.inputs, session.preparation.options);
    endProgress();
    if (outcome.tool.code == fitPrepared) {
        session.screens.setText(Pane::lower, "");
        reportPreparation(session.screens, outcome.findings);
    }
    return reportStatus(session.screens, outcome.tool.path, outcome.tool.code);
}

ResultStatus compareCommand(Session& session)
{
    RideComparison comparison;
    const std::string paths[] = {session.inputs.files[0].path, session.inputs.files[1].path};
    beginProgress();
    ComparisonOutcome outcome = compareRides(paths[0], paths[1], comparison);
    endProgress();
    if (outcome.code != fitOk)
        return reportStatus(session.screens, paths[outcome.second], outcome.code);
    session.screens.setText(Pane::lower, "");
    reportComparison(session.screens, comparison, paths[0], paths[1]);
    return reportStatus(session.screens, paths[0], fitOk);
}

} // namespace torvane
