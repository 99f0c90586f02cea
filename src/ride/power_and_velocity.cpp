#include "ride/power_and_velocity.h"

#include "core/units.h"
#include "model/assist.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace torvane {

namespace {

constexpr int bandPoints = 100;

// Powers of the four stages; what the road pushes is thrust alone.
using StagePowers = std::array<double, stageCount>;

StagePowers stagePowers(const RideRun& ride)
{
    return {std::max(ride.now.pedalingPower, 0.0), std::max(ride.now.crankPower, 0.0), std::max(ride.now.hubPower, 0.0),
            ride.now.thrustPower};
}

// A point that the solver refuses repeats velocity and powers of the one before, without resistances.
void addBandPoint(const RideRun& ride, GraphSeries& graph, bool solved, double shownVelocity)
{
    if (solved) {
        StagePowers p = stagePowers(ride);
        addGraphPoint(graph, {shownVelocity, p[0], p[1], p[2], p[3], ride.now.airDragPower, ride.now.rollingPower,
                              ride.now.slopePower});
        return;
    }
    std::array<double, 5> last = {};
    int points = graph.pointCount();
    for (size_t series = 0; points > 0 && series < last.size(); ++series)
        last[series] = graph.value(points - 1, static_cast<int>(series));
    addGraphPoint(graph, {last[0], last[1], last[2], last[3], last[4], 0.0, 0.0, 0.0});
}

// Powers of a stage from standstill to a velocity. Ends with the model at that velocity.
void drawBand(RideRun& ride, int stage, double velocity, double shownPerStored)
{
    GraphSeries& graph = ride.graph.emplace();
    beginGraphSeries(graph, GraphLayout::frequencyBand, bandPoints);
    for (int i = 0; i < bandPoints; ++i) {
        double v = i * velocity / (bandPoints - 1);
        bool solved = solvePowerAtVelocity(ride.model, ride.now, stage, v).status == statusDone;
        addBandPoint(ride, graph, solved, v * shownPerStored);
    }
}

ResultStatus solvePower(RideRun& ride)
{
    Solved power = solvePowerAtVelocity(ride.model, ride.now, stagePedaling, ride.found.velocity);
    ride.found.power = power.value;
    if (ride.in.wantsGraph != 0)
        drawBand(ride, stagePedaling, ride.found.velocity, 1.0); // in m/s under a name in kph; meant so
    return power.status;
}

ResultStatus solveVelocity(RideRun& ride)
{
    int stage = ride.in.powerBaseIndex;
    Solved velocity = solveVelocityForPower(ride.model, ride.now, stage, ride.found.power);
    ride.found.velocity = velocity.value;
    if (ride.in.wantsGraph != 0)
        drawBand(ride, stage, velocity.value, kphPerMps);
    return velocity.status;
}

} // namespace

ResultStatus runPowerAndVelocity(RideRun& ride)
{
    ResultStatus status = ride.in.rideTarget == steadyTargetPower ? solvePower(ride) : solveVelocity(ride);
    ride.found.requiredPower = requiredPower(ride.found.power, ride.now.cadence, ride.model.state.cadencePoweredMax);
    return status;
}

} // namespace torvane
