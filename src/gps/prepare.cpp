#include "gps/prepare.h"

#include "core/files.h"

#include "fit/fit_types.h"
#include "fit/tool_support.h"
#include "gps/activity.h"
#include "gps/prepare_writer.h"
#include "gps/ride_cleaning.h"
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

std::optional<uint8_t> firstOf(const std::vector<uint8_t>& sports)
{
    return sports.empty() ? std::nullopt : std::optional(sports[0]);
}

SummaryRules rulesFor(const Activity& activity, const PrepareOptions& options)
{
    SummaryRules rules;
    rules.dropPower = options.dropPower != 0;
    rules.dropCadence = options.dropCadence != 0;
    rules.sessionSport = firstOf(activity.sessionSports);
    if (activity.sessionSports.empty())
        rules.lapSport = firstOf(activity.lapSports);
    return rules;
}

void finishFile(FitImage& prepared, const FitImage& source)
{
    prepared.dataSize = static_cast<int32_t>(prepared.data.size());
    buildFitHeader(prepared, source, formOfSource);
    prepared.fileCrc = fitCrc(prepared);
}

const char* faultText(StatusCode code)
{
    switch (code) {
    case fitNotSupported:
        return "detect an invalid source file structure";
    case fitSessionSportsDiffer:
    case fitLapSportsDiffer:
        return "found several sports in a source file. please divide it first";
    case fitPrepareFailed:
        return "not existing record message";
    case fitTooLarge:
        return tooLargeFault;
    default:
        return "failed to read a source file which might be an invalid structure";
    }
}

StatusCode readSource(const FitImage& source, uint32_t gapLimit, Activity& activity, PrepareFindings& findings)
{
    if (StatusCode code = readActivity(source, gapLimit, activity, findings))
        return code;
    if (StatusCode code = sportsOf(activity))
        return code;
    return activity.samples.empty() ? fitPrepareFailed : fitOk;
}

bool checkActivityToPrepare(const FitImage& source, Verdict& verdict)
{
    Activity activity;
    PrepareFindings findings;
    StatusCode code = readSource(source, mostGapLimit, activity, findings);
    if (code != fitInvalid && activity.fileType != fileTypeActivity)
        return refuse(verdict, "error", "found an invalid file id type of a source file");
    return code == fitOk || refuse(verdict, "error", faultText(code));
}

StatusCode prepareOnce(const FitImage& source, const PrepareOptions& options, FitImage& prepared,
                       PrepareFindings& findings)
{
    findings = {};
    Activity activity;
    uint32_t gapLimit = static_cast<uint32_t>(options.gapLimit);
    if (StatusCode code = readSource(source, gapLimit, activity, findings))
        return code;
    dropMeasured(activity, options, findings);
    cleanRide(activity, {gapLimit, options.jumpSpeed}, findings);
    prepared = {};
    if (!writePrepared(activity, rulesFor(activity, options), mostMade(source.data.size()), prepared.data, findings))
        return fitTooLarge;
    finishFile(prepared, source);
    return fitOk;
}

} // namespace

// A track with jumps can show others once those are bridged. Such a ride is prepared on until it stays as it is; a few
// rounds are enough for any track that was ever ridden.
StatusCode prepareActivity(const FitImage& source, const PrepareOptions& options, FitImage& prepared,
                           PrepareFindings& findings)
{
    constexpr int mostRounds = 16;
    if (StatusCode code = prepareOnce(source, options, prepared, findings))
        return code;
    bool hasJumps = findings.positionsOff + findings.positionShifts > 0;
    for (int round = 0; hasJumps && round < mostRounds; ++round) {
        FitImage again = {};
        PrepareFindings more;
        if (prepareOnce(prepared, options, again, more) != fitOk || again.data == prepared.data)
            break;
        findings.positionsOff += more.positionsOff;
        findings.positionShifts += more.positionShifts;
        prepared = std::move(again);
    }
    return fitOk;
}

StatusCode loadPrepared(FitImage& prepared, const std::string& path, const PrepareOptions& options,
                        PrepareFindings& findings, Progress* progress)
{
    FitImage source = {};
    if (StatusCode code = loadRideSource(source, path))
        return code;
    source.progress = progress;
    return prepareActivity(source, options, prepared, findings);
}

Verdict checkPrepare(ToolInputs& inputs, ParameterBlock&)
{
    Verdict verdict;
    FitImage source = {};
    for (SourceFileInfo& info : inputs.files)
        clearSurvey(info);
    if (!fileExists(inputs.files[0].path))
        refuse(verdict, "error", "not existing a source file");
    else if (StatusCode code = loadRideSource(source, inputs.files[0].path))
        refuse(verdict, "error", faultText(code));
    else if (checkActivityToPrepare(source, verdict))
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
    if (!saveFitFile(prepared, destination))
        return {{fitPrepareFailed, source}};
    return {{fitPrepared, destination}, findings};
}

} // namespace torvane
