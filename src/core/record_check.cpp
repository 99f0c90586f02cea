#include "core/record_check.h"

#include "core/fit_choices.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace torvane {

namespace {

constexpr int mostGears =
    std::extent_v<decltype(ParameterBlock::chainring)> * std::extent_v<decltype(ParameterBlock::sprocket)>;

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

// An index into a list of so many entries.
template <typename T>
bool isChoice(const T& value, int count)
{
    return within(value, 0, count - 1);
}

template <typename Record>
bool soundChoices(const Record& r)
{
    return isChoice(r.position, positionCount) && isChoice(r.wear, wearCount) && isChoice(r.helmet, helmetCount) &&
           isChoice(r.shellType, shellTypeCount) && soundTeeth(r.chainring, r.chainringCount) &&
           soundTeeth(r.sprocket, r.sprocketCount) && isChoice(r.predictWheel, wheelCount) &&
           isChoice(r.brakeType, brakeTypeCount) && isChoice(r.brakeMaterial, brakeMaterialCount) &&
           isChoice(r.motorLocation, motorLocationCount) && isChoice(r.assistRangeMode, rangeModeCount) &&
           isChoice(r.airPressureSource, pressureSourceCount) && isChoice(r.roadSurface, roadSurfaceCount) &&
           isChoice(r.pelotonMode, pelotonModeCount) && isChoice(r.rotateTop, topOfTrainCount);
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
    return isChoice(b.accelerationIntervalMode, intervalModeCount) &&
           isChoice(b.decelerationIntervalMode, intervalModeCount) &&
           isChoice(b.initialValueMode, initialValueModeCount) &&
           allFinite(b.energyEfficiency, b.accelerationInterval, b.decelerationInterval, b.specificHeat, b.emittance,
                     b.thresholdSpeed, b.thresholdPower);
}

// A target is kept without the calculator or simulation that it belongs to: it is good up to the longest of their
// lists, and a form takes one that its own list does not have as the first.
bool soundTheory(const ParameterBlock& b)
{
    return isChoice(b.theoryCalculator, calculatorCount) && isChoice(b.theoryTarget, theoryTargetCount) &&
           isChoice(b.torqueOrForce, torqueOrForceCount) &&
           allFinite(b.theoryCadence, b.theoryPower, b.theoryTorque, b.theoryForce, b.theoryCadenceMax,
                     b.theoryMaxPower, b.theoryVelocity, b.theoryInclination);
}

bool soundRide(const ParameterBlock& b)
{
    return isChoice(b.rideMode, rideModeCount) && isChoice(b.rideTarget, rideTargetCount) &&
           isChoice(b.ridePowerBase, stageCount) && isChoice(b.startGearMode, startGearModeCount) &&
           isChoice(b.startGearIndex, mostGears) && isChoice(b.inclinationLimit, inclinationLimitCount) &&
           isChoice(b.intensionCase, intensionCaseCount) &&
           allFinite(b.rideVelocity, b.ridePower, b.rideForce, b.rideStartVelocity, b.rideEndVelocity, b.rideLegTime,
                     b.rideAccele, b.rideGravity, b.rideDistance, b.rideInclination, b.brakingInclination) &&
           allFinite(b.intervalDistance, b.totalDistance, b.initialKickTime, b.corneringRadius, b.safetyMargin);
}

bool soundOutput(const OutputChoice& output)
{
    return isChoice(output.fitFormat, headerFormCount) && isChoice(output.sportIndex, sportCount);
}

bool soundGps(const ParameterBlock& b)
{
    return isChoice(b.analysePowerBase, stageCount) && soundOutput(b.createOutput) && soundOutput(b.combineOutput) &&
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
    settle(state.bikeInertialWeight, state.totalWeight, state.inertialWeight, state.wheelsWeight, state.rimDiameter,
           state.tyresWeight, state.frontWeightRatio, state.rearWeightRatio, state.effectiveRolling,
           state.effectiveFriction, state.frontFrictionShare, state.rearFrictionShare, state.frontCircumference,
           state.rearCircumference, state.brakeSurfaceArea, state.brakeHeat, state.brakeRadiated,
           state.brakeTemperature);
    if (!within(state.gearCount, 0, mostGears))
        state.gearCount = 0;
}

} // namespace torvane
