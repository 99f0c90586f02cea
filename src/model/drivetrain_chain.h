// The chain of stages itself, written once for riders with and without a motor. Internal to the model: callers use
// drivetrain.h and assist.h. Motor is told where the chain passes its two possible places.
#pragma once

#include "model/constants.h"
#include "model/drivetrain.h"
#include "model/gear_table.h"

namespace torvane {

// The rider alone.
struct NoMotor {
    void rest() const {}
    void shareAtHub() const {}
    void shareAtCrank(const auto&) const {}
    void addAtCrank() const {}
    void addAtHub() const {}
    void finish() const {}
};

// Powers and torques from the road to the pedals; angular velocities in rad/s.
// The motor's share falls between the stages, so that what lies before it holds the rider's part alone.
// Stages: an evaluation, or these fields alone of several at once.
template <class Stages, class Number, class Motor>
void stagesBack(const ModelState& m, Stages& e, Number thrustPower, Number wheelSpeed, Number crankSpeed,
                const Motor& motor)
{
    e.thrustPower = thrustPower;
    e.thrustTorque = thrustPower / wheelSpeed;
    e.hubPower = thrustPower * 100.0 / (100.0 - m.wheelLossPercent * e.thrustTorque / m.wheelLossTorque);
    e.hubTorque = e.hubPower / wheelSpeed;
    e.crankPower = e.hubPower * 100.0 / (100.0 - m.missionLossPercent);
    motor.shareAtHub();
    e.crankTorque = e.crankPower / crankSpeed;
    Number shellLoss = m.shellLossPercent * e.crankTorque / m.shellLossTorque;
    e.pedalingPower = e.crankPower * 100.0 / (100.0 - shellLoss);
    motor.shareAtCrank(shellLoss);
    e.pedalingTorque = e.pedalingPower / crankSpeed;
}

template <class Motor>
void chainBack(const Model& model, Evaluation& e, double velocity, double thrustPower, const Motor& motor)
{
    const ModelState& m = model.state;
    if (!(velocity > 0.0) || !(thrustPower > 0.0)) {
        clearStages(e);
        motor.rest();
        e.cadence = 0.0;
        e.currentFrontTooth = frontToothOf(model, 0);
        e.currentRearTooth = rearToothOf(model, 0);
        return;
    }
    int gear = usualGear(model, velocity);
    e.currentFrontTooth = frontToothOf(model, gear);
    e.currentRearTooth = rearToothOf(model, gear);
    double wheelRpm = wheelRpmAt(model, velocity);
    e.cadence = wheelRpm / (static_cast<double>(e.currentFrontTooth) / e.currentRearTooth);
    stagesBack(m, e, thrustPower, radiansPerSecond(wheelRpm), radiansPerSecond(e.cadence), motor);
    e.pedalingForce = forceAtLever(e.pedalingTorque, crankLever(model));
    e.crankForce = forceAtLever(e.crankTorque, chainLever(e.currentFrontTooth));
    e.hubForce = forceAtLever(e.hubTorque, chainLever(e.currentRearTooth));
    e.thrustForce = forceAtLever(e.thrustTorque, rearWheelLever(model));
}

template <class Motor>
void chainForward(const Model& model, Evaluation& e, const StepState& step, double pedalingPower, const Motor& motor)
{
    const ModelState& m = model.state;
    double crankSpeed = radiansPerSecond(step.cadence);
    double wheelSpeed = crankSpeed * step.gearRatio;
    e.pedalingPower = pedalingPower;
    e.pedalingTorque = e.pedalingPower / crankSpeed;
    e.pedalingForce = forceAtLever(e.pedalingTorque, crankLever(model));
    e.crankPower = (100.0 - m.shellLossPercent * e.pedalingTorque / m.shellLossTorque) * e.pedalingPower / 100.0;
    motor.addAtCrank();
    e.crankTorque = e.crankPower / crankSpeed;
    e.crankForce = forceAtLever(e.crankTorque, chainLever(step.frontTooth));
    e.hubPower = (100.0 - m.missionLossPercent) * e.crankPower / 100.0;
    motor.addAtHub();
    e.hubTorque = e.hubPower / wheelSpeed;
    e.hubForce = forceAtLever(e.hubTorque, chainLever(step.rearTooth));
    e.thrustPower = (100.0 - m.wheelLossPercent * e.hubTorque / m.wheelLossTorque) * e.hubPower / 100.0;
    e.thrustTorque = e.thrustPower / wheelSpeed;
    e.thrustForce = forceAtLever(e.thrustTorque, rearWheelLever(model));
    motor.finish();
}

} // namespace torvane
