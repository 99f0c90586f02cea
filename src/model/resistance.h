// Air, rolling and gradient resistance at one velocity, and how the weight lies on the wheels.
// An empirical drag model around a body surface formula: the numbers are the model. Works in the evaluation that the
// caller owns; nothing here can fail or allocate.
#pragma once

#include "core/result_status.h"
#include "model/evaluation.h"
#include "model/model.h"

namespace torvane {

// A number with the status of the operation that found it.
struct Solved {
    double value;
    ResultStatus status;
};

// Fills build, peloton and dragFactor from the rest of the model. Part of rebuildModel.
void keepDragFactors(Model& model);

// Weight split, rolling and grip at the inclination of the evaluation. A negative thrust (kgf) is a braking force.
void updateLoadAndGrip(const Model& model, Evaluation& evaluation, double thrustForce);

// At least 1: a tyre narrow for its load rolls worse, a wide one gains nothing.
double tyreLoadFactor(const Model& model, const Evaluation& evaluation);

// Sets airRatio for a pressure in hPa and a temperature in Cel, as the evaluation's physics take them.
void setAir(Evaluation& evaluation, double pressure, double temperature);

// Sets slopeLoad and rollingLoad for the inclination. updateLoadAndGrip must have set effectiveRolling.
void setLoads(const Model& model, Evaluation& evaluation);

// Air drag in a train of riders against riding alone, 0 to 1; the velocity is relative to the air.
double pelotonRatioAt(const Model& model, double airVelocity);

// Thrust power in W that holds a velocity; negative where the road pushes. Fills the drags, totalLoad and the powers of
// air, tyres and slope. Reads wind, air, rollingLoad and slopeLoad as they stand: setLoads must have run.
// Status: 0, or statusOverReach above reachVelocity.
Solved resistanceAtVelocity(const Model& model, Evaluation& evaluation, double velocity);

} // namespace torvane
