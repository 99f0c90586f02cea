// One evaluation of the model: the road and air that it is for, and all that follows from them at one velocity. Whoever
// evaluates owns the record; each operation says what it reads and fills.
// Forces in kgf, powers in W, velocities in m/s, gradients in percent (plus is ascent), torques in Nm.
#pragma once

#include "core/ride_choices.h"
#include "model/physics.h"

#include <cstdint>

namespace torvane {

// Sine and cosine of a gradient, kept beside it.
struct Slope {
    double inclination = 0.0;
    double sine = 0.0, cosine = 1.0;
};

struct Evaluation {
    // Conditions, set by the caller
    Physics physics;
    double headWind;    // m/s, + head, - tail
    double airRatio;    // how much air there is against the drag's reference: setAir
    double inclination; // %

    // Weight and grip: updateLoadAndGrip
    double frontWeightRatio; // share of the weight on the front wheel
    double rearWeightRatio;
    double effectiveRolling;  // rolling coefficient in force
    double effectiveFriction; // friction coefficient in force
    double frontFrictionShare;
    double rearFrictionShare;

    // Loads on the inclination: setLoads
    double rollingLoad, slopeLoad; // kgf

    // Resistances of the velocity: resistanceAtVelocity
    double shellDrag, humanDrag, wheelDrag; // kgf
    double airDrag;                         // kgf, their sum
    double shellDragPower, humanDragPower, wheelDragPower;
    double airDragPower;
    double totalLoad; // kgf, rolling, air and slope
    double rollingPower, slopePower;

    // The four stages, and the gear that they are for: drivetrain.h
    double cadence; // rpm
    int32_t currentFrontTooth, currentRearTooth;
    double pedalingPower, pedalingTorque, pedalingForce;
    double crankPower, crankTorque, crankForce;
    double hubPower, hubTorque, hubForce;
    double thrustPower, thrustTorque, thrustForce;

    // Electric assist: assist.h
    double assistPower, assistTorque, assistForce;
    double assistSampleVelocity[2]; // kph, around the edge of the assist ranges, where no velocity was found
    double assistSamplePower[2];    // W, pedaling power at those two

    Slope slope; // of the inclination that was asked last
};

} // namespace torvane
