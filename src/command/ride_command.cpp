#include "command/ride_command.h"

#include "command/command_table.h"
#include "core/parameter_block.h"
#include "core/progress.h"
#include "core/text.h"
#include "core/units.h"
#include "forms/entry_meanings.h"
#include "forms/form.h"
#include "page/page_texts.h"
#include "page/run_page.h"
#include "report/ride_figures.h"
#include "report/ride_report.h"
#include "report/ride_rows.h"
#include "ride/ride_run.h"

#include <algorithm>
#include <optional>
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

// Without those that align a figure in its box.
std::string withoutBlanks(const std::string& text)
{
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string valueOf(const FormState& state, const Row& row)
{
    if (row.kind == RowKind::check)
        return chosenValue(state, row) != 0 ? "on" : "off";
    if (row.kind != RowKind::choice && row.kind != RowKind::radio)
        return withoutBlanks(rowText(state, row)) +
               (*row.unit ? formatText(" %s", std::string(shownUnit(row.unit)).c_str()) : "");
    std::vector<std::string> labels = rowLabels(state, row);
    auto chosen = static_cast<size_t>(chosenValue(state, row));
    return chosen < labels.size() ? labels[chosen] : std::string();
}

// What counts of the dialog, as it stands: name, value and meaning of each entry.
std::vector<std::vector<std::string>> enteredInto(const Session& session, const Command& command)
{
    std::vector<std::vector<std::string>> entered;
    FormState state;
    openForm(state, *findForm(command.form), session.working, session.working, session.model, true);
    for (const Row& row : state.form->rows)
        if (row.name && row.offset != noField && row.kind != RowKind::button && row.kind != RowKind::label &&
            takesEffect(state, row))
            entered.push_back({row.name, valueOf(state, row), meaningOf(*state.form, row.name)});
    return entered;
}

const Command* commandOf(int mode)
{
    std::span<const Command> table = commandTable();
    auto found = std::ranges::find_if(
        table, [&](const Command& command) { return command.family == Family::ride && command.member == mode; });
    return found == table.end() ? nullptr : &*found;
}

// As their names say: the graph of a wanted power has its velocities in m/s under a name in kph.
std::optional<GraphSeries> pageCurves(const Session& session, const RideInputs& in)
{
    std::optional<GraphSeries> curves = session.graph;
    if (curves && in.rideMode == ridePowerAndVelocity && in.rideTarget == steadyTargetPower)
        for (size_t i = 0; i < curves->values.size(); i += curves->seriesNames.size())
            curves->values[i] *= kphPerMps;
    return curves;
}

void makePage(Session& session, const RideInputs& in)
{
    const Command* command = commandOf(in.rideMode);
    if (!command)
        return;
    std::optional<GraphSeries> curves = pageCurves(session, in);
    session.page = runPage(session.model, command->label, session.figures, curves ? &*curves : nullptr,
                           enteredInto(session, *command));
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
    if (session.wantsPage && !isFatal(ride.status))
        makePage(session, ride.in);
    return ride.status;
}

} // namespace torvane
