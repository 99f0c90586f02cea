#include "command/ride_command.h"

#include "core/parameter_block.h"
#include "core/screens.h"
#include "report/ride_report.h"
#include "ride/ride_run.h"

#include <utility>

namespace torvane {

namespace {

// The steady modes answer at once; the others run over time.
bool runsOverTime(int mode)
{
    return mode != ridePowerAndVelocity && mode != rideCriticalCornering;
}

void reportProcess(Screens& screens, const SampleLog& log)
{
    reportProcessHeading(screens);
    reportProcessRows(screens, log);
}

void reportRolling(Screens& screens, const SampleLog& log)
{
    reportRollingHeading(screens);
    reportProcessRows(screens, log);
}

void reportSectors(Screens& screens, const SampleLog& log)
{
    reportSectorHeading(screens);
    reportSectorRows(screens, log);
}

// The table under the report, where the mode has one and the log came to be.
void reportTable(Screens& screens, int mode, const SampleLog& log)
{
    if (log.bySectors) {
        reportSectors(screens, log);
    } else if (log.rows.empty()) {
        return;
    } else if (mode == rideInclinationAndVelocity) {
        reportRolling(screens, log);
    } else {
        reportProcess(screens, log);
    }
}

void leaveGraph(Session& session, std::optional<GraphSeries>& graph)
{
    if (graph && checkGraphSeries(*graph) != 0) {
        session.screens.showMessage("alert", "illegal initializing of graph structure");
    }
    session.graph = std::move(graph);
}

} // namespace

ResultStatus dispatchRide(Session& session)
{
    const int mode = workingBlock.rideMode;
    session.graph.reset();
    if (mode < 0 || mode >= rideModeCount) {
        return 0;
    }
    if (runsOverTime(mode)) {
        beginProgress();
    }
    RideResult result;
    prepareRideRun();
    runRide(result);
    leaveGraph(session, result.graph);
    reportRide(session.screens, result.status);
    if (!isFatal(result.status)) {
        reportTable(session.screens, mode, result.log);
    }
    if (runsOverTime(mode)) {
        endProgress();
    }
    return result.status;
}

} // namespace torvane
