// The frame of the six ride simulations: takes the inputs of one, and runs it.
// A simulation computes and answers with a status; reports, tables and the graph window are its caller's business.
#pragma once

#include "ride/ride_records.h"

namespace torvane {

// The inputs of block.rideMode and what all modes share.
RideInputs takeRideInputs(const ParameterBlock& block, const Drive& lastDrive);

// A run with nothing done yet: the figures as entered, and the weight, rolling and grip of the road without thrust.
RideRun prepareRideRun(const Model& model, const RideInputs& in);

// Runs the simulation that the inputs' mode and target name. Where a figure that it leaves is no number, the status has
// statusNotConverged. Moves the progress, where somebody looks.
RideRun runRide(const Model& model, const RideInputs& in, Progress* progress = nullptr);

} // namespace torvane
