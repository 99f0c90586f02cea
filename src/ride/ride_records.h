// The records of a ride simulation: what it is asked, and one run with what it finds.
// Forces in kgf, powers in W, velocities in m/s, gradients in percent (plus is ascent), torques in Nm.
#pragma once

#include "core/progress.h"
#include "core/result_status.h"
#include "model/brake_heat.h"
#include "model/evaluation.h"
#include "model/model.h"
#include "ride/graph_series.h"
#include "ride/physiology.h"
#include "ride/sample_log.h"

#include <optional>

namespace torvane {

enum ThrustMode : int32_t { thrustByPedaling, thrustByBraking };

// What drives a run over time, and so which power its table shows. A mode that knows neither pedals nor brakes shows
// what the run before it did.
struct Drive {
    int32_t thrustMode;  // ThrustMode: the pedals, or the braking force at the wheel
    int32_t kiloWattLog; // the thrust power column is in kW
};

// The inputs of one simulation. Of the figures that a mode solves or seeks, those as entered.
struct RideInputs {
    int32_t rideMode, rideTarget;
    int32_t powerBaseIndex; // stage that the power refers to
    int32_t wantsGraph;

    double power; // negative: of the brakes
    double force; // negative: of the brakes
    double velocity;
    double startVelocity, endVelocity;
    double sectorTime; // s
    double accele;     // m/s2
    double gravity;    // G
    double distance;   // m
    double inclination;
    int32_t inclinationLimit; // InclinationLimit
    double corneringRadius;   // m
    double safetyMargin;
    double intervalDistance, totalDistance; // m

    double kickTime;                                            // s
    int32_t accelerationIntervalMode, decelerationIntervalMode; // IntervalMode
    double accelerationInterval, decelerationInterval;          // s
    int32_t startGearMode[gearedStartCount], startGearIndex[gearedStartCount];
    BrakeMaterials materials;
    PhysiologyInputs physiology;
    Drive drive;
};

// What a run found. The first figures start as entered: they drive the run, or a seek moves them, until they hold what
// was reached.
struct RideFigures {
    double power, force, velocity;
    double sectorTime; // s
    double accele;     // m/s2, mean
    double distance;   // m
    double corneringRadius;
    double safetyMargin;
    double sectorStartVelocity; // that the run, or its present sector, began with
    Drive drive;

    double meanPower;         // W asked for as a mean
    double requiredPower;     // W at the summit of the power parabola, of a steady ride
    double maxAccele;         // m/s2
    double seekLow, seekHigh; // what the limit messages quote
    double peakPower[stageCount], meanStagePower[stageCount];
    double meanStageTorque[stageCount], meanStageForce[stageCount];
    double assistPeakPower, assistMeanPower, assistMeanTorque, assistMeanForce;

    double airDragQuantity, rollingDragQuantity;                  // J
    double potentialEnergy, startKineticEnergy, endKineticEnergy; // J
};

// One run: the model and the inputs that it was given, where it stands, and what it has found.
struct RideRun {
    const Model& model; // outlives the run
    RideInputs in;
    RideFigures found = {};
    Evaluation now = {}; // of the last step, and of the road
    BrakeHeat heat = {};
    PhysiologyFigures physiology = {}; // of the rider's body, where the run has any
    ResultStatus status = 0;
    SampleLog log = {};                    // rows where the mode has a table and the status is not fatal
    std::optional<GraphSeries> graph = {}; // where one was asked for and the status is not fatal
    Progress* progress = nullptr;          // that its loops move, while it runs
};

} // namespace torvane
