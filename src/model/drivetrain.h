// Power, torque and force along the four stages between pedals and road, in both directions, for a rider without motor.
// The shell loss lies between pedals and chainring, the mission loss between chainring and sprocket, the wheel loss
// between sprocket and road. The two directions are not exact inverses of each other: each takes a loss at the torque
// it already knows. Results in the evaluation; W, Nm, kgf.
#pragma once

#include "model/evaluation.h"
#include "model/model.h"
#include "model/step_state.h"

#include <cstdint>

namespace torvane {

// From the road to the pedals: fills the stages, cadence and the current teeth. The gear is the one nearest to
// cadenceUsual. Where velocity or thrust power is not above 0 every stage and the cadence are 0, in the lowest gear.
void drivetrainFromThrust(const Model& model, Evaluation& evaluation, double velocity, double thrustPower);

// The powers and torques of that alone, at angular velocities of wheel and crank in rad/s that the caller knows.
void stagesFromThrust(const Model& model, Evaluation& evaluation, double thrustPower, double wheelSpeed,
                      double crankSpeed);

// From the pedals to the road: fills the stages from a power at the pedals. Of the step it reads the teeth, the ratio
// and the cadence; with a motor also the velocity.
void drivetrainFromPedaling(const Model& model, Evaluation& evaluation, const StepState& step, double pedalingPower);

// Sets the twelve values of the four stages to 0, as in a time step that shifts. The assist values are clearAssist's.
void clearStages(Evaluation& evaluation);

// Angular velocity in rad/s of a cadence or wheel speed in rpm.
double radiansPerSecond(double rpm);

// Revolutions of the rear wheel per minute at a velocity in m/s.
double wheelRpmAt(const Model& model, double velocity);

// Force in kgf that a torque in Nm takes at a lever in m.
double forceAtLever(double torque, double lever);

// Lever arms in m.
double crankLever(const Model& model);
double chainLever(int32_t teeth);
double rearWheelLever(const Model& model);

// Power in W of one of the four stages.
double stagePower(const Evaluation& evaluation, int stage);

} // namespace torvane
