// From power to velocity, by search: the model itself runs from velocity to power only.
// All solvers set the loads for the inclination of the evaluation; weight split and effectiveRolling are the caller's
// (updateLoadAndGrip). These are the unassisted solvers; assist.h has their twins and the functions that choose.
#pragma once

#include "model/resistance.h"

namespace torvane {

// 0 within 1 percent of wanted, statusLooseTolerance within 5, statusBeyondTolerance further off. Around a wanted 0 the
// bounds are 0.1 and 0.5. A negative wanted is always statusBeyondTolerance.
ResultStatus toleranceClass(double value, double wanted);

// Power in W at the summit of the parabola through this power at this cadence; the summit lies at cadenceMax (rpm).
// 0 for cadence 0.
double requiredPower(double power, double cadence, double cadenceMax);

// Power in W of a stage at a velocity in m/s; fills resistances and stages. For the thrust stage it is the
// required power with its sign, also where the stages stand at 0. Status 0 or statusOverReach.
Solved powerAtVelocity(const Model& model, Evaluation& evaluation, int stage, double velocity);

// Velocity in m/s at which a stage carries a power in W; never below 0. Status: statusNotConverged,
// statusTooShortPower, statusBeyondTolerance, statusLooseTolerance, statusOverReach or 0.
Solved velocityForPower(const Model& model, Evaluation& evaluation, int stage, double power);

// As velocityForPower at the pedals, but a velocity below 0 stays, and the search takes other steps.
Solved velocityFromPedaling(const Model& model, Evaluation& evaluation, double power);

} // namespace torvane
