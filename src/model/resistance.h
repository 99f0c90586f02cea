// Air, rolling and gradient resistance at one velocity, and how the weight lies on the wheels.
// Forces in kgf, powers in W, velocities in m/s, gradients in %. An empirical drag model around a body surface formula:
// the numbers are the model. Reads modelState and the conditions in runState; nothing here can fail or allocate.
#pragma once

#include "core/result_status.h"

#include <cstdint>

namespace torvane {

// A number with the status of the operation that found it.
struct Solved {
    double value;
    ResultStatus status;
};

// Sets frontWeightRatio and rearWeightRatio. A negative thrust is a braking force: it moves weight to the front.
void splitWeight(double inclination, double thrustForce);

// Sets effectiveFriction and the friction shares of the tyres from the weight ratios. bpn is the British pendulum
// number.
void updateGrip(int32_t bpn, int32_t roadSurface);

// Weight split, effectiveRolling and grip at the present inclination.
void updateLoadAndGrip(double thrustForce);

// At least 1: a tyre narrow for its load rolls worse, a wide one gains nothing.
double tyreLoadFactor();

// Sets slopeLoad and rollingLoad for the present inclination. updateLoadAndGrip must have set effectiveRolling.
void setLoads();

// Air drag in a train of riders against riding alone, 0 to 1; the velocity is relative to the air.
double pelotonRatioAt(double airVelocity);

// Factor of torso angle and clothing on the drag of the body.
double postureFactor();

// Air drag of both wheels, kgf.
double wheelDragAt(double velocity, double wind);

// Sets shellDrag, humanDrag, wheelDrag for a velocity against a head wind.
void dragForces(double velocity, double wind);

// Thrust power in W that holds a velocity; negative where the road pushes. Fills the drags, totalLoad and the powers of
// runState. Reads rollingLoad and slopeLoad as they stand: setLoads must have run.
// Status: 0, or statusOverReach above reachVelocity.
Solved resistanceAtVelocity(double velocity);

} // namespace torvane
