#include "ride/critical_cornering.h"

#include "core/text.h"
#include "core/units.h"
#include "model/assist.h"
#include "model/constants.h"

#include <cmath>

namespace torvane {

namespace {

constexpr int bandPoints = 100;
constexpr double mostMarginDrawn = 0.5;
constexpr double noMargin = -9999.999;

double friction(const RideRun& ride)
{
    return ride.now.effectiveFriction;
}

double velocityInCorner(const RideRun& ride, double radius)
{
    return std::sqrt((1.0 - ride.found.safetyMargin) * friction(ride) * standardGravity * radius);
}

double radiusAt(const RideRun& ride, double velocity, double margin)
{
    return velocity * velocity / ((1.0 - margin) * friction(ride) * standardGravity);
}

double marginInCorner(const RideRun& ride)
{
    double grip = ride.found.corneringRadius * friction(ride);
    double velocity = ride.found.velocity;
    return grip == 0.0 ? noMargin : 1.0 - velocity * velocity / (grip * standardGravity);
}

void drawBandOverRadius(const RideRun& ride, GraphSeries& graph)
{
    graph.seriesNames[1] = formatText("corner radius(m) under %5.3lf safty margin", ride.found.safetyMargin);
    for (int i = 0; i < bandPoints; ++i) {
        double radius = i * ride.found.corneringRadius / (bandPoints - 1);
        addGraphPoint(graph, {velocityInCorner(ride, radius) * kphPerMps, radius});
    }
}

void drawBandOverVelocity(const RideRun& ride, GraphSeries& graph)
{
    graph.seriesNames[1] = formatText("corner radius(m) under %5.3lf safty margin", ride.found.safetyMargin);
    for (int i = 0; i < bandPoints; ++i) {
        double v = i * ride.found.velocity / (bandPoints - 1);
        addGraphPoint(graph,
                      {v * kphPerMps, v * v / friction(ride) / ((1.0 - ride.found.safetyMargin) * standardGravity)});
    }
}

void drawBandOverMargin(const RideRun& ride, GraphSeries& graph)
{
    graph.seriesNames[0] = "safty margin ratio";
    graph.seriesNames[1] = formatText("corner radius(m) for %5.3lf kph", ride.found.velocity * kphPerMps);
    for (int i = 0; i < bandPoints; ++i) {
        double margin = i * mostMarginDrawn / (bandPoints - 1);
        addGraphPoint(graph, {margin, radiusAt(ride, ride.found.velocity, margin)});
    }
}

void solve(RideRun& ride)
{
    int target = ride.in.rideTarget;
    if (target == corneringTargetVelocity)
        ride.found.velocity = velocityInCorner(ride, ride.found.corneringRadius);
    else if (target == corneringTargetRadius)
        ride.found.corneringRadius = radiusAt(ride, ride.found.velocity, ride.found.safetyMargin);
    else
        ride.found.safetyMargin = marginInCorner(ride);
}

void draw(const RideRun& ride, GraphSeries& graph)
{
    int target = ride.in.rideTarget;
    beginGraphSeries(graph, GraphLayout::corneringBand, bandPoints);
    if (target == corneringTargetVelocity)
        drawBandOverRadius(ride, graph);
    else if (target == corneringTargetRadius)
        drawBandOverVelocity(ride, graph);
    else
        drawBandOverMargin(ride, graph);
}

} // namespace

ResultStatus runCriticalCornering(RideRun& ride)
{
    solve(ride);
    if (ride.in.wantsGraph != 0)
        draw(ride, ride.graph.emplace());
    Solved power = solvePowerAtVelocity(ride.model, ride.now, stagePedaling, ride.found.velocity);
    ride.found.power = power.value;
    ride.found.requiredPower = requiredPower(ride.found.power, ride.now.cadence, ride.model.state.cadencePoweredMax);
    return power.status;
}

} // namespace torvane
