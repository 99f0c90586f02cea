#include "gps/analysis.h"

namespace torvane {

namespace {

StatusCode takeTrack(const LoadedRide& ride, Analysis& analysis, TrackLimits limits)
{
    analysis.records.assign(ride.inventory.recordCount, {});
    return prepareTrack(ride.image, analysis.records, analysis.settings, analysis.flags, limits);
}

} // namespace

StatusCode analyseRide(const Model& model, const ParameterBlock& settings, const LoadedRide& ride, Analysis& analysis,
                       Physics physics)
{
    analysis.settings = settings;
    applyAnalysisRules(analysis.settings, ride, physics);
    analysis.flags = buildAnalysisFlags(analysis.settings, ride.presence, physics);
    if (StatusCode code = takeTrack(ride, analysis, TrackLimits::analyse))
        return code;
    predictAndFinish(model, analysis.records, analysis.settings, ride.summary, analysis.flags, ride.image.progress);
    analysis.stats = analysedStats(analysis.records, ride);
    return fitOk;
}

StatusCode expressRide(const ParameterBlock& settings, const LoadedRide& ride, Analysis& analysis)
{
    analysis.settings = settings;
    analysis.flags = expressAnalysisFlags(settings, ride.presence);
    if (StatusCode code = takeTrack(ride, analysis, TrackLimits::express))
        return code;
    analysis.stats = analysedStats(analysis.records, ride);
    return fitOk;
}

} // namespace torvane
