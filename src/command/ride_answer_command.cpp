#include "command/ride_answer_command.h"

#include "core/progress.h"
#include "core/text.h"
#include "fit/fit_tools.h"
#include "gps/ride_answer.h"
#include "page/ride_page.h"
#include "report/fit_report.h"
#include "report/ride_answer_figures.h"
#include "report/ride_answer_report.h"
#include "report/ride_curves.h"
#include "report/ride_rows.h"

#include <memory>

namespace torvane {

namespace {

StatusCode answerFor(Session& session, AnsweredRide& ride)
{
    Progress progress(session.screens);
    return answerRide(session.model, session.working, session.inputs.files[0].path, session.preparation.options, ride,
                      &progress);
}

StatusCode write(Session& session, AnsweredRide& ride, const std::string& path)
{
    if (session.graph)
        keepValues(*session.graph); // the rows become those of the file
    if (saveAnsweredFile(ride, session.working.createOutput, path, session.inputs.flush) != fitOk)
        return reportUnsaved(session.screens,
                             formatText("failed to save the data to a fit file '%s'", reportedName(path).c_str()));
    reportStatus(session.screens, path, fitPredictionSaved);
    return fitOk;
}

// The analysed rows and their curves, where the front end wants them.
void writeRows(Session& session, const std::shared_ptr<AnsweredRide>& ride)
{
    const Analysis& a = ride->analysis;
    ReportedRide reported = {.path = ride->prepared.path,
                             .mode = reportAnalysed,
                             .inventory = a.stats.inventory,
                             .summary = a.stats.summary,
                             .presence = ride->prepared.presence,
                             .settings = a.settings,
                             .analysisFlags = a.flags,
                             .brakes = a.brakes};
    uint32_t predicted = addedFieldsOf(a.flags) & (predictedCadence | predictedPower);
    if (session.rows)
        writeRecordRows(*session.rows, reported, a.records, predicted);
    if (session.keepsRideCurves)
        session.graph =
            rideCurves(reported, {ride, a.records, ride->measured.rows}, predicted, session.keepsRidePlaces);
}

} // namespace

ResultStatus answerRideCommand(Session& session)
{
    auto kept = std::make_shared<AnsweredRide>(); // for the curves that it leaves
    AnsweredRide& ride = *kept;
    session.screens.setStatus("");
    session.graph.reset();
    StatusCode code = answerFor(session, ride);
    std::vector<std::string> notes = rideNotes(ride, code);
    for (const std::string& note : notes)
        session.screens.tellNote(note);
    if (code == fitOk) {
        session.figures = answerFigures(session.model, ride.answer);
        writeRows(session, kept);
        if (session.wantsPage)
            session.page = ridePage(session.model, ride, notes);
        reportRideAnswer(session.screens, session.model, ride, notes);
        const std::string& destination = session.inputs.files[toolDestination].path;
        code = destination.empty() ? fitOk : write(session, ride, destination);
        ride.prepared.image.data = std::vector<uint8_t>(); // of no use to the curves
        return code;
    }
    reportStatus(session.screens, ride.prepared.path, code);
    reportRideNotes(session.screens, notes);
    return code;
}

} // namespace torvane
