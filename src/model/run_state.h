// The one record of a run: its inputs, copied out of the parameter block, and the working results that solvers,
// simulations and reports share. Global, overwritten by each command.
// Forces in kgf, powers in W, velocities in m/s, gradients in percent (plus is ascent), torques in Nm.
#pragma once

#include <cstdint>

namespace torvane {

// The power stages, from the pedals to the road.
enum Stage : int { stagePedaling, stageCrank, stageHub, stageThrust, stageCount };

struct RunState {
    // Conditions
    double headWind;         // m/s, + head, - tail
    double airPressureRatio; // against 1013.25 hPa
    double airTemperature;   // Cel, along a recorded ride
    double inclination;      // %
    double reachVelocity;    // m/s, last row of the gear table at cadencePoweredMax

    // Reference values of the run
    double cadence; // rpm, of the present solution
    double power;   // W; negative in a braking run
    double torque;  // Nm
    double force;   // kgf; negative for a braking force
    double velocity;
    int32_t powerBaseIndex; // stage that the result refers to

    // The four stages of the present evaluation
    double pedalingPower, pedalingTorque, pedalingForce;
    double crankPower, crankTorque, crankForce;
    double hubPower, hubTorque, hubForce;
    double thrustPower, thrustTorque, thrustForce;

    // Electric assist of the present evaluation
    double assistPower, assistTorque, assistForce;
    double assistSampleVelocity[2]; // kph, around the edge of the assist ranges, where no velocity was found
    double assistSamplePower[2];    // W, pedaling power at those two

    // Resistances of the present velocity
    double shellDrag, humanDrag, wheelDrag; // kgf
    double airDrag;                         // kgf, their sum
    double shellDragPower, humanDragPower, wheelDragPower;
    double airDragPower;
    double rollingLoad, slopeLoad; // kgf
    double totalLoad;              // kgf, rolling, air and slope
    double rollingPower, slopePower;

    // Theory calculators
    double cadenceMax; // rpm, summit of the power parabola
    double maxPower;   // W, power at that summit
    int32_t frontTooth, rearTooth;
    double gearRatio;
    double expectedRatio; // ratio that velocity and cadence ask for
    int32_t torqueOrForce;
    int32_t useMissionProfile;

    // Inputs and results of a simulation over time
    double meanPower; // W asked for as a mean
    double startVelocity, endVelocity;
    double sectorTime;                                          // s
    double accele;                                              // m/s2, mean
    double gravity;                                             // G
    double distance;                                            // m
    double kickTime;                                            // s
    int32_t accelerationIntervalMode, decelerationIntervalMode; // 0 auto, 1 input
    double accelerationInterval, decelerationInterval;          // s
    int32_t startGearMode[2], startGearIndex[2];                // acceleration, deceleration
    int32_t inclinationLimit;                                   // 0 none, 1 distance, 2 time
    double corneringRadius;                                     // m
    double safetyMargin;
    double intervalDistance, totalDistance;                   // m
    int32_t thrustMode;                                       // 0 driven by pedaling, 1 by braking force at the wheel
    int32_t kiloWattLog;                                      // the thrust power column is in kW
    double maxAccele;                                         // m/s2
    double seekLow, seekHigh;                                 // what the limit messages quote
    double peakPower[stageCount], meanStagePower[stageCount]; // peakPower[0] doubles as required power in modes 0 and 5
    double meanStageTorque[stageCount], meanStageForce[stageCount];
    double assistPeakPower, assistMeanPower, assistMeanTorque, assistMeanForce;

    // Brake heat
    double specificHeat[3], emittance[3];                         // carbon, aluminum, stainless
    double airDragQuantity, rollingDragQuantity;                  // J
    double potentialEnergy, startKineticEnergy, endKineticEnergy; // J

    // Physiology
    int32_t useFtp;
    double energyEfficiency;
    int32_t intensionCase; // 0 time, 1 distance
    int32_t intensionFirst[2], intensionSecond[2];
};

extern RunState runState;

} // namespace torvane
