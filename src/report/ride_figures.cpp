#include "report/ride_figures.h"

#include "core/units.h"
#include "model/constants.h"

#include <algorithm>
#include <span>

namespace torvane {

namespace {

using Row = FigureRow<RideRun>;
using Rows = std::span<const Row>;

template <auto member>
double in(const RideRun& ride)
{
    return ride.in.*member;
}

template <auto member>
double found(const RideRun& ride)
{
    return ride.found.*member + 0.0; // no minus before a zero, as of the energy of a flat road
}

template <auto member>
double now(const RideRun& ride)
{
    return ride.now.*member;
}

template <auto member>
double body(const RideRun& ride)
{
    return ride.physiology.*member;
}

template <auto member>
double inKph(const RideRun& ride)
{
    return ride.in.*member * kphPerMps;
}

template <auto member, int stage>
double ofStage(const RideRun& ride)
{
    return (ride.found.*member)[stage];
}

template <auto member, int wheel>
double ofBrake(const RideRun& ride)
{
    return (ride.heat.*member)[wheel];
}

double velocity(const RideRun& ride)
{
    return ride.found.velocity * kphPerMps;
}

bool hasMotor(const RideRun& ride)
{
    return ride.model.state.motorLocation > motorNone;
}

bool usesFtp(const RideRun& ride)
{
    return ride.in.physiology.useFtp != 0;
}

constexpr Row chainRows[] = {
    {"pedalingPower", "W", now<&Evaluation::pedalingPower>},
    {"pedalingTorque", "Nm", now<&Evaluation::pedalingTorque>},
    {"pedalingForce", "kgf", now<&Evaluation::pedalingForce>},
    {"crankPower", "W", now<&Evaluation::crankPower>},
    {"crankTorque", "Nm", now<&Evaluation::crankTorque>},
    {"crankForce", "kgf", now<&Evaluation::crankForce>},
    {"hubPower", "W", now<&Evaluation::hubPower>},
    {"hubTorque", "Nm", now<&Evaluation::hubTorque>},
    {"hubForce", "kgf", now<&Evaluation::hubForce>},
    {"thrustPower", "W", now<&Evaluation::thrustPower>},
    {"thrustTorque", "Nm", now<&Evaluation::thrustTorque>},
    {"thrustForce", "kgf", now<&Evaluation::thrustForce>},
    {"assistPower", "W", now<&Evaluation::assistPower>, hasMotor},
    {"assistTorque", "Nm", now<&Evaluation::assistTorque>, hasMotor},
    {"assistForce", "kgf", now<&Evaluation::assistForce>, hasMotor},
};

constexpr Row thrustRunRows[] = {
    {"thrustMeanPower", "W", ofStage<&RideFigures::meanStagePower, stageThrust>},
    {"thrustPeakPower", "W", ofStage<&RideFigures::peakPower, stageThrust>},
    {"thrustMeanTorque", "Nm", ofStage<&RideFigures::meanStageTorque, stageThrust>},
    {"thrustMeanForce", "kgf", ofStage<&RideFigures::meanStageForce, stageThrust>},
};

constexpr Row chainRunRows[] = {
    {"pedalingMeanPower", "W", ofStage<&RideFigures::meanStagePower, stagePedaling>},
    {"pedalingPeakPower", "W", ofStage<&RideFigures::peakPower, stagePedaling>},
    {"pedalingMeanTorque", "Nm", ofStage<&RideFigures::meanStageTorque, stagePedaling>},
    {"pedalingMeanForce", "kgf", ofStage<&RideFigures::meanStageForce, stagePedaling>},
    {"crankMeanPower", "W", ofStage<&RideFigures::meanStagePower, stageCrank>},
    {"crankPeakPower", "W", ofStage<&RideFigures::peakPower, stageCrank>},
    {"crankMeanTorque", "Nm", ofStage<&RideFigures::meanStageTorque, stageCrank>},
    {"crankMeanForce", "kgf", ofStage<&RideFigures::meanStageForce, stageCrank>},
    {"hubMeanPower", "W", ofStage<&RideFigures::meanStagePower, stageHub>},
    {"hubPeakPower", "W", ofStage<&RideFigures::peakPower, stageHub>},
    {"hubMeanTorque", "Nm", ofStage<&RideFigures::meanStageTorque, stageHub>},
    {"hubMeanForce", "kgf", ofStage<&RideFigures::meanStageForce, stageHub>},
    {"assistMeanPower", "W", found<&RideFigures::assistMeanPower>, hasMotor},
    {"assistPeakPower", "W", found<&RideFigures::assistPeakPower>, hasMotor},
    {"assistMeanTorque", "Nm", found<&RideFigures::assistMeanTorque>, hasMotor},
    {"assistMeanForce", "kgf", found<&RideFigures::assistMeanForce>, hasMotor},
};

constexpr Row gearRows[] = {
    {"cadence", "rpm", now<&Evaluation::cadence>},
    {"currentFrontTooth", "t", now<&Evaluation::currentFrontTooth>},
    {"currentRearTooth", "t", now<&Evaluation::currentRearTooth>},
    {"requiredPower", "W", [](const RideRun& ride) { return std::max(ride.found.requiredPower, 0.0); }},
    {"cadencePoweredMax", "rpm", [](const RideRun& ride) { return ride.model.state.cadencePoweredMax; }},
};

constexpr Row dragRows[] = {
    {"shellDrag", "kgf", now<&Evaluation::shellDrag>},     {"shellDragPower", "W", now<&Evaluation::shellDragPower>},
    {"humanDrag", "kgf", now<&Evaluation::humanDrag>},     {"humanDragPower", "W", now<&Evaluation::humanDragPower>},
    {"wheelDrag", "kgf", now<&Evaluation::wheelDrag>},     {"wheelDragPower", "W", now<&Evaluation::wheelDragPower>},
    {"airDrag", "kgf", now<&Evaluation::airDrag>},         {"airDragPower", "W", now<&Evaluation::airDragPower>},
    {"rollingLoad", "kgf", now<&Evaluation::rollingLoad>}, {"rollingPower", "W", now<&Evaluation::rollingPower>},
    {"slopeLoad", "kgf", now<&Evaluation::slopeLoad>},     {"slopePower", "W", now<&Evaluation::slopePower>},
};

bool isPedaled(const RideRun& ride)
{
    return ride.in.rideMode == ridePowerAndVelocity || ride.found.peakPower[stagePedaling] > 0.0;
}

bool isPedaledByFtp(const RideRun& ride)
{
    return isPedaled(ride) && usesFtp(ride);
}

const TrainingLevel& levelOf(const RideRun& ride)
{
    int row = std::clamp(ride.physiology.level, 1, static_cast<int>(std::size(trainingLevels))) - 1;
    return trainingLevels[row];
}

constexpr Row bodyRows[] = {
    {"ftp", "W", [](const RideRun& ride) { return ride.model.state.ftp; }, isPedaledByFtp},
    {"level", "", [](const RideRun& ride) { return static_cast<double>(&levelOf(ride) - trainingLevels + 1); },
     isPedaledByFtp},
    {"upperLimit", "sec", [](const RideRun& ride) { return static_cast<double>(levelOf(ride).upperLimit); },
     [](const RideRun& ride) { return isPedaledByFtp(ride) && levelOf(ride).upperLimit != 0; }},
    {"intensityFactor", "", body<&PhysiologyFigures::intensityFactor>, isPedaledByFtp},
    {"normalizedPower", "W", body<&PhysiologyFigures::normalizedPower>, isPedaled},
    {"variabilityIndex", "", body<&PhysiologyFigures::variabilityIndex>, isPedaled},
    {"trainingStressScore", "", body<&PhysiologyFigures::trainingStressScore>, isPedaledByFtp},
    {"kiloJoule", "kJ", body<&PhysiologyFigures::kiloJoule>, isPedaled},
    {"kiloCalorie", "kcal", body<&PhysiologyFigures::kiloCalorie>, isPedaled},
    {"foodKiloCalorie", "kcal", body<&PhysiologyFigures::foodKiloCalorie>, isPedaled},
};

// Of a steady ride: the one that was entered, and what it comes to.
constexpr Row lengthRows[] = {
    {"duration", "sec",
     [](const RideRun& ride) {
         const RideLength& length = ride.physiology.length;
         return 60.0 * length.intensionFirst[intensionByTime] + length.intensionSecond[intensionByTime];
     }},
    {"length", "km",
     [](const RideRun& ride) {
         const RideLength& length = ride.physiology.length;
         return length.intensionFirst[intensionByDistance] + length.intensionSecond[intensionByDistance] / 1000.0;
     }},
};

constexpr Row motionRows[] = {
    {"sectorTime", "sec", found<&RideFigures::sectorTime>},
    {"accele", "mpss", found<&RideFigures::accele>},
    {"maxAccele", "mpss", found<&RideFigures::maxAccele>},
    {"distance", "m", found<&RideFigures::distance>},
};

template <int wheel>
double residual(const RideRun& ride)
{
    return ride.heat.brakeHeat[wheel] + ride.heat.brakeRadiated[wheel];
}

bool brakes(const RideRun& ride)
{
    return ride.in.rideMode == ridePatternBraking || ride.found.drive.thrustMode == thrustByBraking;
}

constexpr Row heatRows[] = {
    {"airDragQuantity", "J", found<&RideFigures::airDragQuantity>, brakes},
    {"rollingDragQuantity", "J", found<&RideFigures::rollingDragQuantity>, brakes},
    {"potentialEnergy", "J", found<&RideFigures::potentialEnergy>, brakes},
    {"startKineticEnergy", "J", found<&RideFigures::startKineticEnergy>, brakes},
    {"endKineticEnergy", "J", found<&RideFigures::endKineticEnergy>, brakes},
    {"frontBrakeTemperature", "Cel", ofBrake<&BrakeHeat::brakeTemperature, wheelFront>, brakes},
    {"frontBrakeHeat", "J", ofBrake<&BrakeHeat::brakeHeat, wheelFront>, brakes},
    {"frontBrakeRadiated", "J", ofBrake<&BrakeHeat::brakeRadiated, wheelFront>, brakes},
    {"frontBrakeResidual", "J", residual<wheelFront>, brakes},
    {"rearBrakeTemperature", "Cel", ofBrake<&BrakeHeat::brakeTemperature, wheelRear>, brakes},
    {"rearBrakeHeat", "J", ofBrake<&BrakeHeat::brakeHeat, wheelRear>, brakes},
    {"rearBrakeRadiated", "J", ofBrake<&BrakeHeat::brakeRadiated, wheelRear>, brakes},
    {"rearBrakeResidual", "J", residual<wheelRear>, brakes},
    {"temperature", "Cel", [](const RideRun& ride) { return ride.model.state.temperature; }, brakes},
};

constexpr Row velocityRows[] = {{"velocity", "kph", velocity}};
constexpr Row slopeRows[] = {{"inclination", "%", now<&Evaluation::inclination>}};
constexpr Row reachRows[] = {
    {"reachVelocity", "kph", [](const RideRun& ride) { return ride.model.reachVelocity * kphPerMps; },
     [](const RideRun& ride) { return (ride.status & statusOverReach) != 0; }},
};

// The run has ended before it was where it was to end.
bool stopsShort(const RideRun& ride)
{
    double beyond = ride.found.velocity - ride.in.endVelocity;
    return ride.in.rideMode == rideAcceleration ? beyond < 0 : beyond > 0;
}

// By the brakes alone no power is asked for; what stands in its place is from the attempt without them.
bool hasPower(const RideRun& ride)
{
    return ride.found.drive.thrustMode != thrustByBraking || ride.found.power < 0 ||
           ride.in.rideTarget <= decelerationEndingVelocity;
}

// Of a run by another reference nobody has looked for the mean.
bool hasMeanPower(const RideRun& ride)
{
    static_assert(int{accelerationMeanPower} == decelerationMeanPower);
    return ride.in.rideTarget == accelerationMeanPower ||
           (ride.in.rideMode == rideAcceleration && ride.in.rideTarget == accelerationEndingVelocityMean);
}

bool requiresPower(const RideRun& ride)
{
    if (ride.in.rideMode == rideAcceleration)
        return ride.in.rideTarget != accelerationConstantPower;
    return ride.in.rideTarget != decelerationConstantPower && ride.found.peakPower[stageThrust] > 0;
}

constexpr Row runRows[] = {
    {"power", "W", found<&RideFigures::power>, hasPower},
    {"meanPower", "W", found<&RideFigures::meanPower>, hasMeanPower},
    {"startVelocity", "kph", inKph<&RideInputs::startVelocity>},
    {"endVelocity", "kph", inKph<&RideInputs::endVelocity>},
    {"leastAcceleration", "mpss", [](const RideRun&) { return leastAcceleration; }, stopsShort},
    {"gravity", "G", [](const RideRun& ride) { return ride.found.accele / standardGravity; }},
    {"thrustForce", "kgf", now<&Evaluation::thrustForce>},
    {"requiredPower", "W", [](const RideRun& ride) { return std::max(ride.found.power, 0.0); }, requiresPower},
    {"cadencePoweredMax", "rpm", [](const RideRun& ride) { return ride.model.state.cadencePoweredMax; }, requiresPower},
};

constexpr Row steadyRows[] = {{"power", "W", now<&Evaluation::pedalingPower>}};

bool hasInterval(const RideRun& ride)
{
    return ride.in.rideTarget == patternIntermittent;
}

bool isOverWay(const RideRun& ride)
{
    return ride.in.rideTarget > patternCriticalFull;
}

bool isStop(const RideRun& ride)
{
    return !isOverWay(ride);
}

constexpr Row brakingRows[] = {
    {"force", "kgf", found<&RideFigures::force>},
    {"startVelocity", "kph", inKph<&RideInputs::startVelocity>, isStop},
    {"endVelocity", "kph", inKph<&RideInputs::endVelocity>},
    {"intervalDistance", "m", in<&RideInputs::intervalDistance>, hasInterval},
    {"totalDistance", "m", in<&RideInputs::totalDistance>, isOverWay},
    {"thrustMeanPower", "W", ofStage<&RideFigures::meanStagePower, stageThrust>, isStop},
    {"thrustPeakPower", "W", ofStage<&RideFigures::peakPower, stageThrust>, isStop},
    {"thrustMeanTorque", "Nm", ofStage<&RideFigures::meanStageTorque, stageThrust>, isStop},
    {"thrustMeanForce", "kgf", ofStage<&RideFigures::meanStageForce, stageThrust>, isStop},
    {"sectorTime", "sec", found<&RideFigures::sectorTime>},
    {"accele", "mpss", found<&RideFigures::accele>, isStop},
    {"maxAccele", "mpss", found<&RideFigures::maxAccele>, isStop},
    {"leastAcceleration", "mpss", [](const RideRun&) { return leastAcceleration; },
     [](const RideRun& ride) { return isStop(ride) && stopsShort(ride); }},
    {"distance", "m", found<&RideFigures::distance>, isStop},
};

bool hasLimit(const RideRun& ride)
{
    return ride.in.inclinationLimit != limitNone;
}

constexpr Row rollingRows[] = {
    {"startVelocity", "kph", inKph<&RideInputs::startVelocity>, hasLimit},
    {"sectorTime", "sec", found<&RideFigures::sectorTime>, hasLimit},
    {"distance", "m", found<&RideFigures::distance>, hasLimit},
};

constexpr Row corneringRows[] = {
    {"corneringRadius", "m", found<&RideFigures::corneringRadius>},
    {"safetyMargin", "", found<&RideFigures::safetyMargin>},
};

constexpr Rows steady[] = {velocityRows, slopeRows, reachRows,  steadyRows, chainRows,
                           gearRows,     dragRows,  lengthRows, bodyRows};
constexpr Rows overTime[] = {velocityRows, slopeRows,     reachRows, runRows, motionRows,
                             chainRunRows, thrustRunRows, bodyRows,  heatRows};
constexpr Rows braking[] = {velocityRows, slopeRows, reachRows, brakingRows, heatRows};
constexpr Rows rolling[] = {velocityRows, slopeRows, reachRows, rollingRows, dragRows};
constexpr Rows cornering[] = {velocityRows, reachRows, corneringRows, chainRows, gearRows};
constexpr std::span<const Rows> tables[rideModeCount] = {steady, overTime, overTime, braking, rolling, cornering};

} // namespace

Figures rideFigures(const RideRun& ride)
{
    Figures figures;
    if (isFatal(ride.status))
        return figures;
    for (Rows rows : tables[ride.in.rideMode])
        addFigures(figures.values, rows, ride);
    return figures;
}

std::vector<FigureInfo> rideFigureInfos(int rideMode)
{
    std::vector<FigureInfo> infos;
    for (Rows rows : tables[rideMode])
        addInfos(infos, rows);
    return infos;
}

} // namespace torvane
