// The ways of values between the records: "save as default" from the working copy to the saved one, and the profile and
// condition between a block and the model in force.
//
// A section is a list of members, written once and copied from any record that has them to any other: a block to a
// block, a block to a model's state and back.
#include "core/parameter_block.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <type_traits>

namespace torvane {

namespace {

template <typename T>
void copyMember(T& target, const T& source)
{
    if constexpr (std::is_array_v<T>)
        std::memcpy(&target, &source, sizeof target);
    else
        target = source;
}

// Copies the named members from source to target, whatever two records these are.
#define COPY(member) copyMember(target.member, source.member)

template <typename Target, typename Source>
void copyHuman(Target& target, const Source& source)
{
    COPY(humanHeight);
    COPY(humanWeight);
    COPY(position);
    COPY(torsoAngle);
    COPY(cadenceUsual);
    COPY(cadencePoweredMax);
    COPY(cadenceShiftUp);
    COPY(cadenceShiftDown);
    COPY(ftp);
}

template <typename Target, typename Source>
void copyEquip(Target& target, const Source& source)
{
    COPY(wear);
    COPY(helmet);
    COPY(exceptWheels);
    COPY(bikeWeight);
    COPY(bikeWeightExceptWheels);
    COPY(shellType);
    COPY(shellAeroRatio);
}

template <typename Target, typename Source>
void copyShift(Target& target, const Source& source)
{
    COPY(shiftTimeLoss);
    COPY(crankLength);
    COPY(chainringCount);
    COPY(sprocketCount);
    COPY(chainring);
    COPY(sprocket);
}

template <typename Target, typename Source>
void copyWheel(Target& target, const Source& source)
{
    COPY(wheelWeight);
    COPY(wheelSize);
    COPY(wheelsWeight);
    COPY(wheelResist);
    COPY(wheelResistVelocity);
    COPY(predictWheel);
    COPY(rimDepth);
    COPY(spokeCount);
    COPY(modelYear);
}

template <typename Target, typename Source>
void copyTyre(Target& target, const Source& source)
{
    COPY(tyreSize);
    COPY(tyreWeight);
    COPY(rollingCoefficient);
    COPY(frictionCoefficient);
}

// Only the entries of the type selected on each wheel move: the other type keeps what it had.
template <typename Target, typename Source>
void copyBrake(Target& target, const Source& source)
{
    COPY(brakeType);
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        int type = source.brakeType[wheel] == brakeDisc ? brakeDisc : brakeRim;
        COPY(brakeMaterial[type][wheel]);
        COPY(brakeWeight[type][wheel]);
        COPY(brakeSurfaceSize[type][wheel]);
    }
}

template <typename Target, typename Source>
void copyLoss(Target& target, const Source& source)
{
    COPY(shellLossPercent);
    COPY(shellLossTorque);
    COPY(missionLossPercent);
    COPY(wheelLossPercent);
    COPY(wheelLossTorque);
}

template <typename Target, typename Source>
void copyAssist(Target& target, const Source& source)
{
    COPY(motorLocation);
    COPY(maxEPower);
    COPY(assistRangeMode);
    COPY(assistRangeSpeed);
    COPY(assistRangeRatio);
}

template <typename Target, typename Source>
void copyProfile(Target& target, const Source& source)
{
    copyHuman(target, source);
    copyEquip(target, source);
    copyShift(target, source);
    copyWheel(target, source);
    copyTyre(target, source);
    copyBrake(target, source);
    copyLoss(target, source);
    copyAssist(target, source);
}

template <typename Target, typename Source>
void copyCourse(Target& target, const Source& source)
{
    COPY(windSpeed);
    COPY(airPressureSource);
    COPY(altitude);
    COPY(temperature);
    COPY(hectoPascal);
    COPY(bpn);
    COPY(roadSurface);
}

template <typename Target, typename Source>
void copyPeloton(Target& target, const Source& source)
{
    COPY(pelotonMode);
    COPY(pelotonRatio);
    COPY(pelotonVelocity);
    COPY(pelotonNumber);
    COPY(wheelDistance);
    COPY(rotateTop);
}

void copyPhysiology(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(useFtp);
    COPY(useCalibration);
    COPY(energyEfficiency);
}

void copyProcessInterval(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(accelerationIntervalMode);
    COPY(decelerationIntervalMode);
    COPY(accelerationInterval);
    COPY(decelerationInterval);
}

void copySpecificHeat(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(specificHeat);
}

void copyEmittance(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(emittance);
}

void copyGraph(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(expressGraph);
    COPY(bandGraphPowerVelocity);
    COPY(bandGraphCornering);
}

void copyInitialValues(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(initialValueMode);
}

void copyGpsData(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(thresholdSpeed);
    COPY(detectBraking);
    COPY(limitPowerPrediction);
    COPY(thresholdPower);
}

// rideAccele is never kept as a default: its value follows from the other reference factors.
void copyRideMode(ParameterBlock& target, const ParameterBlock& source, int mode)
{
    COPY(rideVelocity[mode]);
    COPY(ridePower[mode]);
    COPY(rideForce[mode]);
    COPY(rideStartVelocity[mode]);
    COPY(rideEndVelocity[mode]);
    COPY(rideLegTime[mode]);
    COPY(rideGravity[mode]);
    COPY(rideDistance[mode]);
    COPY(rideInclination[mode]);
    COPY(ridePowerBase[mode]);
}

// What one mode alone has.
void copyRideExtras(ParameterBlock& target, const ParameterBlock& source, int mode)
{
    switch (mode) {
    case ridePowerAndVelocity:
        COPY(intensionCase);
        COPY(intensionFirst);
        COPY(intensionSecond);
        break;
    case rideAcceleration:
        COPY(initialKickTime);
        COPY(startGearMode[startOfAcceleration]);
        COPY(startGearIndex[startOfAcceleration]);
        break;
    case rideDeceleration:
        COPY(startGearMode[startOfDeceleration]);
        COPY(startGearIndex[startOfDeceleration]);
        break;
    case ridePatternBraking:
        COPY(intervalDistance);
        COPY(totalDistance);
        if (source.rideTarget >= 0 && source.rideTarget < brakingPatternCount)
            COPY(brakingInclination[source.rideTarget]);
        break;
    case rideInclinationAndVelocity:
        COPY(inclinationLimit);
        break;
    default:
        COPY(corneringRadius);
        COPY(safetyMargin);
        break;
    }
}

// The theory cadences stay out: they follow the rider.
void copyTheory(ParameterBlock& target, const ParameterBlock& source, int calculator)
{
    COPY(theoryTarget);
    COPY(theoryPower[calculator]);
    COPY(theoryTorque[calculator]);
    COPY(theoryForce[calculator]);
    COPY(theoryMaxPower[calculator]);
    COPY(theoryVelocity[calculator]);
    COPY(theoryInclination[calculator]);
    if (calculator == calculatorPedaling)
        COPY(torqueOrForce);
    if (calculator == calculatorGears) {
        COPY(useMissionProfile);
        COPY(frontTooth);
        COPY(rearTooth);
    }
}

void copyExpress(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(expressSmoothing);
    COPY(expressUnrealInclination);
    COPY(expressUnrealAccele);
}

// averageTemperature belongs to one ride and is never a default.
void copyAnalyse(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(flatCourse);
    COPY(analyseSmoothing);
    COPY(analyseUnrealInclination);
    COPY(analyseUnrealAccele);
    COPY(analyseWindSpeed);
    COPY(analyseWindDirection);
    COPY(predictCadence);
    COPY(predictPower);
    COPY(analysePowerBase);
    COPY(reserved8D0);
}

void copyCreate(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(expressFieldsData);
    COPY(createOutput);
}

void copyCombine(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(combineOutput);
}

void copyConvert(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(convertOutput);
    COPY(convertSpeedUnit);
}

void copyAdd(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(addLap);
    COPY(addSession);
    COPY(addActivity);
    COPY(addOutput);
}

void copyDivide(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(divideOutput);
}

void copyExclude(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(excludeLap);
    COPY(excludeSession);
    COPY(excludeActivity);
    COPY(excludeOutput);
}

void copyTimestamp(ParameterBlock& target, const ParameterBlock& source)
{
    COPY(timestampOutput);
    COPY(timestampTruncate);
    COPY(timestampOffset);
}

#undef COPY

void letTheoryFollowRider(ParameterBlock& block, double cadenceUsual, double cadencePoweredMax)
{
    std::fill(std::begin(block.theoryCadence), std::end(block.theoryCadence), cadenceUsual);
    std::fill(std::begin(block.theoryCadenceMax), std::end(block.theoryCadenceMax), cadencePoweredMax);
}

struct Section {
    int flag;
    void (*copy)(ParameterBlock& target, const ParameterBlock& source);
};

constexpr Section profileSections[] = {
    {pageHuman, copyHuman}, {pageEquip, copyEquip}, {pageShift, copyShift}, {pageWheel, copyWheel},
    {pageTyre, copyTyre},   {pageBrake, copyBrake}, {pageLoss, copyLoss},   {pageAssist, copyAssist},
};

constexpr Section conditionSections[] = {{pageCourse, copyCourse}, {pagePeloton, copyPeloton}};

constexpr Section preferenceSections[] = {
    {pagePhysiology, copyPhysiology},
    {pageProcessInterval, copyProcessInterval},
    {pageSpecificHeat, copySpecificHeat},
    {pageEmittance, copyEmittance},
    {pageGraph, copyGraph},
    {pageInitialValues, copyInitialValues},
    {pageGpsData, copyGpsData},
};

constexpr Section gpsSections[] = {
    {gpsExpress, copyExpress}, {gpsAnalyse, copyAnalyse}, {gpsCreate, copyCreate},
    {gpsCombine, copyCombine}, {gpsConvert, copyConvert}, {gpsAdd, copyAdd},
    {gpsDivide, copyDivide},   {gpsExclude, copyExclude}, {gpsTimestamp, copyTimestamp},
};

template <size_t count>
void commitSections(const Section (&sections)[count], int32_t* flags, ParameterBlock& saved,
                    const ParameterBlock& working)
{
    for (const Section& section : sections) {
        if (flags[section.flag])
            section.copy(saved, working);
        flags[section.flag] = 0;
    }
}

} // namespace

void commitProfile(ParameterBlock& saved, ParameterBlock& working)
{
    copyMember(saved.profileFileName, working.profileFileName);
    if (working.pageChanged[pageHuman]) {
        saved.calibration = working.calibration;
        letTheoryFollowRider(saved, working.cadenceUsual, working.cadencePoweredMax);
    }
    commitSections(profileSections, working.pageChanged, saved, working);
}

void commitCondition(ParameterBlock& saved, ParameterBlock& working)
{
    commitSections(conditionSections, working.pageChanged, saved, working);
}

void commitPreference(ParameterBlock& saved, ParameterBlock& working)
{
    commitSections(preferenceSections, working.pageChanged, saved, working);
}

void commitTheory(ParameterBlock& saved, ParameterBlock& working)
{
    int calculator = working.theoryCalculator;
    if (calculator < 0 || calculator >= calculatorCount || !working.theorySaveFlag[calculator])
        return;
    copyTheory(saved, working, calculator);
    working.theorySaveFlag[calculator] = 0;
}

void commitRide(ParameterBlock& saved, ParameterBlock& working)
{
    int mode = working.rideMode;
    if (mode < 0 || mode >= rideModeCount || !working.rideSaveFlag[mode])
        return;
    saved.rideTarget = working.rideTarget;
    copyRideMode(saved, working, mode);
    copyRideExtras(saved, working, mode);
    working.rideSaveFlag[mode] = 0;
}

void commitGps(ParameterBlock& saved, ParameterBlock& working)
{
    int32_t* flags = working.gpsSaveFlag;
    if (flags[gpsOneStroke])
        flags[gpsAnalyse] = flags[gpsCreate] = 1;
    commitSections(gpsSections, flags, saved, working);
    flags[gpsOneStroke] = 0;
}

void applyProfile(ModelState& state, ParameterBlock& working)
{
    copyProfile(state, working);
    letTheoryFollowRider(working, working.cadenceUsual, working.cadencePoweredMax);
}

void startModel(ModelState& state, ParameterBlock& working)
{
    copyMember(state.brakeMaterial, working.brakeMaterial);
    copyMember(state.brakeWeight, working.brakeWeight);
    copyMember(state.brakeSurfaceSize, working.brakeSurfaceSize);
    applyProfile(state, working);
    applyCondition(state, working);
}

void fetchProfile(ParameterBlock& block, const ModelState& state)
{
    copyProfile(block, state);
    letTheoryFollowRider(block, state.cadenceUsual, state.cadencePoweredMax);
}

void fetchFigures(ParameterBlock& block, const ModelState& state)
{
    copyProfile(block, state);
    copyCourse(block, state);
    copyPeloton(block, state);
}

void applyCondition(ModelState& state, const ParameterBlock& working)
{
    copyCourse(state, working);
    copyPeloton(state, working);
}

} // namespace torvane
