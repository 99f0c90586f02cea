#include "core/record_check.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace torvane {

namespace {

template <typename T>
bool finite(const T& value)
{
    if constexpr (std::is_array_v<T>) {
        for (const auto& element : value)
            if (!finite(element))
                return false;
        return true;
    } else {
        return std::isfinite(value);
    }
}

template <typename... T>
bool allFinite(const T&... values)
{
    return (finite(values) && ...);
}

void settleValue(double& value)
{
    if (!std::isfinite(value))
        value = 0;
}

void settleValue(double (&pair)[2])
{
    settleValue(pair[0]);
    settleValue(pair[1]);
}

template <typename... T>
void settle(T&... values)
{
    (settleValue(values), ...);
}

template <typename T>
bool within(const T& value, int least, int most)
{
    if constexpr (std::is_array_v<T>) {
        for (const auto& element : value)
            if (!within(element, least, most))
                return false;
        return true;
    } else {
        return value >= least && value <= most;
    }
}

// A place behind the count may hold anything: the shift page does not look at it either.
template <size_t places>
bool soundTeeth(const int32_t (&teeth)[places], int32_t count)
{
    constexpr int mostTeeth = 1000;
    return within(count, 1, static_cast<int>(places)) &&
           std::all_of(teeth, teeth + count, [](int32_t each) { return within(each, 1, mostTeeth); });
}

template <typename Record>
bool soundChoices(const Record& r)
{
    return within(r.position, 0, 5) && within(r.wear, 0, 4) && within(r.helmet, 0, 2) && within(r.shellType, 0, 1) &&
           soundTeeth(r.chainring, r.chainringCount) && soundTeeth(r.sprocket, r.sprocketCount) &&
           within(r.predictWheel, 0, 1) && within(r.brakeType, 0, 1) && within(r.brakeMaterial, 0, 2) &&
           within(r.motorLocation, 0, 2) && within(r.assistRangeMode, 0, 2) && within(r.airPressureSource, 0, 1) &&
           within(r.roadSurface, 0, 2) && within(r.pelotonMode, 0, 1) && within(r.rotateTop, 0, 1);
}

template <typename Record>
bool soundFigures(const Record& r)
{
    return allFinite(r.humanHeight, r.humanWeight, r.torsoAngle, r.cadenceUsual, r.cadencePoweredMax, r.cadenceShiftUp,
                     r.cadenceShiftDown, r.ftp, r.bikeWeight, r.bikeWeightExceptWheels, r.shellAeroRatio,
                     r.shiftTimeLoss, r.crankLength) &&
           allFinite(r.wheelWeight, r.wheelResist, r.wheelResistVelocity, r.tyreSize, r.tyreWeight,
                     r.rollingCoefficient, r.frictionCoefficient, r.brakeWeight, r.brakeSurfaceSize) &&
           allFinite(r.shellLossPercent, r.shellLossTorque, r.missionLossPercent, r.wheelLossPercent, r.wheelLossTorque,
                     r.maxEPower, r.assistRangeSpeed, r.assistRangeRatio) &&
           allFinite(r.windSpeed, r.altitude, r.temperature, r.hectoPascal, r.pelotonRatio, r.pelotonVelocity);
}

bool soundPreferences(const ParameterBlock& b)
{
    return within(b.accelerationIntervalMode, 0, 1) && within(b.decelerationIntervalMode, 0, 1) &&
           within(b.initialValueMode, 0, 1) &&
           allFinite(b.energyEfficiency, b.accelerationInterval, b.decelerationInterval, b.specificHeat, b.emittance,
                     b.thresholdSpeed, b.thresholdPower);
}

// A target is kept without the calculator or simulation that it belongs to: it is good up to the longest of their
// lists, and a form takes one that its own list does not have as the first.
constexpr int lastTheoryTarget = 3; // of the cadence theory
constexpr int lastRideTarget = 8;   // of the acceleration

bool soundTheory(const ParameterBlock& b)
{
    return within(b.theoryCalculator, 0, theoryCount - 1) && within(b.theoryTarget, 0, lastTheoryTarget) &&
           within(b.torqueOrForce, 0, 1) &&
           allFinite(b.theoryCadence, b.theoryPower, b.theoryTorque, b.theoryForce, b.theoryCadenceMax,
                     b.theoryMaxPower, b.theoryVelocity, b.theoryInclination);
}

bool soundRide(const ParameterBlock& b)
{
    constexpr int lastGear = 44;
    return within(b.rideMode, 0, rideModeCount - 1) && within(b.rideTarget, 0, lastRideTarget) &&
           within(b.ridePowerBase, 0, 3) && within(b.startGearMode, 0, 1) && within(b.startGearIndex, 0, lastGear) &&
           within(b.inclinationLimit, 0, 2) && within(b.intensionCase, 0, 1) &&
           allFinite(b.rideVelocity, b.ridePower, b.rideForce, b.rideStartVelocity, b.rideEndVelocity, b.rideLegTime,
                     b.rideAccele, b.rideGravity, b.rideDistance, b.rideInclination, b.brakingInclination) &&
           allFinite(b.intervalDistance, b.totalDistance, b.initialKickTime, b.corneringRadius, b.safetyMargin);
}

bool soundOutput(const OutputChoice& output)
{
    constexpr int lastSport = 8;
    return within(output.fitFormat, 0, 1) && within(output.sportIndex, 0, lastSport);
}

bool soundGps(const ParameterBlock& b)
{
    return within(b.analysePowerBase, 0, 3) && soundOutput(b.createOutput) && soundOutput(b.combineOutput) &&
           soundOutput(b.convertOutput) && soundOutput(b.addOutput) && soundOutput(b.divideOutput) &&
           soundOutput(b.excludeOutput) && soundOutput(b.timestampOutput) &&
           allFinite(b.expressUnrealInclination, b.expressUnrealAccele, b.analyseUnrealInclination,
                     b.analyseUnrealAccele, b.analyseWindSpeed, b.averageTemperature);
}

} // namespace

bool isSound(const ParameterBlock& block)
{
    bool nameEnds = std::memchr(block.profileFileName, 0, sizeof block.profileFileName) != nullptr;
    return nameEnds && soundChoices(block) && soundFigures(block) && soundPreferences(block) && soundTheory(block) &&
           soundRide(block) && soundGps(block);
}

bool isSound(const ModelState& state)
{
    return soundChoices(state) && soundFigures(state);
}

void settleLeftovers(ModelState& state)
{
    constexpr int mostGears = 45;
    settle(state.bikeInertialWeight, state.totalWeight, state.inertialWeight, state.wheelsWeight, state.rimDiameter,
           state.tyresWeight, state.frontWeightRatio, state.rearWeightRatio, state.effectiveRolling,
           state.effectiveFriction, state.frontFrictionShare, state.rearFrictionShare, state.frontCircumference,
           state.rearCircumference, state.brakeSurfaceArea, state.brakeHeat, state.brakeRadiated,
           state.brakeTemperature);
    if (!within(state.gearCount, 0, mostGears))
        state.gearCount = 0;
}

} // namespace torvane
