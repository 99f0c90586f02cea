#include "command/ride_command.h"

#include "command/command_graph.h"
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

void reportProcess(const SampleLog& log)
{
    reportProcessHeading(theScreens);
    reportProcessRows(theScreens, log);
}

void reportRolling(const SampleLog& log)
{
    reportRollingHeading(theScreens);
    reportProcessRows(theScreens, log);
}

void reportSectors(const SampleLog& log)
{
    reportSectorHeading(theScreens);
    reportSectorRows(theScreens, log);
}

// The table under the report, where the mode has one and the log came to be.
void reportTable(int mode, const SampleLog& log)
{
    if (log.bySectors) {
        reportSectors(log);
    } else if (log.rows.empty()) {
        return;
    } else if (mode == rideInclinationAndVelocity) {
        reportRolling(log);
    } else {
        reportProcess(log);
    }
}

void leaveGraph(std::optional<GraphSeries>& graph)
{
    if (graph && checkGraphSeries(*graph) != 0) {
        theScreens.showMessage("alert", "illegal initializing of graph structure");
    }
    commandGraph = std::move(graph);
}

} // namespace

ResultStatus dispatchRide()
{
    const int mode = workingBlock.rideMode;
    commandGraph.reset();
    if (mode < 0 || mode >= rideModeCount) {
        return 0;
    }
    if (runsOverTime(mode)) {
        beginProgress();
    }
    RideResult result;
    prepareRideRun();
    runRide(result);
    leaveGraph(result.graph);
    reportRide(theScreens, result.status);
    if (!isFatal(result.status)) {
        reportTable(mode, result.log);
    }
    if (runsOverTime(mode)) {
        endProgress();
    }
    return result.status;
}

} // namespace torvane
