// Calibration by one ride of an hour, and by ten, from their files to the answer.
#include "made_files.h"

#include "fit/fit_builder.h"
#include "plan/calibrate.h"
#include "rides/made_ride.h"
#include "rides/made_ride_file.h"

#include <benchmark/benchmark.h>

namespace torvane {

namespace {

void calibrate(benchmark::State& state)
{
    ParameterBlock settings = defaultBlock();
    Model model = plainModel();
    std::vector<std::string> paths;
    for (int64_t i = 0; i < state.range(0); ++i) {
        paths.push_back(benchmarkFolder() + "/made-" + std::to_string(i) + ".fit");
        writeBytes(paths.back(),
                   fileOf(makeMeteredRide(model, {}, {.windSpeed = 3, .seed = static_cast<unsigned>(i)})));
    }
    for (auto _ : state) {
        std::vector<MeasuredRide> rides;
        for (const std::string& path : paths)
            rides.push_back(readMeasuredRide(settings, path, {}));
        benchmark::DoNotOptimize(calibrateRides(model, rides, {}));
    }
}
BENCHMARK(calibrate)->Name("plan/calibrate")->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace torvane
