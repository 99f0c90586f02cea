#include "command/gps_command.h"

#include "core/parameter_block.h"
#include "core/screens.h"
#include "fit/fit_crc.h"
#include "fit/fit_image.h"
#include "fit/fit_output.h"
#include "fit/fit_tools.h"
#include "gps/analysed_writer.h"
#include "gps/analysis.h"
#include "gps/gps_load.h"
#include "gps/prepare.h"
#include "report/fit_report.h"
#include "report/prepare_report.h"

#include <string>

namespace torvane {

namespace {

// One ride in hand. Goes with its command.
struct Ride {
    Session& session;
    const std::string& path;
    FitImage source = {};
    GpsRecords records = {};
    uint32_t flags = 0;
};

StatusCode fail(const Ride& ride, const std::string& path, StatusCode code)
{
    endProgress();
    return reportStatus(ride.session.screens, path, code);
}

StatusCode loadRide(Ride& ride, bool prepared)
{
    if (prepared)
        return loadPrepared(ride.source, ride.path, oneStrokePreparation.options, prepareFindings);
    return loadFitImage(ride.source, ride.path);
}

StatusCode readRide(Ride& ride, bool prepared = false)
{
    if (StatusCode code = loadRide(ride, prepared))
        return reportStatus(ride.session.screens, ride.path, code);
    ride.session.screens.setStatus("");
    beginProgress();
    return fitOk;
}

StatusCode prepareRide(Ride& ride, uint32_t analysisFlags, TrackLimits limits)
{
    ride.flags = analysisFlags;
    ride.records.assign(fitInventory.recordCount, {});
    if (StatusCode code = prepareTrack(ride.source, ride.records, ride.flags, limits))
        return fail(ride, ride.path, code);
    return fitOk;
}

StatusCode analyseRide(Ride& ride)
{
    if (StatusCode code = prepareRide(ride, buildAnalysisFlags(), TrackLimits::analyse))
        return code;
    predictAndFinish(ride.records, ride.flags);
    analysedStats(ride.records);
    return fitOk;
}

void reportRideSummary(const Ride& ride, FitReportMode mode)
{
    reportSummary(ride.session.screens, analysedInventory, analysedSummary, ride.flags, ride.path, mode);
}

void reportRideFields(const Ride& ride)
{
    reportFields(ride.session.screens, ride.records, ride.flags,
                 addedFieldsOf(ride.flags) & (predictedCadence | predictedPower));
    reportStatus(ride.session.screens, ride.path, fitExpressed);
}

StatusCode rewriteRide(FitImage& destination, const Ride& ride)
{
    const OutputChoice& options = workingBlock.createOutput;
    uint32_t added = addedFieldsOf(ride.flags);
    if (StatusCode code = planRewrittenSize(destination, ride.source, ride.records, added))
        return code;
    if (StatusCode code = writeAnalysedFit(destination, ride.source, ride.records, added, options))
        return code;
    buildFitHeader(destination, ride.source, headerForm(options.convertEnabled, options.fitFormat));
    destination.fileCrc = fitCrc(destination);
    return fitOk;
}

StatusCode createFile(const Ride& ride, const std::string& path)
{
    FitImage destination = {};
    if (StatusCode code = rewriteRide(destination, ride))
        return fail(ride, ride.path, code);
    if (!saveFitFile(destination, path))
        return fail(ride, path, fitSaveFailed);
    reportStatus(ride.session.screens, path, fitPredictionSaved);
    endProgress();
    return fitOk;
}

// Settings that a file decides hold for this file alone: the next ride of a batch starts from the user's again.
struct RulesOfFile {
    int32_t flatCourse = workingBlock.flatCourse;
    double analyseUnrealAccele = workingBlock.analyseUnrealAccele;
    int32_t predictCadence = workingBlock.predictCadence;
    int32_t predictPower = workingBlock.predictPower;

    RulesOfFile()
    {
        applyAnalysisRules(workingBlock);
    }
    ~RulesOfFile()
    {
        workingBlock.flatCourse = flatCourse;
        workingBlock.analyseUnrealAccele = analyseUnrealAccele;
        workingBlock.predictCadence = predictCadence;
        workingBlock.predictPower = predictPower;
    }
    RulesOfFile(const RulesOfFile&) = delete;
    RulesOfFile& operator=(const RulesOfFile&) = delete;
};

// The written file holds what was predicted: the flags now speak of it.
void adoptPredictions(uint32_t analysisFlags)
{
    constexpr uint8_t definedAndFilled = 0b111;
    if (analysisFlags & analysisPredictCadence)
        fieldPresence.cadenceFlags |= definedAndFilled;
    if (analysisFlags & analysisPredictPower)
        fieldPresence.powerFlags |= definedAndFilled;
    if (fieldPresence.cadenceFlags != 0 && fieldPresence.powerFlags != 0)
        analysisReadiness = nothingToPredict;
}

StatusCode analyseAtOneStroke(Ride& ride, const std::string& destination)
{
    RulesOfFile rules;
    if (StatusCode code = analyseRide(ride))
        return code;
    reportRideSummary(ride, reportAnalysed);
    if (oneStrokePreparation.enabled)
        reportPreparation(ride.session.screens, prepareFindings);
    if (workingBlock.expressFieldsData)
        reportRideFields(ride);
    if (StatusCode code = createFile(ride, destination))
        return code;
    adoptPredictions(ride.flags);
    return fitOk;
}

} // namespace

StatusCode expressSourceData(Session& session)
{
    Ride ride = {session, fitInputFileName};
    if (StatusCode code = readRide(ride))
        return code;
    if (StatusCode code = prepareRide(ride, expressAnalysisFlags(), TrackLimits::express))
        return code;
    analysedStats(ride.records);
    reportRideSummary(ride, reportExpressed);
    reportRideFields(ride);
    endProgress();
    return fitOk;
}

StatusCode analyseAndPredict(Session& session)
{
    Ride ride = {session, fitInputFileName};
    if (StatusCode code = readRide(ride))
        return code;
    if (StatusCode code = analyseRide(ride))
        return code;
    reportRideSummary(ride, reportAnalysed);
    reportRideFields(ride);
    endProgress();
    return fitOk;
}

StatusCode createAnalysedFile(Session& session)
{
    Ride ride = {session, fitInputFileName};
    if (StatusCode code = readRide(ride))
        return code;
    if (StatusCode code = analyseRide(ride))
        return code;
    return createFile(ride, fitOutputFileName);
}

StatusCode atOneStroke(Session& session)
{
    Ride ride = {session, toolInputs.files[0].path};
    if (StatusCode code = readRide(ride, oneStrokePreparation.enabled != 0))
        return code;
    if (StatusCode code = gatherActivity(ride.source))
        return fail(ride, ride.path, code);
    setFieldPresence();
    setReadiness();
    return analyseAtOneStroke(ride, toolInputs.files[toolDestination].path);
}

} // namespace torvane
