// A course of 180 km ahead: the ride over time, and the least time at a normalised power.
#include "plan/made_course.h"

#include <benchmark/benchmark.h>

namespace torvane {

namespace {

void planLong(benchmark::State& state)
{
    ParameterBlock block;
    setDefaults(block);
    Model model = modelOf(block);
    PlanOptions options;
    options.pacing = static_cast<int32_t>(state.range(0));
    auto height = [](double way) { return 300 + 60 * std::sin(way / 2000) + 6 * std::sin(way / 300); };
    auto heading = [](double way) { return 40 * std::sin(way / 500); };
    Course course = madeCourse(180000, height, heading, options);
    for (auto _ : state) {
        PlannedCourse planned;
        if (planCourse(model, block, course, options, planned) != fitOk)
            state.SkipWithError("the plan failed");
    }
}
BENCHMARK(planLong)
    ->Name("plan/180 km")
    ->ArgName("pacing")
    ->DenseRange(pacingEven, pacingPlan)
    ->Unit(benchmark::kMillisecond);

} // namespace

} // namespace torvane
