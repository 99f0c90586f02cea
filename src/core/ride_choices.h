// The choices of the theory calculators and the ride simulations, as choices.h has those of rider and machine. A target
// is stored without its calculator or simulation, so one number is looked up in several lists.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace torvane {

// Theory calculators and what each can be asked for

enum TheoryCalculator : int32_t { calculatorCadence, calculatorPedaling, calculatorGears, calculatorCount };

enum CadenceTarget : int32_t {
    cadenceTargetCadence,
    cadenceTargetPower,
    cadenceTargetSummit, // cadence of the greatest power
    cadenceTargetMaxPower,
    cadenceTargetCount
};
inline constexpr const char* cadenceTargetNames[] = {"cadence", "power", "cadence powered max", "maximum power"};
static_assert(std::size(cadenceTargetNames) == cadenceTargetCount);

enum PedalingTarget : int32_t { pedalingTargetCadence, pedalingTargetPower, pedalingTargetTorque, pedalingTargetCount };
inline constexpr const char* pedalingTargetNames[] = {"cadence", "power", "torque, force"};
static_assert(std::size(pedalingTargetNames) == pedalingTargetCount);

enum GearTarget : int32_t { gearTargetCadence, gearTargetVelocity, gearTargetTeeth, gearTargetCount };
inline constexpr const char* gearTargetNames[] = {"cadence", "velocity", "gear tooth"};
static_assert(std::size(gearTargetNames) == gearTargetCount);

// By TheoryCalculator.
inline constexpr int32_t theoryTargetCounts[] = {cadenceTargetCount, pedalingTargetCount, gearTargetCount};
static_assert(std::size(theoryTargetCounts) == calculatorCount);

constexpr int32_t theoryTargetCount = std::ranges::max(theoryTargetCounts);

enum TorqueOrForce : int32_t { givenTorque, givenForce, torqueOrForceCount };
inline constexpr const char* torqueOrForceNames[] = {"torque", "force"};
static_assert(std::size(torqueOrForceNames) == torqueOrForceCount);

// Ride simulations and their targets, reference factors and patterns

enum RideMode : int32_t {
    ridePowerAndVelocity,
    rideAcceleration,
    rideDeceleration,
    ridePatternBraking,
    rideInclinationAndVelocity,
    rideCriticalCornering,
    rideModeCount
};

enum SteadyTarget : int32_t { steadyTargetPower, steadyTargetVelocity, steadyTargetCount };
inline constexpr const char* steadyTargetNames[] = {"power", "velocity"};
static_assert(std::size(steadyTargetNames) == steadyTargetCount);

enum AccelerationFactor : int32_t {
    accelerationMaxiPower,
    accelerationMeanPower,
    accelerationEndingVelocityMaxi,
    accelerationEndingVelocityMean,
    accelerationSectorTime,
    accelerationDistance,
    accelerationAccele,
    accelerationGravity,
    accelerationConstantPower,
    accelerationFactorCount
};
inline constexpr const char* accelerationFactorNames[] = {"maxi power",  "mean power",  "PEV as maxi",
                                                          "PEV as mean", "sector time", "distance",
                                                          "accele",      "gravity",     "constant power"};
static_assert(std::size(accelerationFactorNames) == accelerationFactorCount);

enum DecelerationFactor : int32_t {
    decelerationMaxiPower,
    decelerationMeanPower,
    decelerationEndingVelocity,
    decelerationSectorTime,
    decelerationDistance,
    decelerationAccele,
    decelerationGravity,
    decelerationConstantPower,
    decelerationFactorCount
};
inline constexpr const char* decelerationFactorNames[] = {"maxi power", "mean power", "PEV as maxi", "sector time",
                                                          "distance",   "accele",     "gravity",     "constant power"};
static_assert(std::size(decelerationFactorNames) == decelerationFactorCount);

enum BrakingPattern : int32_t {
    patternConstantForce,
    patternCriticalFull,
    patternConstantVelocity,
    patternIntermittent,
    brakingPatternCount
};
inline constexpr const char* brakingPatternNames[] = {"constant force braking", "critical full braking",
                                                      "constant velocity braking", "intermittent braking"};
static_assert(std::size(brakingPatternNames) == brakingPatternCount);

enum InclinationTarget : int32_t { inclinationTargetVelocity, inclinationTargetSlope, inclinationTargetCount };
inline constexpr const char* inclinationTargetNames[] = {"final velocity", "inclination"};
static_assert(std::size(inclinationTargetNames) == inclinationTargetCount);

enum CorneringTarget : int32_t {
    corneringTargetVelocity,
    corneringTargetRadius,
    corneringTargetMargin,
    corneringTargetCount
};
inline constexpr const char* corneringTargetNames[] = {"velocity", "line radius", "safty margin"};
static_assert(std::size(corneringTargetNames) == corneringTargetCount);

// By RideMode.
inline constexpr int32_t rideTargetCounts[] = {steadyTargetCount,   accelerationFactorCount, decelerationFactorCount,
                                               brakingPatternCount, inclinationTargetCount,  corneringTargetCount};
static_assert(std::size(rideTargetCounts) == rideModeCount);

constexpr int32_t rideTargetCount = std::ranges::max(rideTargetCounts);

// Inputs of single simulations

// The power stages, from the pedals to the road.
enum Stage : int32_t { stagePedaling, stageCrank, stageHub, stageThrust, stageCount };
inline constexpr const char* stageNames[] = {"pedaling", "crank", "hub", "thrust"};
static_assert(std::size(stageNames) == stageCount);

// The runs that start in a gear.
enum GearedStart : int32_t { startOfAcceleration, startOfDeceleration, gearedStartCount };

enum StartGearMode : int32_t { gearAutomatic, gearSelected, startGearModeCount };
inline constexpr const char* startGearModeNames[] = {"automatic", "select"};
static_assert(std::size(startGearModeNames) == startGearModeCount);

enum InclinationLimit : int32_t { limitNone, limitDistance, limitTime, inclinationLimitCount };
inline constexpr const char* inclinationLimitNames[] = {"none", "distance", "time"};
static_assert(std::size(inclinationLimitNames) == inclinationLimitCount);

enum IntensionCase : int32_t { intensionByTime, intensionByDistance, intensionCaseCount };
inline constexpr const char* intensionCaseNames[] = {"time", "distance"};
static_assert(std::size(intensionCaseNames) == intensionCaseCount);

} // namespace torvane
