#include "ride/braking_run.h"

#include "core/result_status.h"
#include "model/assist.h"
#include "model/constants.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/resistance.h"
#include "ride/brake_energy.h"
#include "ride/motion.h"

#include <cmath>

namespace torvane {

namespace {

constexpr double automaticBrakingInterval = 0.01; // s
constexpr double slowestWheel = 30.0;             // rpm; below it torque keeps its last value, power over no turning
constexpr double kiloWattPeak = -10000.0;         // W

void brakeByForce(RideRun& ride, double velocity)
{
    ride.now.thrustForce = ride.found.force;
    ride.now.thrustPower = ride.found.force * velocity * standardGravity;
    double wheel = wheelRpmAt(ride.model, velocity);
    if (wheel > slowestWheel)
        ride.now.thrustTorque = ride.now.thrustPower / radiansPerSecond(wheel);
}

void brakeByPower(RideRun& ride, double velocity)
{
    ride.now.thrustPower = ride.found.power;
    double wheel = wheelRpmAt(ride.model, velocity);
    if (wheel > slowestWheel) {
        ride.now.thrustTorque = ride.found.power / radiansPerSecond(wheel);
        ride.now.thrustForce = forceAtLever(ride.now.thrustTorque, rearWheelLever(ride.model));
    }
}

void testSlip(RideRun& ride, BrakingRun& run)
{
    updateLoadAndGrip(ride.model, ride.now, ride.now.thrustForce);
    double pressed = std::cos(std::atan(ride.now.inclination / 100.0)) * ride.model.state.totalWeight;
    if (std::fabs(ride.now.thrustForce) > pressed * ride.now.effectiveFriction)
        run.status = statusSlip;
}

void settleAtEnd(RideRun& ride, BrakingRun& run)
{
    StepState& s = run.state;
    double passed = s.velocity;
    double overshoot = settleAtVelocity(ride, s, run.dt);
    takeThrustBack(ride, run.totals, run.dt, overshoot);
    if (run.heats)
        undoBrakeOvershoot(ride, passed, ride.now.thrustPower, run.dt, overshoot);
}

void settleAtDistance(RideRun& ride, BrakingRun& run)
{
    StepState& s = run.state;
    double over = (s.distance - run.distanceLimit) / s.velocity; // s
    if (run.heats)
        undoBrakeOvershoot(ride, s.velocity, ride.now.thrustPower, over, 1.0);
    s.time += run.dt - over;
    s.velocity -= over * s.accele;
    s.distance = run.distanceLimit;
}

double interval(const RideRun& ride)
{
    return ride.in.decelerationIntervalMode == intervalAuto ? automaticBrakingInterval : ride.in.decelerationInterval;
}

bool canRun(const RideRun& ride)
{
    return ride.found.sectorStartVelocity > ride.in.endVelocity && interval(ride) >= leastInterval;
}

void finishBrakingRun(RideRun& ride, const BrakingRun& run)
{
    storeMeans(ride, run.totals, run.state.time);
    storeMotion(ride, run.state);
}

bool recordBraking(RunRecorder& recorder, StepState& s)
{
    const RideRun& ride = recorder.ride;
    s.cadence = cadenceInGear(ride.model, s.velocity, s.gearRatio);
    reportProgress(ride.progress, progressPercent(ride.found.sectorStartVelocity, ride.in.endVelocity, s.velocity));
    return recordStep(recorder, s);
}

} // namespace

BrakingRun startBrakingRun(RideRun& ride, BrakeLaw law, double dt)
{
    BrakingRun run{law, dt};
    StepState& s = run.state;
    clearPeaks(ride);
    s.velocity = ride.found.sectorStartVelocity;
    s.gear = startGear(ride, startOfDeceleration, s.velocity);
    engageGear(ride.model, s);
    resetGrip(ride);
    s.resistance = solvePowerAtVelocity(ride.model, ride.now, stageThrust, s.velocity).value;
    return run;
}

bool brakeStep(RideRun& ride, BrakingRun& run)
{
    StepState& s = run.state;
    run.law == BrakeLaw::force ? brakeByForce(ride, s.velocity) : brakeByPower(ride, s.velocity);
    lowerThrustPeak(ride);
    updateResistance(ride, s);
    s.accele = powerAcceleration(ride, s);
    testSlip(ride, run);
    followLargestAccele(ride, s.accele);
    if (std::fabs(s.accele) < plateauAccele)
        return false;
    addThrust(ride, run.totals, run.dt);
    if (run.heats)
        accumulateBrakeStep(ride, s.velocity, ride.now.thrustPower, run.dt);
    advance(s, run.dt);
    if (s.velocity <= ride.in.endVelocity) {
        settleAtEnd(ride, run);
        return false;
    }
    if (s.distance >= run.distanceLimit) {
        settleAtDistance(ride, run);
        return false;
    }
    s.time += run.dt;
    return true;
}

ResultStatus brakeDryRun(RideRun& ride, BrakeLaw law)
{
    if (!canRun(ride))
        return statusIllegalValue;
    BrakingRun run = startBrakingRun(ride, law, interval(ride));
    ride.log.sampleCount = 1;
    while (run.state.time < longestRun && brakeStep(ride, run))
        ++ride.log.sampleCount;
    finishBrakingRun(ride, run);
    return run.status;
}

void brakeLoggedRun(RideRun& ride, BrakeLaw law)
{
    if (!canRun(ride))
        return;
    if (ride.found.peakPower[stageThrust] <= kiloWattPeak)
        ride.found.drive.kiloWattLog = 1;
    RunRecorder recorder = beginRecording(ride, GraphLayout::braking);
    BrakingRun run = startBrakingRun(ride, law, interval(ride));
    run.heats = true;
    while (run.state.time < longestRun && recordBraking(recorder, run.state) && brakeStep(ride, run)) {
    }
    finishBrakingRun(ride, run);
    run.state.cadence = cadenceInGear(ride.model, run.state.velocity, run.state.gearRatio);
    finishRecording(recorder, run.state);
}

} // namespace torvane
