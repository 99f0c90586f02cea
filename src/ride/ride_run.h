// The frame of the six ride simulations: copies the inputs of one into the run record, and runs it.
// A simulation computes and answers with a status; reports, tables and the graph window are its caller's business.
#pragma once

#include "core/result_status.h"
#include "ride/graph_series.h"
#include "ride/sample_log.h"

#include <optional>

namespace torvane {

// Order of ParameterBlock::rideMode.
enum RideMode : int {
    ridePowerAndVelocity,
    rideAcceleration,
    rideDeceleration,
    ridePatternBraking,
    rideInclinationAndVelocity,
    rideCriticalCornering,
};

// What a simulation leaves beside runState.
struct RideResult {
    ResultStatus status = 0;
    SampleLog log;                    // rows where the mode has a table and the status is not fatal
    std::optional<GraphSeries> graph; // where one was asked for and the status is not fatal
};

// Copies the inputs of workingBlock.rideMode and what all modes share into runState, and splits the weight and sets
// rolling and grip for the inclination without thrust.
void prepareRideRun();

// Runs the simulation that workingBlock.rideMode and rideTarget name, prepareRideRun having run. Leaves results in
// runState and modelState, and the figures of the rider's body in `physiology` where the run has any. Where one of them
// is no number, the status has statusNotConverged.
void runRide(RideResult& result);

} // namespace torvane
