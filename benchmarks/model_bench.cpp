// The model: one evaluation, plain and as the program does it, and the solvers.
#include "made_files.h"

#include "model/assist.h"
#include "model/solver.h"
#include "plain/resistance.h"

#include <benchmark/benchmark.h>

#include <array>

namespace torvane {

namespace {

// Velocities as a run meets them, never the same twice in a row; made before, so that no evaluation waits for the last.
template <class Evaluate>
void overVelocities(benchmark::State& state, Evaluate evaluate)
{
    startPlainModel();
    std::array<double, 2000> velocities;
    for (size_t i = 0; i < velocities.size(); ++i)
        velocities[i] = 1.0 + 0.01 * static_cast<double>(i);
    size_t next = 0;
    for (auto _ : state) {
        evaluate(velocities[next]);
        benchmark::ClobberMemory();
        next = next + 1 < velocities.size() ? next + 1 : 0;
    }
}

void resistancePlain(benchmark::State& state)
{
    overVelocities(state, [](double v) { benchmark::DoNotOptimize(plain::resistanceAtVelocity(v).value); });
}
BENCHMARK(resistancePlain)->Name("model/resistanceAtVelocity/plain");

void resistance(benchmark::State& state)
{
    overVelocities(state, [](double v) { benchmark::DoNotOptimize(resistanceAtVelocity(v).value); });
}
BENCHMARK(resistance)->Name("model/resistanceAtVelocity");

void loadAndGripPlain(benchmark::State& state)
{
    overVelocities(state, [](double v) { plain::updateLoadAndGrip(v); });
}
BENCHMARK(loadAndGripPlain)->Name("model/updateLoadAndGrip/plain");

void loadAndGrip(benchmark::State& state)
{
    overVelocities(state, [](double v) { updateLoadAndGrip(v); });
}
BENCHMARK(loadAndGrip)->Name("model/updateLoadAndGrip");

void loadAndGripAlike(benchmark::State& state)
{
    overVelocities(state, [](double) { updateLoadAndGrip(0.0); });
}
BENCHMARK(loadAndGripAlike)->Name("model/updateLoadAndGrip/same force");

void loads(benchmark::State& state)
{
    overVelocities(state, [](double) { setLoads(); });
}
BENCHMARK(loads)->Name("model/setLoads");

void solve(benchmark::State& state, int motor, Solved (*velocityFor)(int, double))
{
    startPlainModel();
    modelState.motorLocation = motor;
    double power = 100.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(velocityFor(stagePedaling, power).value);
        power = power < 400.0 ? power + 1.0 : 100.0;
    }
}
BENCHMARK_CAPTURE(solve, plain, 0, velocityForPower)->Name("model/velocityForPower");
BENCHMARK_CAPTURE(solve, assisted, 1, assistedVelocityForPower)->Name("model/velocityForPower/assisted");

} // namespace

} // namespace torvane

BENCHMARK_MAIN();
