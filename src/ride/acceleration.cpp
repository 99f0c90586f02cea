#include "ride/acceleration.h"

#include "model/assist.h"
#include "model/resistance.h"
#include "ride/seek.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

bool isKick(const RideRun& ride, const StepState& s)
{
    return ride.in.startVelocity == 0.0 && s.time < ride.in.kickTime;
}

// Velocity that the cranks turn with in the first kick, when the wheel still stands.
double kickVelocity(PowerLaw law)
{
    return law == PowerLaw::constant ? 1.4 : 0.025;
}

void testWheelSpin(RideRun& ride, PedaledRun& run)
{
    updateLoadAndGrip(ride.model, ride.now, ride.now.thrustForce);
    double grip = ride.now.rearWeightRatio * ride.now.effectiveFriction * ride.model.state.totalWeight;
    if (ride.now.thrustForce > grip)
        run.status = statusWheelSpin; // whatever warning stood before
}

bool accelerateStep(RideRun& ride, PedaledRun& run, RunRecorder* recorder)
{
    StepState& s = run.state;
    bool kick = isKick(ride, s);
    pedalOrShift(ride, run, kick ? kickVelocity(run.law) : 0.0);
    s.accele = kick ? gravityAcceleration(ride, ride.now.thrustForce) : powerAcceleration(ride, s);
    if (!kick && !run.shifting && s.accele < plateauAccele) {
        run.status = s.accele < 0.0 ? statusNoAcceleration : run.status | statusEndNotReached;
        return false;
    }
    testWheelSpin(ride, run);
    ride.found.maxAccele = std::max(ride.found.maxAccele, s.accele);
    rideStep(ride, run, recorder);
    if (s.velocity >= ride.in.endVelocity) {
        settleAtEnd(ride, run);
        return false;
    }
    shiftUp(ride, run);
    return true;
}

bool isRising(const RideRun& ride)
{
    return ride.in.startVelocity < ride.in.endVelocity;
}

// Step by the velocity that the power can hold.
double intervalFor(const RideRun& ride, double heldVelocity)
{
    return ride.in.accelerationIntervalMode == intervalAuto ? automaticInterval(ride.model, heldVelocity)
                                                            : ride.in.accelerationInterval;
}

// What is to be known before the first step.
struct Start {
    ResultStatus status;
    double dt = 0;
};

Start prepareAcceleration(RideRun& ride)
{
    if (!(ride.found.power >= 0.0) || !isRising(ride))
        return {statusIllegalValue};
    resetGrip(ride);
    double heldVelocity = solveVelocityForPower(ride.model, ride.now, stagePedaling, ride.found.power).value;
    if (!(ride.in.startVelocity < heldVelocity))
        return {statusTooShortPower};
    double dt = intervalFor(ride, heldVelocity);
    return {dt >= leastInterval ? statusDone : statusIllegalValue, dt};
}

ResultStatus accelerate(RideRun& ride, PowerLaw law, RunRecorder* recorder)
{
    Start start = prepareAcceleration(ride);
    if (isFatal(start.status))
        return start.status;
    PedaledRun run = startPedaledRun(ride, law, start.dt, startGear(ride, startOfAcceleration, ride.in.startVelocity));
    bool ended = runSteps(ride, run, recorder, accelerateStep);
    if (isFatal(run.status))
        return run.status;
    if (!ended || !std::isfinite(run.state.velocity))
        run.status = statusNotConverged;
    if (run.state.velocity > ride.model.reachVelocity)
        run.status |= statusOverReach;
    finishPedaledRun(ride, run, recorder);
    return run.status;
}

ResultStatus accelerateByParabola(RideRun& ride)
{
    return accelerateDryRun(ride, PowerLaw::parabola);
}

// A figure of the run that asks for more power than the ending velocity does.
struct Factor {
    double RideFigures::*figure;
    double tolerance;
    HighSide highSide;
    ResultStatus beyond;
};

constexpr Factor sectorTimeFactor = {&RideFigures::sectorTime, 0.01, HighSide::belowWanted, statusTooLongTime};
constexpr Factor distanceFactor = {&RideFigures::distance, 0.1, HighSide::belowWanted, statusTooLongDistance};
constexpr Factor acceleFactor = {&RideFigures::accele, 0.0015, HighSide::aboveWanted, statusTooHighAccele};

// Sets the limits that a message quotes, by the run with the power for the ending velocity.
bool isWithinLimit(RideRun& ride, const Factor& factor, double wanted)
{
    double limit = ride.found.*factor.figure;
    bool atLeast = factor.highSide == HighSide::aboveWanted;
    ride.found.seekLow = atLeast ? limit : 0.0;
    ride.found.seekHigh = atLeast ? 0.0 : limit;
    return !(atLeast ? wanted < limit : wanted > limit);
}

ResultStatus seekFactor(RideRun& ride, const Factor& factor, double wanted)
{
    double& figure = ride.found.*factor.figure;
    if (!(wanted > 0.0) || !isRising(ride))
        return statusIllegalValue;
    ride.found.power = powerForEndingVelocity(ride);
    double step = 0.2 * ride.found.power;
    accelerateByParabola(ride);
    if (!isWithinLimit(ride, factor, wanted)) {
        figure = wanted;
        return factor.beyond;
    }
    Seek seek = {&ride.found.power, &figure, wanted, step, factor.tolerance, factor.highSide, 0.0};
    return seekTarget(ride, seek, accelerateByParabola);
}

} // namespace

ResultStatus accelerateDryRun(RideRun& ride, PowerLaw law)
{
    return accelerate(ride, law, nullptr);
}

double accelerateLoggedRun(RideRun& ride, PowerLaw law)
{
    return recordPedaledRun(ride, [&](RunRecorder& recorder) { accelerate(ride, law, &recorder); });
}

ResultStatus seekMeanPower(RideRun& ride, double wanted)
{
    ride.found.power = ride.found.meanPower = wanted;
    if (!(wanted > 0.0) || !isRising(ride))
        return statusIllegalValue;
    double step = 0.4 * powerForEndingVelocity(ride);
    Seek seek = {
        &ride.found.power, &ride.found.meanStagePower[stagePedaling], wanted, step, 0.001, HighSide::aboveWanted, 0.0};
    return seekTarget(ride, seek, accelerateByParabola);
}

ResultStatus seekSectorTime(RideRun& ride, double wanted)
{
    return seekFactor(ride, sectorTimeFactor, wanted);
}

ResultStatus seekDistance(RideRun& ride, double wanted)
{
    return seekFactor(ride, distanceFactor, wanted);
}

ResultStatus seekAccele(RideRun& ride, double wanted)
{
    return seekFactor(ride, acceleFactor, wanted);
}

} // namespace torvane
