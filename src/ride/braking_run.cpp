#include "ride/braking_run.h"

#include "core/parameter_block.h"
#include "core/screens.h"
#include "model/assist.h"
#include "model/constants.h"
#include "model/drivetrain.h"
#include "model/resistance.h"
#include "ride/brake_energy.h"
#include "ride/motion.h"
#include "ride/ride_status.h"

#include <cmath>

namespace torvane {

namespace {

constexpr double automaticBrakingInterval = 0.01; // s
constexpr double slowestWheel = 30.0;             // rpm; below it torque keeps its last value, power over no turning
constexpr double kiloWattPeak = -10000.0;         // W

void brakeByForce(double velocity)
{
    runState.thrustForce = runState.force;
    runState.thrustPower = runState.force * velocity * standardGravity;
    const double wheel = wheelRpmAt(velocity);
    if (wheel > slowestWheel) {
        runState.thrustTorque = runState.thrustPower / radiansPerSecond(wheel);
    }
}

void brakeByPower(double velocity)
{
    runState.thrustPower = runState.power;
    const double wheel = wheelRpmAt(velocity);
    if (wheel > slowestWheel) {
        runState.thrustTorque = runState.power / radiansPerSecond(wheel);
        runState.thrustForce = forceAtLever(runState.thrustTorque, rearWheelLever());
    }
}

void testSlip(BrakingRun& run)
{
    updateLoadAndGrip(runState.thrustForce);
    const double pressed = std::cos(std::atan(runState.inclination / 100.0)) * modelState.totalWeight;
    if (std::fabs(runState.thrustForce) > pressed * modelState.effectiveFriction) {
        run.status = statusSlip;
    }
}

void settleAtEnd(BrakingRun& run)
{
    StepState& s = run.state;
    const double passed = s.velocity;
    const double overshoot = settleAtVelocity(s, run.dt);
    takeThrustBack(run.totals, run.dt, overshoot);
    if (run.heats) {
        undoBrakeOvershoot(passed, runState.thrustPower, run.dt, overshoot);
    }
}

void settleAtDistance(BrakingRun& run)
{
    StepState& s = run.state;
    const double over = (s.distance - run.distanceLimit) / s.velocity; // s
    if (run.heats) {
        undoBrakeOvershoot(s.velocity, runState.thrustPower, over, 1.0);
    }
    s.time += run.dt - over;
    s.velocity -= over * s.accele;
    s.distance = run.distanceLimit;
}

double interval()
{
    return runState.decelerationIntervalMode == 0 ? automaticBrakingInterval : runState.decelerationInterval;
}

bool canRun()
{
    return runState.startVelocity > runState.endVelocity && interval() >= leastInterval;
}

void finishBrakingRun(const BrakingRun& run)
{
    storeMeans(run.totals, run.state.time);
    storeMotion(run.state);
}

bool recordBraking(RunRecorder& recorder, StepState& s)
{
    s.cadence = cadenceInGear(s.velocity, s.gearRatio);
    reportProgress(progressPercent(runState.startVelocity, runState.endVelocity, s.velocity));
    return recordStep(recorder, s);
}

} // namespace

BrakingRun startBrakingRun(BrakeLaw law, double dt)
{
    BrakingRun run{law, dt};
    StepState& s = run.state;
    clearPeaks();
    s.velocity = runState.startVelocity;
    s.gear = startGear(1, s.velocity);
    engageGear(s);
    resetGrip();
    s.resistance = solvePowerAtVelocity(stageThrust, s.velocity).value;
    return run;
}

bool brakeStep(BrakingRun& run)
{
    StepState& s = run.state;
    run.law == BrakeLaw::force ? brakeByForce(s.velocity) : brakeByPower(s.velocity);
    lowerThrustPeak();
    updateResistance(s);
    s.accele = powerAcceleration(s);
    testSlip(run);
    followLargestAccele(s.accele);
    if (std::fabs(s.accele) < plateauAccele) {
        return false;
    }
    addThrust(run.totals, run.dt);
    if (run.heats) {
        accumulateBrakeStep(s.velocity, runState.thrustPower, run.dt);
    }
    advance(s, run.dt);
    if (s.velocity <= runState.endVelocity) {
        settleAtEnd(run);
        return false;
    }
    if (s.distance >= run.distanceLimit) {
        settleAtDistance(run);
        return false;
    }
    s.time += run.dt;
    return true;
}

ResultStatus brakeDryRun(BrakeLaw law, SampleLog& log)
{
    if (!canRun()) {
        return statusIllegalValue;
    }
    BrakingRun run = startBrakingRun(law, interval());
    log.sampleCount = 1;
    while (run.state.time < longestRun && brakeStep(run)) {
        ++log.sampleCount;
    }
    finishBrakingRun(run);
    return run.status;
}

void brakeLoggedRun(BrakeLaw law, SampleLog& log, GraphSeries* graph)
{
    if (!canRun()) {
        return;
    }
    if (runState.peakPower[stageThrust] <= kiloWattPeak) {
        runState.kiloWattLog = 1;
    }
    RunRecorder recorder = beginRecording(log, graph, GraphLayout::braking);
    BrakingRun run = startBrakingRun(law, interval());
    run.heats = true;
    while (run.state.time < longestRun && recordBraking(recorder, run.state) && brakeStep(run)) {
    }
    finishBrakingRun(run);
    run.state.cadence = cadenceInGear(run.state.velocity, run.state.gearRatio);
    finishRecording(recorder, run.state);
}

} // namespace torvane
