// The model: one evaluation, plain and as the program does it, and the solvers.
#include "made_files.h"

#include "model/assist.h"
#include "model/road_grid.h"
#include "model/solver.h"
#include "plain/resistance.h"

#include <benchmark/benchmark.h>

#include <array>
#include <vector>

namespace torvane {

namespace {

Evaluation levelRoad(const Model& model)
{
    Evaluation now = {};
    setAir(now, model.state.hectoPascal, model.state.temperature);
    updateLoadAndGrip(model, now, 0.0);
    setLoads(model, now);
    return now;
}

// Velocities as a run meets them, never the same twice in a row; made before, so that no evaluation waits for the last.
template <class Evaluate>
void overVelocities(benchmark::State& state, Evaluate evaluate)
{
    Model model = plainModel();
    Evaluation now = levelRoad(model);
    std::array<double, 2000> velocities;
    for (size_t i = 0; i < velocities.size(); ++i)
        velocities[i] = 1.0 + 0.01 * static_cast<double>(i);
    size_t next = 0;
    for (auto _ : state) {
        evaluate(model, now, velocities[next]);
        benchmark::ClobberMemory();
        next = next + 1 < velocities.size() ? next + 1 : 0;
    }
}

void resistancePlain(benchmark::State& state)
{
    overVelocities(state, [](const Model& m, Evaluation& e, double v) {
        benchmark::DoNotOptimize(plain::resistanceAtVelocity(m, e, v).value);
    });
}
BENCHMARK(resistancePlain)->Name("model/resistanceAtVelocity/plain");

void resistance(benchmark::State& state)
{
    overVelocities(state, [](const Model& m, Evaluation& e, double v) {
        benchmark::DoNotOptimize(resistanceAtVelocity(m, e, v).value);
    });
}
BENCHMARK(resistance)->Name("model/resistanceAtVelocity");

void loadAndGripPlain(benchmark::State& state)
{
    overVelocities(state, plain::updateLoadAndGrip);
}
BENCHMARK(loadAndGripPlain)->Name("model/updateLoadAndGrip/plain");

void loadAndGrip(benchmark::State& state)
{
    overVelocities(state, updateLoadAndGrip);
}
BENCHMARK(loadAndGrip)->Name("model/updateLoadAndGrip");

void loadAndGripAlike(benchmark::State& state)
{
    overVelocities(state, [](const Model& m, Evaluation& e, double) { updateLoadAndGrip(m, e, 0.0); });
}
BENCHMARK(loadAndGripAlike)->Name("model/updateLoadAndGrip/same force");

void loads(benchmark::State& state)
{
    overVelocities(state, [](const Model& m, Evaluation& e, double) { setLoads(m, e); });
}
BENCHMARK(loads)->Name("model/setLoads");

void solve(benchmark::State& state, int motor, Solved (*velocityFor)(const Model&, Evaluation&, int, double))
{
    Model model = plainModel();
    model.state.motorLocation = motor;
    Evaluation now = levelRoad(model);
    double power = 100.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(velocityFor(model, now, stagePedaling, power).value);
        power = power < 400.0 ? power + 1.0 : 100.0;
    }
}
BENCHMARK_CAPTURE(solve, plain, 0, velocityForPower)->Name("model/velocityForPower");
BENCHMARK_CAPTURE(solve, assisted, 1, assistedVelocityForPower)->Name("model/velocityForPower/assisted");

// A thousand velocities on each of twenty slopes in each of five winds.
struct BenchGrid {
    std::vector<double> inclinations, headWinds, asked;

    BenchGrid(double low, double high, int count)
    {
        for (int i = 0; i < 20; ++i)
            inclinations.push_back(-8.0 + i);
        for (int i = 0; i < 5; ++i)
            headWinds.push_back(-4.0 + 2.0 * i);
        for (int i = 0; i < count; ++i)
            asked.push_back(low + (high - low) * i / (count - 1));
    }
    RoadGrid grid() const
    {
        return {inclinations, headWinds, asked};
    }
};

void countPoints(benchmark::State& state, size_t points)
{
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * points));
}

// Ten million of them, as those ask for them who have many: to begin and end a second thread takes as long as 12,000.
void powersOfGrid(benchmark::State& state, int stage)
{
    Model model = plainModel();
    Evaluation air = levelRoad(model);
    BenchGrid bench(1.0, 21.0, 100'000);
    std::vector<double> powers(pointsOf(bench.grid()));
    for (auto _ : state) {
        powersOverGrid(model, air, stage, bench.grid(), static_cast<size_t>(state.range(0)), powers);
        benchmark::ClobberMemory();
    }
    countPoints(state, powers.size());
}
BENCHMARK_CAPTURE(powersOfGrid, road, stageThrust)
    ->Name("model/powersOverGrid/road")
    ->Arg(1)
    ->Arg(2)
    ->ArgName("threads")
    ->UseRealTime();
BENCHMARK_CAPTURE(powersOfGrid, pedals, stagePedaling)
    ->Name("model/powersOverGrid/pedals")
    ->Arg(1)
    ->ArgName("threads")
    ->UseRealTime();

void velocitiesOfGrid(benchmark::State& state)
{
    Model model = plainModel();
    Evaluation air = levelRoad(model);
    BenchGrid bench(100.0, 400.0, 1000);
    std::vector<Solved> found(pointsOf(bench.grid()));
    for (auto _ : state) {
        velocitiesOverGrid(model, air, stagePedaling, bench.grid(), static_cast<size_t>(state.range(0)), found);
        benchmark::ClobberMemory();
    }
    countPoints(state, found.size());
}
BENCHMARK(velocitiesOfGrid)->Name("model/velocitiesOverGrid")->Arg(1)->Arg(2)->ArgName("threads")->UseRealTime();

} // namespace

} // namespace torvane

BENCHMARK_MAIN();
