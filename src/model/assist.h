// A motor at the crank or the rear hub: twins of the drivetrain and solver operations that let it carry a share of the
// power, by speed range and up to maxEPower. A ratio is motor power / human power.
// The twins hold for motorLocation above 0; the functions at the end choose by it.
#pragma once

#include "model/drivetrain.h"
#include "model/solver.h"

namespace torvane {

// Ratio in force at a velocity in m/s; 0 above the last range.
double assistRatioAt(double velocity);

// The motor takes its share of the power behind its place (stage 1 crank, 2 hub); sets the power of the stage before it
// to what is left for the rider, and the assist values. loss in percent lies between the two stages. assistForce is the
// share of the stage's force as the evaluation before left it.
void applyAssistShare(double share, double loss, int stage);

// As drivetrainFromThrust. The assist values are 0 too where velocity or thrust power is not above 0.
void assistedDrivetrainFromThrust(double velocity, double thrustPower);
// As stagesFromThrust; the velocity in m/s is for the motor's ratio.
void assistedStagesFromThrust(double velocity, double thrustPower, double wheelSpeed, double crankSpeed);
// Sets the assist values too: the motor's power, and its share of torque and force of its stage.
void assistedDrivetrainFromPedaling(const StepState& step);

// As powerAtVelocity.
Solved assistedPowerAtVelocity(int stage, double velocity);

// As velocityForPower, but statusNoAssistedVelocity (with assistSampleVelocity and assistSamplePower set) where no
// velocity has the power, since the assist falls off at the edge of a range; warnings are not passed on.
Solved assistedVelocityForPower(int stage, double power);

void clearAssist(); // no motor power, torque, force

// The assisted operation when a motor is set, else the plain one.
void driveStagesFromThrust(double velocity, double thrustPower, double wheelSpeed, double crankSpeed);
void driveFromPedaling(const StepState& step);
Solved solvePowerAtVelocity(int stage, double velocity);
Solved solveVelocityForPower(int stage, double power);

} // namespace torvane
