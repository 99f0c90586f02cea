#include "command/gps_command.h"

#include "core/parameter_block.h"
#include "core/progress.h"
#include "fit/fit_image.h"
#include "fit/fit_tools.h"
#include "gps/analysed_fields.h"
#include "gps/analysed_writer.h"
#include "gps/analysis.h"
#include "gps/gps_load.h"
#include "gps/prepare.h"
#include "gps/ride_answer.h"
#include "page/ride_page.h"
#include "report/fit_figures.h"
#include "report/fit_report.h"
#include "report/prepare_report.h"
#include "report/ride_curves.h"
#include "report/ride_rows.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace torvane {

namespace {

// One ride in hand. Goes with its command.
struct Ride {
    Session& session;
    LoadedRide loaded;
    std::shared_ptr<Analysis> kept = std::make_shared<Analysis>(); // a table may be told after the command
    Analysis& analysis = *kept;
    PrepareFindings findings = {};         // where it is prepared first
    std::optional<Progress> progress = {}; // once its file is read, or while it is prepared
};

// What the last load found, and the file as it is now.
Ride rideOf(Session& session)
{
    session.graph.reset();
    return {session, session.ride};
}

StatusCode fail(const Ride& ride, const std::string& path, StatusCode code)
{
    return reportStatus(ride.session.screens, path, code);
}

StatusCode loadImage(Ride& ride, bool prepared)
{
    ride.loaded.prepared |= prepared;
    if (prepared)
        return loadPrepared(ride.loaded.image, ride.loaded.path, ride.session.preparation.options, ride.findings,
                            &ride.progress.emplace(ride.session.screens));
    if (!ride.loaded.inMemory)
        return loadFitImage(ride.loaded.image, ride.loaded.path);
    ride.loaded.image = *ride.loaded.inMemory;
    return fitOk;
}

StatusCode readRide(Ride& ride, bool prepared = false)
{
    if (StatusCode code = loadImage(ride, prepared))
        return reportStatus(ride.session.screens, ride.loaded.path, code);
    ride.session.screens.setStatus("");
    ride.loaded.image.progress = ride.progress ? &*ride.progress : &ride.progress.emplace(ride.session.screens);
    return fitOk;
}

StatusCode analyse(Ride& ride, bool withTable)
{
    ride.analysis.tellsHeadings = withTable || ride.session.rows;
    StatusCode code = analyseRide(ride.session.model, ride.session.working, ride.loaded, ride.analysis);
    return code != fitOk ? fail(ride, ride.loaded.path, code) : code;
}

StatusCode readAndAnalyse(Ride& ride, bool withTable = false)
{
    StatusCode code = readRide(ride);
    return code != fitOk ? code : analyse(ride, withTable);
}

ReportedRide reported(const Ride& ride, FitReportMode mode)
{
    const Analysis& a = ride.analysis;
    const LoadedRide& l = ride.loaded;
    return {l.path,     mode,    a.stats.inventory, a.stats.summary, l.presence,
            a.settings, a.flags, l.sessions,        l.laps,          a.brakes};
}

constexpr uint32_t predictedFields = predictedCadence | predictedPower;

// The table as rows, where the front end wants them.
void writeRows(const Ride& ride, FitReportMode mode)
{
    if (RowWriter* rows = ride.session.rows)
        writeRecordRows(*rows, reported(ride, mode), ride.analysis.records,
                        addedFieldsOf(ride.analysis.flags) & predictedFields);
}

// Likewise.
void keepCurves(const Ride& ride)
{
    if (ride.session.keepsRideCurves)
        ride.session.graph =
            rideCurves(reported(ride, reportAnalysed), {ride.kept, ride.analysis.records},
                       addedFieldsOf(ride.analysis.flags) & predictedFields, ride.session.keepsRidePlaces);
}

// Likewise. Without times there is no ride to tell of.
void makePage(const Ride& ride)
{
    if (ride.session.wantsPage && (ride.analysis.flags & analysisNoTimestamps) == 0)
        ride.session.page =
            ridePage(ride.session.model, answerOfAnalysis(ride.session.model, ride.loaded, ride.analysis),
                     preparationNotes(ride.findings));
}

void reportRideSummary(const Ride& ride, FitReportMode mode)
{
    ride.session.figures = summaryFigures(reported(ride, mode));
    writeRows(ride, mode);
    reportSummary(ride.session.screens, reported(ride, mode));
}

// The table on its way out, of a ride whose command has ended.
TextMaker tableOf(const Ride& ride, FitReportMode mode)
{
    return
        [=, kept = std::shared_ptr<const Analysis>(ride.kept), presence = ride.loaded.presence](const TakeText& take) {
            ReportedRide told = {.path = {},
                                 .mode = mode,
                                 .inventory = kept->stats.inventory,
                                 .summary = kept->stats.summary,
                                 .presence = presence,
                                 .settings = kept->settings,
                                 .analysisFlags = kept->flags,
                                 .brakes = kept->brakes};
            tellFields(told, kept->records, addedFieldsOf(kept->flags) & predictedFields, take);
        };
}

void reportRideFields(const Ride& ride, FitReportMode mode)
{
    if (const auto& appendMade = ride.session.screens.appendMade)
        appendMade(Pane::lower, tableOf(ride, mode));
    else
        reportFields(ride.session.screens, reported(ride, mode), ride.analysis.records,
                     addedFieldsOf(ride.analysis.flags) & predictedFields, ride.loaded.image.progress);
    reportStatus(ride.session.screens, ride.loaded.path, fitExpressed);
}

StatusCode createImage(const Ride& ride, FitImage& destination)
{
    const Analysis& a = ride.analysis;
    StatusCode code = makeAnalysedFile(destination, ride.loaded.image, a.records, addedFieldsOf(a.flags),
                                       ride.session.working.createOutput, a.stats.summary.totalTimer);
    return code != fitOk ? fail(ride, ride.loaded.path, code) : code;
}

StatusCode createFile(const Ride& ride, const std::string& path)
{
    const Analysis& a = ride.analysis;
    if (StatusCode code =
            saveAnalysedFile(path, ride.loaded.image, a.records, addedFieldsOf(a.flags),
                             ride.session.working.createOutput, a.stats.summary.totalTimer, ride.session.inputs.flush))
        return fail(ride, code == fitSaveFailed ? path : ride.loaded.path, code);
    reportStatus(ride.session.screens, path, fitPredictionSaved);
    return fitOk;
}

// The written file holds what was predicted: the flags now speak of it.
void adoptPredictions(LoadedRide& ride, uint32_t analysisFlags)
{
    if (analysisFlags & analysisPredictCadence)
        ride.presence.cadenceFlags |= presentWithBoth;
    if (analysisFlags & analysisPredictPower)
        ride.presence.powerFlags |= presentWithBoth;
    if (ride.presence.cadenceFlags != 0 && ride.presence.powerFlags != 0)
        ride.readiness = nothingToPredict;
}

StatusCode analyseAtOneStroke(Ride& ride, const std::string& destination)
{
    bool withTable = ride.session.working.expressFieldsData != 0;
    if (StatusCode code = analyse(ride, withTable))
        return code;
    keepCurves(ride);
    makePage(ride);
    reportRideSummary(ride, reportAnalysed);
    if (ride.session.preparation.enabled) {
        addPreparationFigures(ride.session.figures, ride.findings);
        reportPreparation(ride.session.screens, ride.findings);
        tellPreparationNotes(ride.session.screens, ride.findings);
    }
    if (withTable)
        reportRideFields(ride, reportAnalysed);
    if (StatusCode code = createFile(ride, destination))
        return code;
    adoptPredictions(ride.loaded, ride.analysis.flags);
    ride.loaded.path = destination;
    ride.loaded.prepared = false; // what it held is in that file
    ride.session.take(std::move(ride.loaded));
    return fitOk;
}

} // namespace

StatusCode expressSourceData(Session& session)
{
    Ride ride = rideOf(session);
    if (StatusCode code = readRide(ride))
        return code;
    if (StatusCode code = expressRide(session.working, ride.loaded, ride.analysis))
        return fail(ride, ride.loaded.path, code);
    reportRideSummary(ride, reportExpressed);
    reportRideFields(ride, reportExpressed);
    return fitOk;
}

StatusCode analyseAndPredict(Session& session)
{
    Ride ride = rideOf(session);
    if (StatusCode code = readAndAnalyse(ride, true))
        return code;
    keepCurves(ride);
    makePage(ride);
    reportRideSummary(ride, reportAnalysed);
    reportRideFields(ride, reportAnalysed);
    return fitOk;
}

StatusCode createAnalysedFile(Session& session)
{
    Ride ride = rideOf(session);
    if (StatusCode code = readAndAnalyse(ride))
        return code;
    session.figures = summaryFigures(reported(ride, reportAnalysed));
    writeRows(ride, reportAnalysed);
    return createFile(ride, session.inputs.files[toolDestination].path);
}

StatusCode createAnalysedImage(Session& session, FitImage& destination)
{
    Ride ride = rideOf(session);
    if (StatusCode code = readAndAnalyse(ride))
        return code;
    return createImage(ride, destination);
}

StatusCode atOneStroke(Session& session)
{
    session.graph.reset();
    Ride ride = {session, {{}, session.inputs.files[0].path}};
    if (StatusCode code = readRide(ride, session.preparation.enabled != 0))
        return code;
    if (StatusCode code = gatherActivity(ride.loaded))
        return fail(ride, ride.loaded.path, code);
    return analyseAtOneStroke(ride, session.inputs.files[toolDestination].path);
}

} // namespace torvane
