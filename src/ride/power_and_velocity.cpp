#include "ride/power_and_velocity.h"

#include "core/parameter_block.h"
#include "model/assist.h"
#include "model/run_state.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace torvane {

namespace {

constexpr int bandPoints = 100;

// Powers of the four stages; what the road pushes is thrust alone.
using StagePowers = std::array<double, stageCount>;

StagePowers stagePowers()
{
    return {std::max(runState.pedalingPower, 0.0), std::max(runState.crankPower, 0.0), std::max(runState.hubPower, 0.0),
            runState.thrustPower};
}

// A point that the solver refuses repeats velocity and powers of the one before, without resistances.
void addBandPoint(GraphSeries& graph, bool solved, double shownVelocity)
{
    if (solved) {
        const StagePowers p = stagePowers();
        addGraphPoint(graph, {shownVelocity, p[0], p[1], p[2], p[3], runState.airDragPower, runState.rollingPower,
                              runState.slopePower});
        return;
    }
    std::array<double, 5> last = {};
    const int points = graph.pointCount();
    for (size_t series = 0; points > 0 && series < last.size(); ++series) {
        last[series] = graph.value(points - 1, static_cast<int>(series));
    }
    addGraphPoint(graph, {last[0], last[1], last[2], last[3], last[4], 0.0, 0.0, 0.0});
}

// Powers of a stage from standstill to a velocity. Ends with the model at that velocity.
void drawBand(int stage, double velocity, double shownPerStored, GraphSeries& graph)
{
    beginGraphSeries(graph, GraphLayout::frequencyBand, bandPoints);
    for (int i = 0; i < bandPoints; ++i) {
        const double v = i * velocity / (bandPoints - 1);
        const bool solved = solvePowerAtVelocity(stage, v).status == 0;
        addBandPoint(graph, solved, v * shownPerStored);
    }
}

ResultStatus solvePower(GraphSeries* graph)
{
    const Solved power = solvePowerAtVelocity(stagePedaling, runState.velocity);
    runState.power = power.value;
    if (graph != nullptr) {
        drawBand(stagePedaling, runState.velocity, 1.0, *graph); // in m/s under a name in kph; meant so
    }
    return power.status;
}

ResultStatus solveVelocity(GraphSeries* graph)
{
    const int stage = runState.powerBaseIndex;
    const Solved velocity = solveVelocityForPower(stage, runState.power);
    runState.velocity = velocity.value;
    if (graph != nullptr) {
        drawBand(stage, velocity.value, 3.6, *graph);
    }
    return velocity.status;
}

} // namespace

ResultStatus runPowerAndVelocity(int target, GraphSeries* graph)
{
    const ResultStatus status = target == 0 ? solvePower(graph) : solveVelocity(graph);
    runState.peakPower[stagePedaling] = requiredPower(runState.power, runState.cadence, modelState.cadencePoweredMax);
    return status;
}

} // namespace torvane
