// A motor at the crank or the rear hub: twins of the drivetrain and solver operations that let it carry a share of the
// power, by speed range and up to maxEPower. A ratio is motor power / human power.
// The twins hold for a motor; the functions at the end choose by it.
#pragma once

#include "model/drivetrain.h"
#include "model/solver.h"

namespace torvane {

// Ratio in force at a velocity in m/s; 0 above the last range.
double assistRatioAt(const Model& model, double velocity);

// As drivetrainFromThrust. The assist values are 0 too where velocity or thrust power is not above 0.
void assistedDrivetrainFromThrust(const Model& model, Evaluation& evaluation, double velocity, double thrustPower);
// As stagesFromThrust; the velocity in m/s is for the motor's ratio.
void assistedStagesFromThrust(const Model& model, Evaluation& evaluation, double velocity, double thrustPower,
                              double wheelSpeed, double crankSpeed);
// Sets the assist values too: the motor's power, and its share of torque and force of its stage.
void assistedDrivetrainFromPedaling(const Model& model, Evaluation& evaluation, const StepState& step,
                                    double pedalingPower);

// As powerAtVelocity.
Solved assistedPowerAtVelocity(const Model& model, Evaluation& evaluation, int stage, double velocity);

// As velocityForPower, but statusNoAssistedVelocity (with assistSampleVelocity and assistSamplePower set) where no
// velocity has the power, since the assist falls off at the edge of a range; warnings are not passed on.
Solved assistedVelocityForPower(const Model& model, Evaluation& evaluation, int stage, double power);

void clearAssist(Evaluation& evaluation); // no motor power, torque, force

// The assisted operation when a motor is set, else the plain one.
void driveStagesFromThrust(const Model& model, Evaluation& evaluation, double velocity, double thrustPower,
                           double wheelSpeed, double crankSpeed);
void driveFromPedaling(const Model& model, Evaluation& evaluation, const StepState& step, double pedalingPower);
Solved solvePowerAtVelocity(const Model& model, Evaluation& evaluation, int stage, double velocity);
Solved solveVelocityForPower(const Model& model, Evaluation& evaluation, int stage, double power);

} // namespace torvane
