// The three calculators on cadence, power, torque and gear without a road, and what their figures mean on the present
// road. Pedaling power over cadence is a parabola with its summit maxPower at cadenceMax:
//     power = maxPower x cadence x (2 x cadenceMax - cadence) / cadenceMax^2
#pragma once

#include "core/result_status.h"
#include "model/evaluation.h"
#include "model/model.h"

namespace torvane {

// One calculation: the figures as entered, of which the target's is found, and then those of the road.
struct Theory {
    int32_t calculator, target; // TheoryCalculator, and of its targets
    double cadence;             // rpm
    double power;               // W
    double torque;              // Nm
    double force;               // kgf
    double velocity;
    double cadenceMax; // rpm, summit of the power parabola
    double maxPower;   // W, power at that summit
    int32_t frontTooth, rearTooth;
    double gearRatio;
    double expectedRatio;  // ratio that velocity and cadence ask for
    double askedCadence;   // rpm, as entered; `cadence` moves on to the gear found
    int32_t torqueOrForce; // TorqueOrForce
    int32_t useMissionProfile;
    Evaluation road; // with its conditions
};

// The calculation that a block asks for, of the model's conditions. Call the operations in this order.
Theory theorySetUp(const Model& model, const ParameterBlock& in);

// Solves the target. Status: statusIllegalValue for a power above maxPower (nothing changes), statusZeroValue where an
// input that is divided by is 0 or so near to it that a result would be no number (results become 0), or where no
// maximal power answers (it alone becomes 0), else 0.
ResultStatus theoryCalculate(const Model& model, Theory& theory);

// Puts the result on the road; only after theoryCalculate returned 0. Status: bits of the solvers, all shifted left by
// four when one of them is fatal, or statusZeroValue as above.
ResultStatus theoryVerify(const Model& model, Theory& theory);

} // namespace torvane
