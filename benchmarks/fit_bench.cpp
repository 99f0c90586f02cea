// FIT files: the CRC, the load, each tool in bytes of its source.
#include "made_files.h"

#include "core/text.h"
#include "fit/fit_crc.h"
#include "fit/fit_image.h"
#include "fit/fit_tools.h"
#include "gps/gps_load.h"
#include "gps/prepare.h"

#include <benchmark/benchmark.h>

#include <unistd.h>

namespace torvane {

namespace {

void countBytes(benchmark::State& state, size_t bytes)
{
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}

FitImage imageOf(int records)
{
    FitImage image;
    loadFitImage(image, madeRide(records));
    return image;
}

void crc(benchmark::State& state)
{
    FitImage image = imageOf(seasonRide);
    for (auto _ : state)
        benchmark::DoNotOptimize(fitCrc(image));
    countBytes(state, image.data.size());
}
BENCHMARK(crc)->Name("fit/fitCrc");

// As the load of an activity works once the bytes are there.
void passes(benchmark::State& state)
{
    LoadedRide ride = {imageOf(static_cast<int>(state.range(0)))};
    for (auto _ : state) {
        benchmark::DoNotOptimize(fitCrc(ride.image));
        if (gatherActivity(ride) != fitOk)
            state.SkipWithError("the passes failed");
    }
    countBytes(state, ride.image.data.size());
}
BENCHMARK(passes)->Name("fit/passes and CRC")->Arg(10000)->Arg(seasonRide)->Unit(benchmark::kMillisecond);

void load(benchmark::State& state)
{
    const std::string& path = madeRide(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        LoadedRide ride;
        if (loadFitImage(ride.image, path) != fitOk || gatherActivity(ride) != fitOk)
            state.SkipWithError("the load failed");
    }
    countBytes(state, std::filesystem::file_size(path));
}
BENCHMARK(load)->Name("fit/load of a file")->Arg(10000)->Arg(seasonRide)->Unit(benchmark::kMillisecond);

// The preparing of a loaded ride, in bytes of its source.
void prepareRide(benchmark::State& state)
{
    FitImage image = imageOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        FitImage prepared;
        PrepareFindings findings;
        if (prepareActivity(image, {}, prepared, findings) != fitOk)
            state.SkipWithError("the ride was not prepared");
    }
    countBytes(state, image.data.size());
}
BENCHMARK(prepareRide)->Name("fit/prepareActivity")->Arg(10000)->Arg(seasonRide)->Unit(benchmark::kMillisecond);

struct Tool {
    MadeFile source;
    Verdict (*check)(ToolInputs&, ParameterBlock&);
    ToolOutcome (*run)(const ToolInputs&, const ParameterBlock&, Progress*);
};

// The run alone: read, work, write.
void runTool(benchmark::State& state, Tool tool)
{
    ToolInputs inputs;
    ParameterBlock options = defaultBlock();
    options.addLap = options.addSession = options.addActivity = 1;
    options.excludeLap = 1;
    options.timestampOffset = 3600;
    inputs.files[0].path = madeRide(static_cast<int>(state.range(0)), tool.source);
    size_t bytes = std::filesystem::file_size(inputs.files[0].path);
    if (tool.run == runCombine) {
        inputs.files[1].path = benchmarkFolder() + "second.fit";
        std::filesystem::copy_file(inputs.files[0].path, inputs.files[1].path,
                                   std::filesystem::copy_options::overwrite_existing);
        bytes *= 2;
    }
    inputs.files[toolDestination].path = benchmarkFolder() + "out.fit";
    for (const Box& box : tool.check(inputs, options).boxes)
        state.SkipWithError(box.text.c_str());
    for (auto _ : state)
        benchmark::DoNotOptimize(tool.run(inputs, options, nullptr).code);
    countBytes(state, bytes);
}
#define TORVANE_TOOL(name, source, check, run)                                                                         \
    BENCHMARK_CAPTURE(runTool, name, Tool{MadeFile::source, check, run})                                               \
        ->Name("tool/" #name)                                                                                          \
        ->Arg(10000)                                                                                                   \
        ->Arg(seasonRide)                                                                                              \
        ->Unit(benchmark::kMillisecond)
TORVANE_TOOL(combine, whole, checkCombine, runCombine);
TORVANE_TOOL(convert, whole, checkConvert, runConvert);
TORVANE_TOOL(add, inTwoParts, checkAddMessages, runAddMessages);
TORVANE_TOOL(divide, inTwoParts, checkDivide, runDivide);
TORVANE_TOOL(exclude, whole, checkExclude, runExclude);
TORVANE_TOOL(timestamp, whole, checkTimestamp, runTimestamp);
TORVANE_TOOL(dump, whole, checkFieldDump, runFieldDump);

// The dump by where its text goes, seven times as much as the source: the system takes half of the time for a file in
// memory, and less on a disk.
void dumpTo(benchmark::State& state, const std::filesystem::path& destination)
{
    ToolInputs inputs;
    inputs.files[0].path = madeRide(seasonRide);
    inputs.files[toolDestination].path = destination.string();
    ParameterBlock options = defaultBlock();
    for (auto _ : state)
        if (runFieldDump(inputs, options).code != fitOk)
            state.SkipWithError("the dump failed");
    countBytes(state, std::filesystem::file_size(inputs.files[0].path));
}

void dumpToDisk(benchmark::State& state)
{
    std::filesystem::path path = formatText("torvane-bench-%d.csv", getpid());
    dumpTo(state, std::filesystem::temp_directory_path() / path);
    std::filesystem::remove(std::filesystem::temp_directory_path() / path);
}
BENCHMARK(dumpToDisk)->Name("tool/dump/temporary folder")->Unit(benchmark::kMillisecond);

} // namespace

} // namespace torvane
