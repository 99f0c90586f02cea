// A recorded ride from the file to the analysed file, step by step and as a whole.
#include "made_files.h"

#include "command/gps_command.h"
#include "command/gps_load_command.h"
#include "core/large_pages.h"
#include "fit/fit_image.h"
#include "fit/fit_tools.h"
#include "gps/analysed_writer.h"
#include "gps/analysis.h"
#include "gps/gps_load.h"
#include "report/fit_report.h"

#include <benchmark/benchmark.h>

namespace torvane {

namespace {

// A ride loaded and ready for its analysis.
struct Loaded {
    Model model = plainModel();
    LoadedRide ride;
    ParameterBlock settings;
    uint32_t flags;
    GpsRecords records;

    explicit Loaded(int count)
    {
        loadFitImage(ride.image, madeRide(count));
        gatherActivity(ride);
        settings = defaultBlock();
        applyAnalysisRules(settings, ride);
        flags = buildAnalysisFlags(settings, ride.presence);
        records.reserve(ride.inventory.recordCount);
        expectAllTouched(records.data(), records.capacity() * sizeof(GpsRecord)); // as an analysis does
        takeTrack();
    }
    void takeTrack()
    {
        records.assign(ride.inventory.recordCount, {});
        prepareTrack(ride.image, records, settings, flags, TrackLimits::analyse);
    }
    void predict()
    {
        predictAndFinish(model, records, settings, ride.summary, flags);
    }
};

void countRows(benchmark::State& state, int rows)
{
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * rows);
}

void fill(benchmark::State& state)
{
    Loaded ride(seasonRide);
    for (auto _ : state)
        benchmark::DoNotOptimize(fillRecords(ride.ride.image, ride.records));
    countRows(state, seasonRide);
}
BENCHMARK(fill)->Name("gps/fillRecords")->Unit(benchmark::kMillisecond);

void prepare(benchmark::State& state)
{
    Loaded ride(seasonRide);
    for (auto _ : state)
        ride.takeTrack();
    countRows(state, seasonRide);
}
BENCHMARK(prepare)->Name("gps/prepareTrack")->Unit(benchmark::kMillisecond);

void predict(benchmark::State& state)
{
    Loaded ride(seasonRide);
    GpsRecords track = ride.records;
    for (auto _ : state) {
        state.PauseTiming();
        ride.records = track;
        state.ResumeTiming();
        ride.predict();
    }
    countRows(state, seasonRide);
}
BENCHMARK(predict)->Name("gps/predictAndFinish")->Unit(benchmark::kMillisecond);

void rewrite(benchmark::State& state)
{
    Loaded ride(seasonRide);
    ride.predict();
    uint32_t timer = analysedStats(ride.records, ride.ride).summary.totalTimer;
    uint32_t added = addedFieldsOf(ride.flags);
    for (auto _ : state) {
        FitImage destination = {};
        planRewrittenSize(destination, ride.ride.image, ride.records, added);
        if (writeAnalysedFit(destination, ride.ride.image, ride.records, added, ride.settings.createOutput, timer) !=
            fitOk)
            state.SkipWithError("the file was not written");
    }
    countRows(state, seasonRide);
}
BENCHMARK(rewrite)->Name("gps/writeAnalysedFit")->Unit(benchmark::kMillisecond);

void fields(benchmark::State& state)
{
    Loaded ride(static_cast<int>(state.range(0)));
    ride.predict();
    const LoadedRide& loaded = ride.ride;
    ReportedRide reported = {
        "", reportAnalysed, loaded.inventory, loaded.summary, loaded.presence, ride.settings, ride.flags};
    Screens screens;
    for (auto _ : state)
        reportFields(screens, reported, ride.records, addedFieldsOf(ride.flags));
    countRows(state, static_cast<int>(state.range(0)));
}
BENCHMARK(fields)->Name("gps/reportFields")->Arg(10000)->Arg(seasonRide)->Unit(benchmark::kMillisecond);

void oneStroke(benchmark::State& state)
{
    Session session;
    bool withTable = state.range(1) != 0;
    Loaded ride(static_cast<int>(state.range(0)));
    session.model = ride.model;
    session.working.expressFieldsData = withTable;
    session.inputs.files[0].path = madeRide(static_cast<int>(state.range(0)));
    session.inputs.files[toolDestination].path = benchmarkFolder() + "analysed.fit";
    for (auto _ : state)
        if (atOneStroke(session) != fitOk)
            state.SkipWithError("at one stroke failed");
    countRows(state, static_cast<int>(state.range(0)));
}
BENCHMARK(oneStroke)
    ->Name("gps/atOneStroke")
    ->Args({10000, 0})
    ->Args({seasonRide, 0})
    ->Args({seasonRide, 1})
    ->ArgNames({"", "table"})
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace torvane
