#include "command/prepare_command.h"

#include "core/progress.h"
#include "fit/fit_tools.h"
#include "gps/prepare.h"
#include "gps/ride_comparison.h"
#include "page/comparison_page.h"
#include "report/comparison_report.h"
#include "report/fit_figures.h"
#include "report/fit_report.h"
#include "report/prepare_report.h"
#include "report/ride_rows.h"

namespace torvane {

namespace {

PrepareOutcome prepareFor(Session& session)
{
    Progress progress(session.screens);
    return runPrepare(session.inputs, session.preparation.options, &progress);
}

ComparisonOutcome compareFor(Session& session, const std::string (&paths)[2], RideComparison& comparison)
{
    Progress progress(session.screens);
    return compareRides(paths[0], paths[1], comparison, &progress);
}

} // namespace

ResultStatus prepareCommand(Session& session)
{
    PrepareOutcome outcome = prepareFor(session);
    if (outcome.tool.code == fitPrepared) {
        session.screens.setText(Pane::lower, "");
        addPreparationFigures(session.figures, outcome.findings);
        reportPreparation(session.screens, outcome.findings);
        tellPreparationNotes(session.screens, outcome.findings);
    }
    return reportStatus(session.screens, outcome.tool.path, outcome.tool.code);
}

ResultStatus compareCommand(Session& session)
{
    RideComparison comparison;
    const std::string paths[] = {session.inputs.files[0].path, session.inputs.files[1].path};
    ComparisonOutcome outcome = compareFor(session, paths, comparison);
    if (outcome.code != fitOk)
        return reportStatus(session.screens, paths[outcome.second], outcome.code);
    session.screens.setText(Pane::lower, "");
    session.figures = comparisonFigures(comparison);
    if (session.rows)
        writeComparisonRows(*session.rows, comparison);
    if (session.wantsPage)
        session.page = comparisonPage(comparison, paths[0], paths[1]);
    reportComparison(session.screens, comparison, paths[0], paths[1]);
    return reportStatus(session.screens, paths[0], fitOk);
}

} // namespace torvane
