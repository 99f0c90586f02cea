#include "gps/analysis.h"

#include "core/large_pages.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace torvane {

namespace {

StatusCode takeTrack(const LoadedRide& ride, Analysis& analysis, TrackLimits limits)
{
    size_t count = ride.inventory.recordCount;
    analysis.records.reserve(count);
    expectAllTouched(analysis.records.data(), count * sizeof(GpsRecord));
    analysis.records.assign(count, {});
    return prepareTrack(ride.image, analysis.records, analysis.settings, analysis.flags, limits);
}

uint32_t missingFlags(const LoadedRide& ride)
{
    if (ride.prepared)
        return analysisPrepared | analysisMissing;
    return ride.marksMissing ? analysisMissing : 0;
}

bool lacksSome(const GpsRecords& records, double GpsRecord::*field)
{
    return std::ranges::any_of(records, [=](const GpsRecord& record) { return std::isnan(record.*field); });
}

struct Metered {
    double power, cadence;
};

// Rows in which a meter gave nothing get what the model asks for there; all others keep what was measured. What is
// predicted for every row anyway needs no such look.
void fillMissing(const Model& model, const ParameterBlock& asked, const LoadedRide& ride, Analysis& analysis)
{
    GpsRecords& records = analysis.records;
    ParameterBlock settings = analysis.settings;
    bool power = asked.predictPower && !settings.predictPower && lacksSome(records, &GpsRecord::power);
    bool cadence = asked.predictCadence && !settings.predictCadence && lacksSome(records, &GpsRecord::cadence);
    if (!power && !cadence)
        return;
    std::vector<Metered> metered;
    metered.reserve(records.size());
    for (const GpsRecord& record : records)
        metered.push_back({record.power, record.cadence});
    settings.predictPower = settings.predictCadence = 1;
    predictAndFinish(model, records, settings, ride.summary, analysis.flags, ride.image.progress);
    for (size_t i = 0; i < records.size(); ++i) {
        if (!power || !std::isnan(metered[i].power))
            records[i].power = metered[i].power;
        if (!cadence || !std::isnan(metered[i].cadence))
            records[i].cadence = metered[i].cadence;
    }
}

} // namespace

StatusCode analyseRide(const Model& model, const ParameterBlock& settings, const LoadedRide& ride, Analysis& analysis,
                       Physics physics)
{
    analysis.settings = settings;
    applyAnalysisRules(analysis.settings, ride, physics);
    analysis.flags = buildAnalysisFlags(analysis.settings, ride.presence, physics);
    analysis.flags |= missingFlags(ride) | (ride.measuredSpeed ? analysisMeasuredSpeed : 0);
    if (!analysis.tellsHeadings && settings.analyseWindSpeed == 0)
        analysis.flags |= analysisNoHeadings;
    if (StatusCode code = takeTrack(ride, analysis, TrackLimits::analyse))
        return code;
    if (analysis.flags & analysisMissing)
        fillMissing(model, settings, ride, analysis);
    predictAndFinish(model, analysis.records, analysis.settings, ride.summary, analysis.flags, ride.image.progress,
                     &analysis.brakes);
    analysis.stats = analysedStats(analysis.records, ride, analysis.brakes);
    return fitOk;
}

StatusCode expressRide(const ParameterBlock& settings, const LoadedRide& ride, Analysis& analysis)
{
    analysis.settings = settings;
    analysis.flags = expressAnalysisFlags(settings, ride.presence) | missingFlags(ride);
    if (StatusCode code = takeTrack(ride, analysis, TrackLimits::express))
        return code;
    analysis.stats = analysedStats(analysis.records, ride);
    return fitOk;
}

} // namespace torvane
