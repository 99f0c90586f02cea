#include "command/ride_command.h"

#include "core/parameter_block.h"
#include "core/progress.h"
#include "report/ride_figures.h"
#include "report/ride_report.h"
#include "report/ride_rows.h"
#include "ride/ride_run.h"

#include <utility>

namespace torvane {

namespace {

// The steady modes answer at once; the others run over time.
bool runsOverTime(int mode)
{
    return mode != ridePowerAndVelocity && mode != rideCriticalCornering;
}

// The table under the report, where the mode has one and the log came to be.
void reportTable(Screens& screens, const RideRun& ride, Progress& progress)
{
    if (ride.log.bySectors) {
        reportSectorHeading(screens);
        reportSectorRows(screens, ride.log);
        return;
    }
    if (ride.log.rows.empty())
        return;
    if (ride.in.rideMode == rideInclinationAndVelocity)
        reportRollingHeading(screens);
    else
        reportProcessHeading(screens, ride);
    reportProcessRows(screens, ride.log, &progress);
}

// What the run leaves to the commands after it.
void leave(Session& session, RideRun& ride)
{
    session.lastDrive = ride.found.drive;
    keepEvaluation(session.model.state, ride.now);
    keepBrakeHeat(session.model.state, ride.heat);
    if (ride.graph && checkGraphSeries(*ride.graph) != 0)
        session.screens.showMessage("alert", "illegal initializing of graph structure");
    session.graph = std::move(ride.graph);
}

} // namespace

void wantGraph(ParameterBlock& working)
{
    working.expressGraph = 1;
    working.bandGraphPowerVelocity = 1;
    working.bandGraphCornering = 1;
}

ResultStatus dispatchRide(Session& session)
{
    int mode = session.working.rideMode;
    session.graph.reset();
    if (mode < 0 || mode >= rideModeCount)
        return 0;
    Progress progress = runsOverTime(mode) ? Progress(session.screens) : Progress();
    RideRun ride = runRide(session.model, takeRideInputs(session.working, session.lastDrive), &progress);
    leave(session, ride);
    session.figures = rideFigures(ride);
    if (!session.figuresAlone || isFatal(ride.status))
        reportRide(session.screens, ride);
    if (!session.figuresAlone && !isFatal(ride.status))
        reportTable(session.screens, ride, progress);
    if (session.rows && !isFatal(ride.status))
        writeRideRows(*session.rows, ride, session.graph ? &*session.graph : nullptr);
    return ride.status;
}

} // namespace torvane
