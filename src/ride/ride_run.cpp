// Which simulation a mode and its target, reference factor or pattern name, and in what order its passes run.
#include "ride/ride_run.h"

#include "core/parameter_block.h"
#include "core/result_status.h"
#include "core/units.h"
#include "model/assist.h"
#include "model/constants.h"
#include "ride/acceleration.h"
#include "ride/brake_energy.h"
#include "ride/braking_run.h"
#include "ride/braking_seek.h"
#include "ride/critical_cornering.h"
#include "ride/deceleration.h"
#include "ride/inclination_run.h"
#include "ride/intermittent_braking.h"
#include "ride/motion.h"
#include "ride/number_check.h"
#include "ride/pattern_braking.h"
#include "ride/physiology.h"
#include "ride/power_and_velocity.h"

namespace torvane {

namespace {

constexpr double limitPerGravity = standardGravity * kphPerMps;

// The reference power is the one for the ending velocity; that it lies above the gears' reach is no news then.
ResultStatus accelerateByEndingVelocity(RideRun& ride, bool asMean)
{
    constexpr ResultStatus mask = ~ResultStatus{statusOverReach};
    if (!(ride.in.startVelocity < ride.in.endVelocity))
        return statusIllegalValue;
    if (!takePower(ride, solvePowerAtVelocity(ride.model, ride.now, stagePedaling, ride.in.endVelocity).value))
        return statusNotConverged;
    return (asMean ? seekMeanPower(ride, ride.found.power) : accelerateDryRun(ride, PowerLaw::parabola)) & mask;
}

ResultStatus accelerateByGravity(RideRun& ride)
{
    ResultStatus status = seekAccele(ride, ride.in.gravity * standardGravity);
    ride.found.seekLow /= limitPerGravity;
    ride.found.seekHigh = 0.0;
    return status;
}

ResultStatus dryAcceleration(RideRun& ride, int factor)
{
    switch (factor) {
    case accelerationMeanPower:
        return seekMeanPower(ride, ride.in.power);
    case accelerationEndingVelocityMaxi:
    case accelerationEndingVelocityMean:
        return accelerateByEndingVelocity(ride, factor == accelerationEndingVelocityMean);
    case accelerationSectorTime:
        return seekSectorTime(ride, ride.in.sectorTime);
    case accelerationDistance:
        return seekDistance(ride, ride.in.distance);
    case accelerationAccele:
        return seekAccele(ride, ride.in.accele);
    case accelerationGravity:
        return accelerateByGravity(ride);
    case accelerationConstantPower:
        return accelerateDryRun(ride, PowerLaw::constant);
    default:
        return accelerateDryRun(ride, PowerLaw::parabola);
    }
}

ResultStatus decelerateByGravity(RideRun& ride)
{
    ResultStatus status = decelSeekAccele(ride, ride.in.gravity * standardGravity);
    ride.found.seekLow /= limitPerGravity;
    ride.found.seekHigh /= limitPerGravity;
    return status;
}

// A power that turns out negative is one of the brakes.
ResultStatus decelerateByPower(RideRun& ride, PowerLaw law)
{
    ResultStatus status = decelerateDryRun(ride, law);
    if (ride.found.drive.thrustMode == thrustByPedaling)
        return status;
    return law == PowerLaw::parabola ? seekBrakeForPeakPower(ride) : brakeDryRun(ride, BrakeLaw::power);
}

ResultStatus dryDeceleration(RideRun& ride, int factor)
{
    switch (factor) {
    case decelerationMeanPower:
        return decelSeekMeanPower(ride);
    case decelerationEndingVelocity:
        return decelPowerForEndingVelocity(ride);
    case decelerationSectorTime:
        return decelSeekSectorTime(ride, ride.in.sectorTime);
    case decelerationDistance:
        return decelSeekDistance(ride, ride.in.distance);
    case decelerationAccele:
        return decelSeekAccele(ride, ride.in.accele);
    case decelerationGravity:
        return decelerateByGravity(ride);
    case decelerationConstantPower:
        return decelerateByPower(ride, PowerLaw::constant);
    default:
        return decelerateByPower(ride, PowerLaw::parabola);
    }
}

void runBrakes(RideRun& ride, BrakeLaw law)
{
    clearBrakeEnergy(ride);
    brakeLoggedRun(ride, law);
    energyLedger(ride, ride.found.distance, ride.in.startVelocity, ride.in.endVelocity);
}

void addPhysiology(RideRun& ride, double normalizedPower)
{
    ride.physiology = physiologyOfRun(ride.model, ride.in.physiology, ride.found.meanStagePower[stagePedaling],
                                      normalizedPower, ride.found.sectorTime);
}

void runAcceleration(RideRun& ride)
{
    int factor = ride.in.rideTarget;
    ride.status = dryAcceleration(ride, factor);
    if (isFatal(ride.status))
        return;
    PowerLaw law = factor == accelerationConstantPower ? PowerLaw::constant : PowerLaw::parabola;
    addPhysiology(ride, accelerateLoggedRun(ride, law));
}

void runDeceleration(RideRun& ride)
{
    int factor = ride.in.rideTarget;
    ride.status = dryDeceleration(ride, factor);
    if (isFatal(ride.status))
        return;
    bool constant = factor == decelerationConstantPower;
    if (ride.found.drive.thrustMode == thrustByBraking) {
        runBrakes(ride, constant ? BrakeLaw::power : BrakeLaw::force);
        return;
    }
    addPhysiology(ride, decelerateLoggedRun(ride, constant ? PowerLaw::constant : PowerLaw::parabola));
}

void runConstantVelocity(RideRun& ride)
{
    ride.status = constantVelocityDryRun(ride);
    if (isFatal(ride.status))
        return;
    clearBrakeEnergy(ride);
    constantVelocityLoggedRun(ride);
    energyLedger(ride, ride.in.totalDistance, ride.in.endVelocity, ride.in.endVelocity);
}

void runIntermittent(RideRun& ride)
{
    int intervals = 0;
    ride.status = intermittentDryRun(ride, intervals);
    if (isFatal(ride.status))
        return;
    clearBrakeEnergy(ride);
    ride.status = intermittentLoggedRun(ride, intervals);
    energyLedger(ride, ride.in.totalDistance, ride.found.sectorStartVelocity, ride.found.velocity);
}

void runPattern(RideRun& ride)
{
    int pattern = ride.in.rideTarget;
    if (pattern == patternConstantVelocity)
        return runConstantVelocity(ride);
    if (pattern == patternIntermittent)
        return runIntermittent(ride);
    ride.status = pattern == patternCriticalFull ? criticalFullBraking(ride) : brakeDryRun(ride, BrakeLaw::force);
    if (!isFatal(ride.status))
        runBrakes(ride, BrakeLaw::force);
}

void runInclinationMode(RideRun& ride)
{
    ride.status = runInclination(ride);
    if (ride.status != statusDone)
        ride.graph.reset();
}

void runPowerMode(RideRun& ride)
{
    ride.status = runPowerAndVelocity(ride);
    ride.physiology =
        physiologyOfSteadyRide(ride.model, ride.in.physiology, ride.now.pedalingPower, ride.found.velocity);
}

void runCornering(RideRun& ride)
{
    ride.status = runCriticalCornering(ride);
}

// In the order of RideMode.
constexpr void (*modes[rideModeCount])(RideRun& ride) = {runPowerMode, runAcceleration,    runDeceleration,
                                                         runPattern,   runInclinationMode, runCornering};

} // namespace

RideRun runRide(const Model& model, const RideInputs& in, Progress* progress)
{
    RideRun ride = prepareRideRun(model, in);
    ride.progress = progress;
    modes[in.rideMode](ride);
    ride.progress = nullptr; // the run outlives it
    if (!isFatal(ride.status) && !endedInNumbers(ride)) {
        ride.status |= statusNotConverged;
        ride.log = {};
        ride.graph.reset();
    }
    return ride;
}

} // namespace torvane
