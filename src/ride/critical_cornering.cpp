#include "ride/critical_cornering.h"

#include "core/parameter_block.h"
#include "core/text.h"
#include "model/assist.h"
#include "model/constants.h"
#include "model/run_state.h"

#include <cmath>

namespace torvane {

namespace {

constexpr int bandPoints = 100;
constexpr double mostMarginDrawn = 0.5;
constexpr double noMargin = -9999.999;

double friction()
{
    return modelState.effectiveFriction;
}

double velocityInCorner(double radius)
{
    return std::sqrt((1.0 - runState.safetyMargin) * friction() * standardGravity * radius);
}

double radiusAt(double velocity, double margin)
{
    return velocity * velocity / ((1.0 - margin) * friction() * standardGravity);
}

double marginInCorner()
{
    const double grip = runState.corneringRadius * friction();
    const double velocity = runState.velocity;
    return grip == 0.0 ? noMargin : 1.0 - velocity * velocity / (grip * standardGravity);
}

void drawBandOverRadius(GraphSeries& graph)
{
    graph.seriesNames[1] = formatText("corner radius(m) under %5.3lf safty margin", runState.safetyMargin);
    for (int i = 0; i < bandPoints; ++i) {
        const double radius = i * runState.corneringRadius / (bandPoints - 1);
        addGraphPoint(graph, {velocityInCorner(radius) * 3.6, radius});
    }
}

void drawBandOverVelocity(GraphSeries& graph)
{
    graph.seriesNames[1] = formatText("corner radius(m) under %5.3lf safty margin", runState.safetyMargin);
    for (int i = 0; i < bandPoints; ++i) {
        const double v = i * runState.velocity / (bandPoints - 1);
        addGraphPoint(graph, {v * 3.6, v * v / friction() / ((1.0 - runState.safetyMargin) * standardGravity)});
    }
}

void drawBandOverMargin(GraphSeries& graph)
{
    graph.seriesNames[0] = "safty margin ratio";
    graph.seriesNames[1] = formatText("corner radius(m) for %5.3lf kph", runState.velocity * 3.6);
    for (int i = 0; i < bandPoints; ++i) {
        const double margin = i * mostMarginDrawn / (bandPoints - 1);
        addGraphPoint(graph, {margin, radiusAt(runState.velocity, margin)});
    }
}

enum Target : int { targetVelocity, targetRadius };

void solve(int target)
{
    if (target == targetVelocity) {
        runState.velocity = velocityInCorner(runState.corneringRadius);
    } else if (target == targetRadius) {
        runState.corneringRadius = radiusAt(runState.velocity, runState.safetyMargin);
    } else {
        runState.safetyMargin = marginInCorner();
    }
}

void draw(int target, GraphSeries& graph)
{
    beginGraphSeries(graph, GraphLayout::corneringBand, bandPoints);
    if (target == targetVelocity) {
        drawBandOverRadius(graph);
    } else if (target == targetRadius) {
        drawBandOverVelocity(graph);
    } else {
        drawBandOverMargin(graph);
    }
}

} // namespace

ResultStatus runCriticalCornering(int target, GraphSeries* graph)
{
    solve(target);
    if (graph != nullptr) {
        draw(target, *graph);
    }
    const Solved power = solvePowerAtVelocity(stagePedaling, runState.velocity);
    runState.power = power.value;
    runState.peakPower[stagePedaling] = requiredPower(runState.power, runState.cadence, modelState.cadencePoweredMax);
    return power.status;
}

} // namespace torvane
