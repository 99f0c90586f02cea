#include "gps/prepare.h"

#include "core/files.h"

#include "fit/fit_types.h"
#include "fit/tool_support.h"
#include "gps/activity.h"
#include "gps/prepare_writer.h"
#include "gps/ride_cleaning.h"
#include "gps/ride_legs.h"
#include "gps/ride_source.h"
#include "gps/ride_summaries.h"

#include <utility>

namespace torvane {

namespace {

void dropField(std::span<RideSample> samples, RideField field)
{
    for (RideSample& sample : samples)
        sample.clear(field);
}

void dropMeasured(Activity& activity, const PrepareOptions& options, PrepareFindings& findings)
{
    findings.powerDropped = options.dropPower != 0;
    findings.cadenceDropped = options.dropCadence != 0;
    if (options.dropPower)
        dropField(activity.samples, ridePower);
    if (options.dropCadence)
        dropField(activity.samples, rideCadence);
}

// The sport of the first session or lap that has one.
std::optional<uint8_t> firstSport(const Activity& activity, bool ofSessions)
{
    for (const Summary& summary : activity.summaries)
        if (summary.isSession == ofSessions && summary.sport)
            return summary.sport;
    return std::nullopt;
}

SummaryRules rulesFor(const Activity& activity, const PrepareOptions& options)
{
    SummaryRules rules;
    rules.dropPower = options.dropPower != 0;
    rules.dropCadence = options.dropCadence != 0;
    rules.sessionSport = firstSport(activity, true);
    if (!rules.sessionSport)
        rules.lapSport = firstSport(activity, false);
    return rules;
}

void finishFile(FitImage& prepared, const FitImage& source)
{
    prepared.dataSize = static_cast<int32_t>(prepared.data.size());
    buildFitHeader(prepared, source, formOfSource);
    prepared.fileCrc = fitCrc(prepared);
}

uint8_t sportOf(const PrepareOptions& options)
{
    return rideSportValues[options.sport];
}

StatusCode readSource(const FitImage& source, const PrepareOptions& options, Activity& activity,
                      PrepareFindings& findings)
{
    if (StatusCode code = readActivity(source, activity, findings))
        return code;
    if (StatusCode code = takeLegsOf(activity, sportOf(options), findings))
        return code;
    findings.deviceSpeed = deviceSpeedOf(activity);
    return activity.samples.empty() ? fitPrepareFailed : fitOk;
}

bool checkActivityToPrepare(const FitImage& source, const PrepareOptions& options, Verdict& verdict)
{
    Activity activity;
    PrepareFindings findings;
    StatusCode code = readSource(source, options, activity, findings);
    if (code != fitInvalid && activity.fileType != fileTypeActivity)
        return refuse(verdict, "error", "found an invalid file id type of a source file");
    return code == fitOk || refuse(verdict, "error", preparingFault(code));
}

PrepareFindings withSource(const SourceFindings& source)
{
    PrepareFindings findings;
    findings.source = source;
    return findings;
}

struct Once {
    StatusCode code = fitOk;
    bool settled = false; // prepared again it is the same for sure
};

Once prepareOnce(const FitImage& source, const PrepareOptions& options, FitImage& prepared, PrepareFindings& findings)
{
    Activity activity;
    uint32_t gapLimit = static_cast<uint32_t>(options.gapLimit);
    if (StatusCode code = readSource(source, options, activity, findings))
        return {code};
    reportProgress(source.progress, 100); // between two long steps: the run may be stopped there
    dropMeasured(activity, options, findings);
    placeSummaries(activity, findings);
    Once once = {fitOk, cleanRide(activity, {gapLimit, options.jumpSpeed}, findings)};
    completeSummaries(activity, sportOf(options), findings);
    prepared = {};
    if (!writePrepared(activity, rulesFor(activity, options), mostMade(source.data.size()), prepared.data, findings,
                       source.progress))
        return {fitTooLarge};
    finishFile(prepared, source);
    return once;
}

// A track with jumps can show others once those are bridged, and so can a distance that is held. Such a ride is
// prepared on until it stays as it is; a few rounds are enough for any track that was ever ridden.
void prepareOn(const PrepareOptions& options, Progress* progress, FitImage& prepared, PrepareFindings& findings)
{
    constexpr int mostRounds = 16;
    for (int round = 0; round < mostRounds; ++round) {
        FitImage again = {};
        PrepareFindings more;
        prepared.progress = progress;
        Once once = prepareOnce(prepared, options, again, more);
        prepared.progress = nullptr;
        if (once.code != fitOk || again.data == prepared.data)
            break;
        findings.positionsOff += more.positionsOff;
        findings.positionShifts += more.positionShifts;
        findings.distancesHeld += more.distancesHeld;
        prepared = std::move(again);
    }
}

} // namespace

StatusCode prepareActivity(const FitImage& source, const PrepareOptions& options, FitImage& prepared,
                           PrepareFindings& findings)
{
    findings = withSource(findings.source);
    Once once = prepareOnce(source, options, prepared, findings);
    if (once.code == fitOk && !once.settled)
        prepareOn(options, source.progress, prepared, findings);
    return once.code;
}

StatusCode loadPrepared(FitImage& prepared, const std::string& path, const PrepareOptions& options,
                        PrepareFindings& findings, Progress* progress)
{
    FitImage source = {};
    findings = {};
    if (StatusCode code = loadRideSource(source, path, sportOf(options), findings.source))
        return code;
    source.progress = progress;
    findings = withSource(findings.source);
    Once once = prepareOnce(source, options, prepared, findings);
    source = {}; // no longer needed
    if (once.code == fitOk && !once.settled)
        prepareOn(options, progress, prepared, findings);
    return once.code;
}

const char* preparingFault(StatusCode code)
{
    switch (code) {
    case fitOk:
        return nullptr;
    case fitNotSupported:
        return "detect an invalid source file structure";
    case fitSessionSportsDiffer:
        return "found several sports in a source file and no leg of the one asked for. name another by sport=, or "
               "please divide it first";
    case fitPrepareFailed:
        return "not existing record message";
    case fitTooLarge:
        return tooLargeFault;
    case fitPlanned:
        return "a source file is a planned route or course that nobody rode";
    case fitWithoutPoints:
        return "a source file holds no point of a track";
    case fitWithoutTimes:
        return "no point of a source file has a time";
    case fitXmlBroken:
        return "a source file is broken: its XML is cut off or not well-formed";
    case fitDoctype:
        return "a source file declares a document type, which no track file needs; it is not read";
    default:
        return "failed to read a source file which might be an invalid structure";
    }
}

Verdict checkPrepare(ToolInputs& inputs, const PrepareOptions& options)
{
    Verdict verdict;
    FitImage source = {};
    SourceFindings findings;
    for (SourceFileInfo& info : inputs.files)
        clearSurvey(info);
    if (!fileExists(inputs.files[0].path))
        refuse(verdict, "error", "not existing a source file");
    else if (StatusCode code = loadRideSource(source, inputs.files[0].path, sportOf(options), findings))
        refuse(verdict, "error", preparingFault(code));
    else if (checkActivityToPrepare(source, options, verdict))
        checkDestination(inputs, verdict);
    return verdict;
}

PrepareOutcome runPrepare(const ToolInputs& inputs, const PrepareOptions& options, Progress* progress)
{
    FitImage prepared = {};
    PrepareFindings findings;
    const std::string& source = inputs.files[0].path;
    const std::string& destination = inputs.files[toolDestination].path;
    if (StatusCode code = loadPrepared(prepared, source, options, findings, progress))
        return {{code, source}};
    if (!saveFitFile(prepared, destination, inputs.flush))
        return {{fitPrepareFailed, source}};
    return {{fitPrepared, destination}, findings};
}

} // namespace torvane
