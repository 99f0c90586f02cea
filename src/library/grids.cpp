// The steady ride over whole grids of roads.
#include "library/state.h"
#include "model/road_grid.h"
#include "torvane/calculator.h"

#include <algorithm>
#include <cmath>

namespace torvane::library {

namespace {

torvane::RoadGrid modelGridOf(const RoadGrid& grid)
{
    return {grid.inclinations, grid.headWinds, grid.asked};
}

int modelStageOf(Stage stage)
{
    static_assert(static_cast<int>(Stage::pedals) == stagePedaling && static_cast<int>(Stage::road) == stageThrust);
    return static_cast<int>(stage);
}

bool isFinite(const RoadGrid& grid)
{
    auto all = [](std::span<const double> values) {
        return std::ranges::all_of(values, [](double value) { return std::isfinite(value); });
    };
    return all(grid.inclinations) && all(grid.headWinds) && all(grid.asked);
}

Evaluation steadyAir(const Model& model)
{
    Evaluation air = {};
    setAir(air, model.state.hectoPascal, model.state.temperature);
    return air;
}

// Answers of a grid, made by `fill` into room for them.
template <class Value, class State, class Fill>
Result<std::vector<Value>> overGrid(const std::unique_ptr<State>& state, const RoadGrid& grid, Fill fill) noexcept
{
    return guarded<std::vector<Value>>([&]() -> Result<std::vector<Value>> {
        if (!state)
            return Error{.kind = ErrorKind::incomplete, .text = "moved from"};
        if (!isFinite(grid))
            return Error{.kind = ErrorKind::badValue, .text = "a number of the grid is not finite"};
        std::vector<Value> answers(grid.points());
        fill(state->session.model, answers);
        return answers;
    });
}

} // namespace

Result<std::vector<double>> Calculator::powersOverGrid(const RoadGrid& grid, Stage stage,
                                                       std::size_t threads) const noexcept
{
    return overGrid<double>(state, grid, [&](const Model& model, std::vector<double>& powers) {
        torvane::powersOverGrid(model, steadyAir(model), modelStageOf(stage), modelGridOf(grid), threads, powers);
    });
}

Result<std::vector<FoundVelocity>> Calculator::velocitiesOverGrid(const RoadGrid& grid, Stage stage,
                                                                  std::size_t threads) const noexcept
{
    return overGrid<FoundVelocity>(state, grid, [&](const Model& model, std::vector<FoundVelocity>& velocities) {
        std::vector<Solved> found(velocities.size());
        torvane::velocitiesOverGrid(model, steadyAir(model), modelStageOf(stage), modelGridOf(grid), threads, found);
        std::ranges::transform(found, velocities.begin(), [](const Solved& solved) {
            return FoundVelocity{solved.value, solved.status};
        });
    });
}

} // namespace torvane::library
