// The chain of stages itself, written once for riders with and without a motor. Internal to the model: callers use
// drivetrain.h and assist.h. Motor is told where the chain passes its two possible places.
#pragma once

#include "core/parameter_block.h"
#include "model/constants.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"
#include "model/run_state.h"

namespace torvane {

// The rider alone.
struct NoMotor {
    void rest() const {}
    void shareAtHub() const {}
    void shareAtCrank(double) const {}
    void addAtCrank() const {}
    void addAtHub() const {}
    void finish() const {}
};

// Powers and torques from the road to the pedals; angular velocities in rad/s.
// The motor's share falls between the stages, so that what lies before it holds the rider's part alone.
template <class Motor>
void stagesBack(double thrustPower, double wheelSpeed, double crankSpeed, const Motor& motor)
{
    const ModelState& m = modelState;
    RunState& r = runState;
    r.thrustPower = thrustPower;
    r.thrustTorque = thrustPower / wheelSpeed;
    r.hubPower = thrustPower * 100.0 / (100.0 - m.wheelLossPercent * r.thrustTorque / m.wheelLossTorque);
    r.hubTorque = r.hubPower / wheelSpeed;
    r.crankPower = r.hubPower * 100.0 / (100.0 - m.missionLossPercent);
    motor.shareAtHub();
    r.crankTorque = r.crankPower / crankSpeed;
    double shellLoss = m.shellLossPercent * r.crankTorque / m.shellLossTorque;
    r.pedalingPower = r.crankPower * 100.0 / (100.0 - shellLoss);
    motor.shareAtCrank(shellLoss);
    r.pedalingTorque = r.pedalingPower / crankSpeed;
}

template <class Motor>
void chainBack(double velocity, double thrustPower, const Motor& motor)
{
    ModelState& m = modelState;
    RunState& r = runState;
    if (!(velocity > 0.0) || !(thrustPower > 0.0)) {
        clearStages();
        motor.rest();
        r.cadence = 0.0;
        m.currentFrontTooth = frontToothOf(0);
        m.currentRearTooth = rearToothOf(0);
        return;
    }
    int gear = nearestGear(velocity * 60000.0 / (m.cadenceUsual * m.rearCircumference));
    m.currentFrontTooth = frontToothOf(gear);
    m.currentRearTooth = rearToothOf(gear);
    double wheelRpm = wheelRpmAt(velocity);
    r.cadence = wheelRpm / (static_cast<double>(m.currentFrontTooth) / m.currentRearTooth);
    stagesBack(thrustPower, radiansPerSecond(wheelRpm), radiansPerSecond(r.cadence), motor);
    r.pedalingForce = forceAtLever(r.pedalingTorque, crankLever());
    r.crankForce = forceAtLever(r.crankTorque, chainLever(m.currentFrontTooth));
    r.hubForce = forceAtLever(r.hubTorque, chainLever(m.currentRearTooth));
    r.thrustForce = forceAtLever(r.thrustTorque, rearWheelLever());
}

template <class Motor>
void chainForward(const StepState& step, const Motor& motor)
{
    const ModelState& m = modelState;
    RunState& r = runState;
    double crankSpeed = radiansPerSecond(step.cadence);
    double wheelSpeed = crankSpeed * step.gearRatio;
    r.pedalingTorque = r.pedalingPower / crankSpeed;
    r.pedalingForce = forceAtLever(r.pedalingTorque, crankLever());
    r.crankPower = (100.0 - m.shellLossPercent * r.pedalingTorque / m.shellLossTorque) * r.pedalingPower / 100.0;
    motor.addAtCrank();
    r.crankTorque = r.crankPower / crankSpeed;
    r.crankForce = forceAtLever(r.crankTorque, chainLever(step.frontTooth));
    r.hubPower = (100.0 - m.missionLossPercent) * r.crankPower / 100.0;
    motor.addAtHub();
    r.hubTorque = r.hubPower / wheelSpeed;
    r.hubForce = forceAtLever(r.hubTorque, chainLever(step.rearTooth));
    r.thrustPower = (100.0 - m.wheelLossPercent * r.hubTorque / m.wheelLossTorque) * r.hubPower / 100.0;
    r.thrustTorque = r.thrustPower / wheelSpeed;
    r.thrustForce = forceAtLever(r.thrustTorque, rearWheelLever());
    motor.finish();
}

} // namespace torvane
