#include "ride/intermittent_braking.h"

#include "core/parameter_block.h"
#include "core/screens.h"
#include "model/assist.h"
#include "model/run_state.h"
#include "ride/brake_energy.h"
#include "ride/braking_run.h"
#include "ride/motion.h"
#include "ride/ride_status.h"
#include "ride/rolling_run.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr double spotInterval = 0.01;       // s
constexpr int settlingRounds = 5;           // intervals after which the coasting velocity repeats itself
constexpr double mostPoints = 1e9;          // of which a count still holds
constexpr double mostIntervals = 1'000'000; // beyond it the interval is no interval

// The ride so far, at the start of a sector.
struct Ride {
    double time = 0;     // s
    double distance = 0; // m
    GraphSeries* graph;
};

void addPoint(const Ride& ride, const StepState& s)
{
    if (ride.graph != nullptr) {
        addGraphPoint(*ride.graph, {s.time + ride.time, s.velocity * 3.6, s.distance + ride.distance,
                                    drawnTemperature(0), drawnTemperature(1)});
    }
}

void storeCoast(const StepState& s, double distance)
{
    runState.velocity = s.velocity;
    runState.sectorTime = s.time;
    runState.accele = meanAccele(runState.startVelocity, s.velocity, s.time);
    runState.distance = distance;
}

// Cuts a coast to the distance that its last step went beyond.
void endCoast(StepState& s, double dt, double distance, bool cools)
{
    const double over = (s.distance - distance) / s.velocity; // s
    if (cools) {
        coolBrakes(s.velocity, -over);
    }
    endRollStep(s, dt, over);
    storeCoast(s, distance);
}

// Coasts from runState.startVelocity over a distance. With a ride the brakes cool and the curves go on; count is what
// a log of the sector needs.
ResultStatus coast(double distance, const Ride* ride, int& count)
{
    const double dt = rollInterval();
    StepState s = startRolling();
    for (count = 1; s.time < longestRun; ++count) {
        if (ride != nullptr) {
            addPoint(*ride, s);
            coolBrakes(s.velocity, dt);
        }
        rollStep(s, dt);
        if (s.distance >= distance) {
            endCoast(s, dt, distance, ride != nullptr);
            return 0;
        }
        s.time += dt;
    }
    storeCoast(s, s.distance);
    return statusNotConverged;
}

// Brakes from runState.startVelocity down to endVelocity, or to the end of a distance.
ResultStatus brakeSpot(double distanceLimit, const Ride& ride)
{
    BrakingRun run = startBrakingRun(BrakeLaw::force, spotInterval);
    run.heats = true;
    run.distanceLimit = distanceLimit;
    do {
        addPoint(ride, run.state);
        if (!brakeStep(run)) {
            storeMotion(run.state);
            return run.status;
        }
    } while (run.state.time < longestRun);
    storeMotion(run.state);
    return statusNotConverged;
}

void addSector(SampleLog& log, Ride& ride, double distance)
{
    ride.time += runState.sectorTime;
    ride.distance += distance;
    SectorRow row{ride.time, runState.velocity, ride.distance, {}, {}, {}, {}};
    for (int wheel = 0; wheel < 2; ++wheel) {
        row.brake[wheel] = modelState.brakeTemperature[wheel];
        row.heat[wheel] = modelState.brakeHeat[wheel] / 1000.0;
        row.radiate[wheel] = modelState.brakeRadiated[wheel] / 1000.0;
        row.residual[wheel] = (modelState.brakeHeat[wheel] + modelState.brakeRadiated[wheel]) / 1000.0;
    }
    log.sectors.push_back(row);
}

ResultStatus coastSector(double distance, SampleLog& log, Ride& ride)
{
    int count = 0;
    runState.startVelocity = runState.endVelocity;
    const ResultStatus status = coast(distance, &ride, count);
    addSector(log, ride, distance);
    return status;
}

ResultStatus spotSector(double distanceLimit, double distance, SampleLog& log, Ride& ride)
{
    runState.startVelocity = runState.velocity;
    const ResultStatus status = brakeSpot(distanceLimit, ride);
    addSector(log, ride, distance);
    return status;
}

// Way to coast in an interval: what the braking before leaves of it.
double coastDistance()
{
    return runState.intervalDistance - runState.distance;
}

ResultStatus rideInterval(SampleLog& log, Ride& ride)
{
    const double coasted = coastDistance();
    ResultStatus status = coastSector(coasted, log, ride);
    status |= spotSector(runState.totalDistance, runState.intervalDistance - coasted, log, ride);
    return status;
}

ResultStatus rideRemainder(double remainder, SampleLog& log, Ride& ride)
{
    const double coasted = coastDistance();
    if (!(remainder > coasted)) {
        return coastSector(remainder, log, ride);
    }
    ResultStatus status = coastSector(coasted, log, ride);
    status |= spotSector(remainder - coasted, remainder - coasted, log, ride);
    return status;
}

// An interval without its heat; steps are what a log of it needs. One that is longer than the whole way is not ridden:
// a coast in it that takes longer than any run may is no failure then, and the brakes go on from where it is cut.
ResultStatus rehearseInterval(bool ridden, SampleLog& log, int& steps)
{
    int coastSteps = 0;
    runState.startVelocity = runState.endVelocity;
    const ResultStatus status = coast(coastDistance(), nullptr, coastSteps);
    if (isFatal(status) && ridden) {
        return status;
    }
    runState.startVelocity = runState.velocity;
    const ResultStatus braking = brakeDryRun(BrakeLaw::force, log);
    steps = coastSteps + log.sampleCount;
    return braking & fatalBits;
}

// Braking from the velocity that the descent reaches, the longest there can be.
ResultStatus checkInterval(SampleLog& log)
{
    resetGrip();
    const double poised = solveVelocityForPower(stageThrust, 0.0).value;
    if (!(runState.endVelocity < poised)) {
        solveRollingVelocity();
        return statusNoBrakingNeeded;
    }
    runState.startVelocity = poised;
    const ResultStatus status = brakeDryRun(BrakeLaw::force, log);
    // A force that fades out above the ending velocity would take any interval.
    const bool fits = runState.distance <= runState.intervalDistance && runState.velocity <= runState.endVelocity;
    return isFatal(status) || fits ? status & fatalBits : statusTooShortInterval;
}

} // namespace

ResultStatus intermittentDryRun(SampleLog& log, int& intervalCount)
{
    ResultStatus status = checkInterval(log);
    const double intervals = runState.totalDistance / runState.intervalDistance;
    if (!isFatal(status) && (!(rollInterval() >= leastInterval) || !(intervals <= mostIntervals))) {
        status = statusIllegalValue;
    }
    intervalCount = isFatal(status) ? 0 : static_cast<int>(intervals);
    int steps = 0;
    for (int round = 0; round < settlingRounds && !isFatal(status); ++round) {
        reportProgress(progressPercent(0.0, intervalCount + 6.0, round));
        status = rehearseInterval(intervalCount > 0, log, steps);
    }
    log.sampleCount = static_cast<int>(std::min((intervalCount + 1.0) * steps, mostPoints));
    return status;
}

ResultStatus intermittentLoggedRun(int intervalCount, SampleLog& log, GraphSeries* graph)
{
    if (graph != nullptr) {
        beginGraphSeries(*graph, GraphLayout::braking, log.sampleCount);
    }
    Ride ride{.graph = graph};
    ResultStatus status = 0;
    log.bySectors = true;
    for (int interval = 0; interval < intervalCount && !isFatal(status); ++interval) {
        status |= rideInterval(log, ride);
        reportProgress(progressPercent(0.0, intervalCount + 6.0, interval + 6.0));
    }
    const double remainder = runState.totalDistance - intervalCount * runState.intervalDistance;
    if (remainder != 0.0 && !isFatal(status)) {
        status |= rideRemainder(remainder, log, ride);
    }
    runState.sectorTime = ride.time;
    log.sampleCount = static_cast<int>(log.sectors.size());
    return status;
}

} // namespace torvane
