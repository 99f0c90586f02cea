#include "ride/intermittent_braking.h"

#include "core/result_status.h"
#include "core/units.h"
#include "model/assist.h"
#include "ride/brake_energy.h"
#include "ride/braking_run.h"
#include "ride/motion.h"
#include "ride/rolling_run.h"
#include "ride/run_recorder.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr double spotInterval = 0.01;       // s
constexpr int settlingRounds = 5;           // intervals after which the coasting velocity repeats itself
constexpr double mostPoints = 1e9;          // of which a count still holds
constexpr double mostIntervals = 1'000'000; // beyond it the interval is no interval

// The ride so far, at the start of a sector.
struct Way {
    double time = 0;     // s
    double distance = 0; // m
};

void addPoint(RideRun& ride, const Way& way, const StepState& s)
{
    if (ride.graph) {
        addGraphPoint(*ride.graph, {s.time + way.time, s.velocity * kphPerMps, s.distance + way.distance,
                                    drawnTemperature(ride, 0), drawnTemperature(ride, 1)});
    }
}

void storeCoast(RideRun& ride, const StepState& s, double distance)
{
    ride.found.velocity = s.velocity;
    ride.found.sectorTime = s.time;
    ride.found.accele = meanAccele(ride.found.sectorStartVelocity, s.velocity, s.time);
    ride.found.distance = distance;
}

// Cuts a coast to the distance that its last step went beyond.
void endCoast(RideRun& ride, StepState& s, double dt, double distance, bool cools)
{
    double over = (s.distance - distance) / s.velocity; // s
    if (cools)
        coolBrakes(ride, s.velocity, -over);
    endRollStep(s, dt, over);
    storeCoast(ride, s, distance);
}

// Coasts from the sector's starting velocity over a distance. With a way the brakes cool and the curves go on; count is
// what a log of the sector needs.
ResultStatus coast(RideRun& ride, double distance, const Way* way, int& count)
{
    double dt = rollInterval(ride);
    StepState s = startRolling(ride);
    for (count = 1; s.time < longestRun; ++count) {
        if (way != nullptr) {
            addPoint(ride, *way, s);
            coolBrakes(ride, s.velocity, dt);
        }
        rollStep(ride, s, dt);
        if (s.distance >= distance) {
            endCoast(ride, s, dt, distance, way != nullptr);
            return 0;
        }
        s.time += dt;
    }
    storeCoast(ride, s, s.distance);
    return statusNotConverged;
}

// Brakes from the sector's starting velocity down to endVelocity, or to the end of a distance.
ResultStatus brakeSpot(RideRun& ride, double distanceLimit, const Way& way)
{
    BrakingRun run = startBrakingRun(ride, BrakeLaw::force, spotInterval);
    run.heats = true;
    run.distanceLimit = distanceLimit;
    do {
        addPoint(ride, way, run.state);
        if (!brakeStep(ride, run)) {
            storeMotion(ride, run.state);
            return run.status;
        }
    } while (run.state.time < longestRun);
    storeMotion(ride, run.state);
    return statusNotConverged;
}

void addSector(RideRun& ride, Way& way, double distance)
{
    way.time += ride.found.sectorTime;
    way.distance += distance;
    SectorRow row{way.time, ride.found.velocity, way.distance, {}, {}, {}, {}};
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        row.brake[wheel] = ride.heat.brakeTemperature[wheel];
        row.heat[wheel] = ride.heat.brakeHeat[wheel] / 1000.0;
        row.radiate[wheel] = ride.heat.brakeRadiated[wheel] / 1000.0;
        row.residual[wheel] = (ride.heat.brakeHeat[wheel] + ride.heat.brakeRadiated[wheel]) / 1000.0;
    }
    ride.log.sectors.push_back(row);
}

ResultStatus coastSector(RideRun& ride, double distance, Way& way)
{
    int count = 0;
    ride.found.sectorStartVelocity = ride.in.endVelocity;
    ResultStatus status = coast(ride, distance, &way, count);
    addSector(ride, way, distance);
    return status;
}

ResultStatus spotSector(RideRun& ride, double distanceLimit, double distance, Way& way)
{
    ride.found.sectorStartVelocity = ride.found.velocity;
    ResultStatus status = brakeSpot(ride, distanceLimit, way);
    addSector(ride, way, distance);
    return status;
}

// Way to coast in an interval: what the braking before leaves of it.
double coastDistance(const RideRun& ride)
{
    return ride.in.intervalDistance - ride.found.distance;
}

ResultStatus rideInterval(RideRun& ride, Way& way)
{
    double coasted = coastDistance(ride);
    ResultStatus status = coastSector(ride, coasted, way);
    status |= spotSector(ride, ride.in.totalDistance, ride.in.intervalDistance - coasted, way);
    return status;
}

ResultStatus rideRemainder(RideRun& ride, double remainder, Way& way)
{
    double coasted = coastDistance(ride);
    if (!(remainder > coasted))
        return coastSector(ride, remainder, way);
    ResultStatus status = coastSector(ride, coasted, way);
    status |= spotSector(ride, remainder - coasted, remainder - coasted, way);
    return status;
}

// An interval without its heat; steps are what a log of it needs. One that is longer than the whole way is not ridden:
// a coast in it that takes longer than any run may is no failure then, and the brakes go on from where it is cut.
ResultStatus rehearseInterval(RideRun& ride, bool ridden, int& steps)
{
    int coastSteps = 0;
    ride.found.sectorStartVelocity = ride.in.endVelocity;
    ResultStatus status = coast(ride, coastDistance(ride), nullptr, coastSteps);
    if (isFatal(status) && ridden)
        return status;
    ride.found.sectorStartVelocity = ride.found.velocity;
    ResultStatus braking = brakeDryRun(ride, BrakeLaw::force);
    steps = coastSteps + ride.log.sampleCount;
    return braking & fatalBits;
}

// Braking from the velocity that the descent reaches, the longest there can be.
ResultStatus checkInterval(RideRun& ride)
{
    resetGrip(ride);
    double poised = solveVelocityForPower(ride.model, ride.now, stageThrust, 0.0).value;
    if (!(ride.in.endVelocity < poised)) {
        solveRollingVelocity(ride);
        return statusNoBrakingNeeded;
    }
    ride.found.sectorStartVelocity = poised;
    ResultStatus status = brakeDryRun(ride, BrakeLaw::force);
    // A force that fades out above the ending velocity would take any interval.
    bool fits = ride.found.distance <= ride.in.intervalDistance && ride.found.velocity <= ride.in.endVelocity;
    return isFatal(status) || fits ? status & fatalBits : statusTooShortInterval;
}

} // namespace

ResultStatus intermittentDryRun(RideRun& ride, int& intervalCount)
{
    ResultStatus status = checkInterval(ride);
    double intervals = ride.in.totalDistance / ride.in.intervalDistance;
    if (!isFatal(status) && (!(rollInterval(ride) >= leastInterval) || !(intervals <= mostIntervals)))
        status = statusIllegalValue;
    intervalCount = isFatal(status) ? 0 : static_cast<int>(intervals);
    int steps = 0;
    for (int round = 0; round < settlingRounds && !isFatal(status); ++round) {
        reportProgress(ride.progress, progressPercent(0.0, intervalCount + 6.0, round));
        status = rehearseInterval(ride, intervalCount > 0, steps);
    }
    ride.log.sampleCount = static_cast<int>(std::min((intervalCount + 1.0) * steps, mostPoints));
    return status;
}

ResultStatus intermittentLoggedRun(RideRun& ride, int intervalCount)
{
    beginCurves(ride, GraphLayout::braking, ride.log.sampleCount);
    Way way;
    ResultStatus status = 0;
    ride.log.bySectors = true;
    for (int interval = 0; interval < intervalCount && !isFatal(status); ++interval) {
        status |= rideInterval(ride, way);
        reportProgress(ride.progress, progressPercent(0.0, intervalCount + 6.0, interval + 6.0));
    }
    double remainder = ride.in.totalDistance - intervalCount * ride.in.intervalDistance;
    if (remainder != 0.0 && !isFatal(status))
        status |= rideRemainder(ride, remainder, way);
    ride.found.sectorTime = way.time;
    ride.log.sampleCount = static_cast<int>(ride.log.sectors.size());
    return status;
}

} // namespace torvane
