#include "ride/deceleration.h"

#include "model/assist.h"
#include "model/gear_table.h"
#include "ride/braking_run.h"
#include "ride/braking_seek.h"
#include "ride/seek.h"

#include <cmath>

namespace torvane {

namespace {

bool decelerateStep(RideRun& ride, PedaledRun& run, RunRecorder* recorder)
{
    StepState& s = run.state;
    pedalOrShift(ride, run, 0.0);
    s.accele = powerAcceleration(ride, s);
    followLargestAccele(ride, s.accele);
    if (std::fabs(s.accele) < plateauAccele)
        return false;
    rideStep(ride, run, recorder);
    if (s.velocity <= ride.in.endVelocity) {
        settleAtEnd(ride, run);
        return false;
    }
    shiftDown(ride, run);
    return true;
}

bool isFalling(const RideRun& ride)
{
    return ride.in.endVelocity < ride.in.startVelocity;
}

double interval(const RideRun& ride)
{
    return ride.in.decelerationIntervalMode == 0 ? automaticInterval(ride.model, ride.in.startVelocity)
                                                 : ride.in.decelerationInterval;
}

// Whether the reference power lets slow from start to end.
ResultStatus comparePower(RideRun& ride)
{
    resetGrip(ride);
    if (solveVelocityForPower(ride.model, ride.now, stagePedaling, 0.0).value >= ride.in.startVelocity)
        return statusNoDeceleration;
    double heldVelocity = solveVelocityForPower(ride.model, ride.now, stagePedaling, ride.found.power).value;
    if (heldVelocity >= ride.in.startVelocity)
        return statusTooLargePower;
    return heldVelocity > ride.in.endVelocity ? statusDeclineMayStop : statusDone;
}

ResultStatus pedalDown(RideRun& ride, PowerLaw law, ResultStatus status, RunRecorder* recorder)
{
    PedaledRun run =
        startPedaledRun(ride, law, interval(ride), startGear(ride, startOfDeceleration, ride.in.startVelocity));
    run.status = status;
    if (!runSteps(ride, run, recorder, decelerateStep))
        run.status = statusNotConverged;
    finishPedaledRun(ride, run, recorder);
    return run.status;
}

ResultStatus decelerate(RideRun& ride, PowerLaw law, RunRecorder* recorder)
{
    if (!isFalling(ride) || !(interval(ride) >= leastInterval) || std::isnan(ride.found.power))
        return statusIllegalValue;
    if (ride.found.power < 0.0) {
        ride.found.drive.thrustMode = thrustByBraking;
        return 0;
    }
    ResultStatus status = comparePower(ride);
    return isFatal(status) ? status : pedalDown(ride, law, status, recorder);
}

ResultStatus decelerateByParabola(RideRun& ride)
{
    return decelerateDryRun(ride, PowerLaw::parabola);
}

// A figure of the run that grows with the power: the time, the distance, and the acceleration, which is negative.
struct Factor {
    double RideFigures::*figure;
    double tolerance;
    ResultStatus beyond;
    ResultStatus (*brake)(RideRun&, double wanted); // the same figure by braking
};

constexpr Factor sectorTimeFactor = {&RideFigures::sectorTime, 0.01, statusTooLongTime, seekBrakeForSectorTime};
constexpr Factor distanceFactor = {&RideFigures::distance, 0.1, statusTooLongDistance, seekBrakeForDistance};
constexpr Factor acceleFactor = {&RideFigures::accele, 0.0015, statusTooHighAccele, seekBrakeForAccele};

// First power of a seek, laid between coasting and the power for the ending velocity. Leaves the limits, and the status
// of the run with that power, when there is one.
double firstPower(RideRun& ride, const Factor& factor, double wanted, ResultStatus& status)
{
    double& figure = ride.found.*factor.figure;
    double coasting = figure;
    double power = 0.0;
    if (ride.in.endVelocity != 0.0) {
        double holding = powerForEndingVelocity(ride);
        ride.found.power = holding;
        status = decelerateByParabola(ride);
        power = holding * (figure - wanted) / (figure - coasting);
    }
    ride.found.seekLow = coasting;
    ride.found.seekHigh = figure;
    return power;
}

ResultStatus seekFactor(RideRun& ride, const Factor& factor, double wanted)
{
    double& figure = ride.found.*factor.figure;
    ride.found.power = 0.0;
    ResultStatus status = decelerateByParabola(ride);
    if (isFatal(status)) {
        figure = wanted;
        return status;
    }
    double power = firstPower(ride, factor, wanted, status);
    if (!(wanted <= ride.found.seekHigh - factor.tolerance)) {
        figure = wanted;
        return status | factor.beyond;
    }
    if (ride.found.seekLow > wanted) {
        ride.found.drive.thrustMode = thrustByBraking;
        figure = wanted;
        return factor.brake(ride, wanted);
    }
    ride.found.power = power;
    Seek seek = {&ride.found.power, &figure, wanted, 0.2 * power, factor.tolerance, HighSide::aboveWanted, 0.0};
    return seekTarget(ride, seek, decelerateByParabola);
}

// What this reference lets through of a status: all that a run can set today.
constexpr ResultStatus endingVelocityMask = ~ResultStatus{statusTooLargeRatio};

} // namespace

ResultStatus decelerateDryRun(RideRun& ride, PowerLaw law)
{
    return decelerate(ride, law, nullptr);
}

double decelerateLoggedRun(RideRun& ride, PowerLaw law)
{
    return recordPedaledRun(ride, [&](RunRecorder& recorder) { decelerate(ride, law, &recorder); });
}

ResultStatus decelSeekMeanPower(RideRun& ride)
{
    double wanted = ride.in.power;
    if (!isFalling(ride))
        return statusIllegalValue;
    ride.found.meanPower = wanted;
    if (wanted < 0.0) {
        ride.found.drive.thrustMode = thrustByBraking;
        return seekBrakeForMeanPower(ride);
    }
    double holding = powerForEndingVelocity(ride);
    if (wanted > holding)
        return statusTooLargePower;
    Seek seek = {&ride.found.power,
                 &ride.found.meanStagePower[stagePedaling],
                 wanted,
                 0.4 * holding,
                 0.001,
                 HighSide::aboveWanted,
                 0.0,
                 holding};
    return seekTarget(ride, seek, decelerateByParabola);
}

ResultStatus decelPowerForEndingVelocity(RideRun& ride)
{
    if (!isFalling(ride))
        return statusIllegalValue;
    double holding = powerForEndingVelocity(ride);
    if (ride.now.totalLoad < 0.0) {
        ride.found.power = 0.0;
        ride.found.force = ride.now.totalLoad;
        ride.found.drive.thrustMode = thrustByBraking;
        return brakeDryRun(ride, BrakeLaw::force) & endingVelocityMask;
    }
    double ratio = usualRatio(ride.model, ride.in.endVelocity);
    double gearRatio = ride.model.gearTable[nearestGear(ride.model, ratio)].ratio;
    double cadence = ride.model.state.cadenceUsual * ratio / gearRatio;
    if (!takePower(ride, requiredPower(holding, cadence, ride.model.state.cadencePoweredMax)))
        return statusNotConverged;
    ResultStatus status = decelerateByParabola(ride);
    if (ride.found.drive.thrustMode == thrustByBraking) {
        // Pedals that would turn beyond the far end of the parabola ask for power below 0.
        status = brakeDryRun(ride, BrakeLaw::force);
    }
    return status & endingVelocityMask;
}

ResultStatus decelSeekSectorTime(RideRun& ride, double wanted)
{
    return wanted > 0.0 && isFalling(ride) ? seekFactor(ride, sectorTimeFactor, wanted) : statusIllegalValue;
}

ResultStatus decelSeekDistance(RideRun& ride, double wanted)
{
    return wanted > 0.0 && isFalling(ride) ? seekFactor(ride, distanceFactor, wanted) : statusIllegalValue;
}

ResultStatus decelSeekAccele(RideRun& ride, double wanted)
{
    return wanted <= 0.0 && isFalling(ride) ? seekFactor(ride, acceleFactor, wanted) : statusIllegalValue;
}

} // namespace torvane
