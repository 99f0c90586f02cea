// From the pedals to the road so that the way back gives the same power again. The chain of a time step (drivetrain.h)
// takes each loss at the torque on the rider's side and so differs a little; a ride that is predicted and then analysed
// may not.
#pragma once

#include "model/evaluation.h"
#include "model/model.h"

namespace torvane {

// Thrust power in W that driveStagesFromThrust turns into this power in W at a stage, at a velocity in m/s and a
// cadence in rpm, motor included; fills the stages as it does. Right to 1e-12 of the power, or as far as numbers go. 0
// without power, velocity or cadence.
double thrustForStage(const Model& model, Evaluation& evaluation, int stage, double power, double velocity,
                      double cadence);

} // namespace torvane
