// The three calculators on cadence, power, torque and gear without a road, and what their figures mean on the present
// road. Pedaling power over cadence is a parabola with its summit maxPower at cadenceMax:
//     power = maxPower x cadence x (2 x cadenceMax - cadence) / cadenceMax^2
// Inputs come from workingBlock at theoryCalculator, results stand in runState. Call in this order.
#pragma once

#include "core/result_status.h"

namespace torvane {

// Copies inputs and conditions into runState.
void theorySetUp();

// Solves theoryTarget. Status: statusIllegalValue for a power above maxPower (nothing changes), statusZeroValue where
// an input that is divided by is 0 or so near to it that a result would be no number (results become 0), or where no
// maximal power answers (it alone becomes 0), else 0.
ResultStatus theoryCalculate();

// Puts the result on the road; only after theoryCalculate returned 0. Status: bits of the solvers, all shifted left by
// four when one of them is fatal, or statusZeroValue as above.
ResultStatus theoryVerify();

} // namespace torvane
