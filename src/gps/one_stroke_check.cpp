#include "gps/one_stroke_check.h"

#include "core/files.h"
#include "fit/fit_image.h"
#include "fit/fit_types.h"
#include "fit/fit_walk.h"
#include "fit/size_limits.h"
#include "gps/gps_load.h"

namespace torvane {

namespace {

struct Fault {
    const char* title = nullptr; // none: no fault
    const char* text = nullptr;
};

constexpr Fault error(const char* text)
{
    return {"error", text};
}

Fault checkReadiness(AnalysisReadiness readiness, const Preparation& preparation)
{
    switch (readiness) {
    case readyForAnalysis:
        return {};
    case analysisImpossible:
        return error("can not analyse and predict due to a source file");
    case nothingToPredict:
        if (preparation.enabled)
            return {"warning", "no need to analyse and predict cause power and cadence are already existing. drop "
                               "one of them to predict it"};
        return {"warning", "no need to analyse and predict cause power and cadence are already existing"};
    default:
        return error("failed to read the source file which might be an invalid structure");
    }
}

// Of the file as it is, or as it will be prepared.
StatusCode surveySource(FitImage& image, SourceFileInfo& source, const Preparation& preparation,
                        PrepareFindings& findings)
{
    if (!preparation.enabled)
        return surveyFitFile(image, source);
    if (StatusCode code = loadPrepared(image, source.path, preparation.options, findings))
        return code;
    return surveyFitMessages(image, source);
}

bool severalSports(StatusCode code)
{
    return code == fitSessionSportsDiffer || code == fitLapSportsDiffer;
}

Fault checkSource(SourceFileInfo& source, const Preparation& preparation, LoadedRide& scanned)
{
    FitImage image = {};
    if (!fileExists(source.path))
        return error("not existing a source file");
    if (!preparation.enabled && readFitHeader(image, source.path) != fitOk)
        return error("detect an invalid source file structure");
    PrepareFindings findings;
    StatusCode code = surveySource(image, source, preparation, findings);
    if (code == fitNotSupported)
        return error("detect an invalid source file structure");
    if (const char* text = preparation.enabled ? preparingFault(code) : nullptr)
        return error(text);
    if (severalSports(code))
        return error("found several sports in a source file. please divide it first");
    if (code == fitTooLarge)
        return error(tooLargeFault);
    if (code != fitOk)
        return error("failed to read a source file which might be an invalid structure");
    if (source.fileType != fileTypeActivity)
        return error("found an invalid file id type of a source file");
    presetPresenceFromScan(scanned, source);
    bool lacksSome = findings.fields[ridePower].missing + findings.fields[rideCadence].missing > 0;
    if (scanned.readiness == nothingToPredict && lacksSome)
        return {}; // what its meters did not give
    return checkReadiness(scanned.readiness, preparation);
}

} // namespace

Verdict checkOneStrokeSource(ToolInputs& inputs, const Preparation& preparation, bool needDestination,
                             LoadedRide& scanned)
{
    Verdict verdict;
    clearSurvey(inputs.files[0]);
    if (Fault fault = checkSource(inputs.files[0], preparation, scanned); fault.title) {
        verdict.passed = false;
        verdict.boxes.push_back({fault.title, fault.text});
        return verdict;
    }
    if (needDestination)
        verdict.passed = checkDestination(inputs, verdict);
    return verdict;
}

void presetPresenceFromScan(LoadedRide& ride, const SourceFileInfo& info)
{
    auto present = [&](FieldBit field, int flags) { return (info.fieldsPresent & field) != 0 ? flags : 0; };
    auto set = [](uint8_t& flags, int value) { flags = static_cast<uint8_t>(value); };
    ride = {};
    FieldPresence& presence = ride.presence;
    presence.isActivity = info.fileType == fileTypeActivity;
    presence.hasRecords = info.recordDefinitionCount != 0;
    set(presence.timestampFlags, present(fieldTimestamp, eitherInRecords));
    set(presence.positionFlags,
        present(fieldLatitude, presentWithBoth) | present(fieldLongitude, presentWithBoth << secondField));
    set(presence.altitudeFlags, present(fieldAltitude, presentWithBoth));
    set(presence.motionFlags,
        present(fieldDistance, presentInRecords | presentTotal) | present(fieldSpeed, presentWithBoth << secondField));
    set(presence.temperatureFlags, present(fieldTemperature, presentInRecords | presentAverage));
    set(presence.cadenceFlags, present(fieldCadence, presentWithBoth));
    set(presence.powerFlags, present(fieldPower, presentWithBoth));
    setReadiness(ride);
}

} // namespace torvane
