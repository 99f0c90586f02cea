// The values that a first start, or a parameter file that cannot be used, gives.
#include "core/fit_choices.h"
#include "core/parameter_block.h"
#include "core/units.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace torvane {

namespace {

template <typename T, size_t count>
void fill(T (&target)[count], const T (&values)[count])
{
    std::copy(std::begin(values), std::end(values), target);
}

void setRiderDefaults(ParameterBlock& block)
{
    block.humanHeight = 178;
    block.humanWeight = 60;
    block.position = positionDrop;
    block.torsoAngle = 30;
    block.cadenceUsual = 90;
    block.cadencePoweredMax = 120;
    block.cadenceShiftUp = 110;
    block.cadenceShiftDown = 85;
    block.ftp = 270;
    block.wear = wearBikeSummer;
    block.helmet = helmetNormal;
}

void setMachineDefaults(ParameterBlock& block)
{
    block.exceptWheels = 1;
    block.bikeWeight = 8.0;
    block.bikeWeightExceptWheels = 5.8;
    block.shellAeroRatio = 0.7;
    block.shiftTimeLoss = 0.35;
    block.crankLength = 172.5;
    block.chainringCount = 2;
    block.sprocketCount = 11;
    fill(block.chainring, {51, 42, 33});
    fill(block.sprocket, {11, 12, 13, 14, 15, 17, 19, 21, 23, 25, 27, 29, 31, 33, 35});
    fill(block.wheelWeight, {500.0, 700.0});
    fill(block.wheelSize, {28, 28});
    fill(block.wheelResist, {20.0, 12.0});
    fill(block.wheelResistVelocity, {50.0, 50.0});
    fill(block.rimDepth, {50, 50});
    fill(block.spokeCount, {16, 24});
    fill(block.modelYear, {2011, 2011});
    fill(block.tyreSize, {20.0, 23.0});
    fill(block.tyreWeight, {180.0, 210.0});
    fill(block.rollingCoefficient, {0.004, 0.003});
    fill(block.frictionCoefficient, {0.85, 0.75});
    std::ranges::fill(block.brakeMaterial[brakeDisc], materialStainless);
    fill(block.brakeWeight[brakeRim], {350.0, 350.0});
    fill(block.brakeWeight[brakeDisc], {100.0, 100.0});
    fill(block.brakeSurfaceSize[brakeRim], {50.0, 50.0});
    fill(block.brakeSurfaceSize[brakeDisc], {160.0, 160.0});
    block.shellLossPercent = 3;
    block.shellLossTorque = 50;
    block.missionLossPercent = 3;
    block.wheelLossPercent = 3;
    block.wheelLossTorque = 20;
    block.maxEPower = 250;
    fill(block.assistRangeSpeed, {25.0, 32.0, 45.0});
    fill(block.assistRangeRatio, {2.0, 1.5, 1.0});
}

void setConditionDefaults(ParameterBlock& block)
{
    block.altitude = 50;
    block.temperature = 20;
    block.hectoPascal = 1013.25;
    block.bpn = 75;
    block.pelotonRatio = 1.0;
    block.pelotonVelocity = 40;
    block.pelotonNumber = 10;
    block.wheelDistance = 30;
    block.rotateTop = topRotates;
}

void setPreferenceDefaults(ParameterBlock& block)
{
    block.energyEfficiency = 0.2;
    block.accelerationInterval = 0.01;
    block.decelerationInterval = 0.01;
    fill(block.specificHeat, {0.91, 0.917, 0.499});
    fill(block.emittance, {0.9, 0.2, 0.1});
    block.expressGraph = 1;
    block.thresholdSpeed = 5;
    block.thresholdPower = 1000;
}

void setTheoryDefaults(ParameterBlock& block)
{
    fill(block.theoryCadence, {90.0, 90.0, 90.0});
    fill(block.theoryPower, {850.0, 400.0, 0.0});
    fill(block.theoryTorque, {0.0, 40.0, 0.0});
    fill(block.theoryForce, {0.0, 25.0, 0.0});
    fill(block.theoryCadenceMax, {120.0, 120.0, 120.0});
    fill(block.theoryMaxPower, {900.0, 0.0, 0.0});
    fill(block.theoryVelocity, {0.0, 0.0, 40 / kphPerMps});
    block.useMissionProfile = 1;
    block.frontTooth = 52;
    block.rearTooth = 14;
}

// Columns by RideMode.
void setRideDefaults(ParameterBlock& block)
{
    fill(block.rideVelocity, {40 / kphPerMps, 0.0, 0.0, 30 / kphPerMps, 40 / kphPerMps, 40 / kphPerMps});
    fill(block.ridePower, {400.0, 800.0, 0.0, 1000.0, 0.0, 0.0});
    fill(block.rideForce, {0.0, 0.0, 0.0, -30.0, 0.0, 0.0});
    fill(block.rideStartVelocity, {0.0, 0.0, 70 / kphPerMps, 70 / kphPerMps, 0.0, 0.0});
    fill(block.rideEndVelocity, {0.0, 40 / kphPerMps, 30 / kphPerMps, 30 / kphPerMps, 0.0, 0.0});
    fill(block.rideLegTime, {0.0, 15.0, 50.0, 10.0, 60.0, 0.0});
    fill(block.rideAccele, {0.0, 0.8, -0.2, -0.8, 0.0, 0.0});
    fill(block.rideGravity, {0.0, 0.1, -0.03, -0.1, 0.0, 0.0});
    fill(block.rideDistance, {0.0, 100.0, 500.0, 50.0, 300.0, 0.0});
    fill(block.rideInclination, {0.0, 0.0, 0.0, 0.0, -7.0, 0.0});
    fill(block.brakingInclination, {0.0, 0.0, -7.0, -7.0});
    block.intervalDistance = 300;
    block.totalDistance = 5000;
    block.initialKickTime = 0.1;
    block.corneringRadius = 15;
    block.safetyMargin = 0.1;
    fill(block.intensionFirst, {60, 50});
}

void setGpsDefaults(ParameterBlock& block)
{
    constexpr OutputChoice asSource = {
        .convertEnabled = 0, .fitFormat = formModern, .sportEnabled = 0, .sportIndex = sportCycling};
    block.expressSmoothing = 1;
    block.expressUnrealInclination = 25;
    block.expressUnrealAccele = 1.5;
    block.analyseSmoothing = 1;
    block.analyseUnrealInclination = 25;
    block.analyseUnrealAccele = 1.5;
    block.averageTemperature = 20;
    block.analyseWindDirection = 270;
    block.predictCadence = 1;
    block.predictPower = 1;
    block.reserved8D0 = 1;
    block.createOutput = asSource;
    block.combineOutput = asSource;
    block.convertOutput = {.convertEnabled = 1, .fitFormat = formLegacy, .sportEnabled = 0, .sportIndex = sportCycling};
    block.addOutput = asSource;
    block.divideOutput = asSource;
    block.excludeOutput = asSource;
    block.timestampOutput = asSource;
}

} // namespace

void setDefaults(ParameterBlock& block)
{
    block = {};
    std::strcpy(block.profileFileName, "default.pro");
    setRiderDefaults(block);
    setMachineDefaults(block);
    setConditionDefaults(block);
    setPreferenceDefaults(block);
    setTheoryDefaults(block);
    setRideDefaults(block);
    setGpsDefaults(block);
}

ParameterBlock defaultBlock()
{
    ParameterBlock block;
    setDefaults(block);
    return block;
}

} // namespace torvane
