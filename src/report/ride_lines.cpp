#include "report/ride_lines.h"

#include "core/parameter_block.h"
#include "core/text.h"
#include "model/run_state.h"
#include "report/time_text.h"
#include "ride/physiology.h"
#include "ride/ride_run.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double kiloFrom = 10000.0; // W or J, from which on figures are shown in thousands

// The rows of a chain table, in their order; the tabs bring the columns into line.
constexpr const char* stageLabels[stageCount] = {"power of pedaling\t\t", "-- crank\t\t\t", "-- hub\t\t\t",
                                                 "-- thrust(wheel)\t\t"};
constexpr const char* assistLabel = "e-Assist\t\t\t";

void appendChainRow(std::string& text, const char* label, double power, double torque, double force)
{
    appendFormat(text, "\t%s:%9.3lf W  ,%9.3lf Nm ,%9.3lf kgf\n", label, power, torque, force);
}

bool thrustInKiloWatt()
{
    return std::fabs(runState.peakPower[stageThrust]) >= kiloFrom;
}

void appendRunRow(std::string& text, const char* label, double mean, double peak, double torque, double force)
{
    if (thrustInKiloWatt()) {
        appendFormat(text, "\t%s:%9.3lf kW ,%9.3lf kW ,%9.3lf Nm ,%9.3lf kgf\n", label, mean / 1000.0, peak / 1000.0,
                     torque, force);
    } else {
        appendFormat(text, "\t%s:%9.3lf W  ,%9.3lf W  ,%9.3lf Nm ,%9.3lf kgf\n", label, mean, peak, torque, force);
    }
}

void appendRunStage(std::string& text, const char* label, int stage)
{
    appendRunRow(text, label, runState.meanStagePower[stage], runState.peakPower[stage],
                 runState.meanStageTorque[stage], runState.meanStageForce[stage]);
}

void appendFourHeads(std::string& text, const char* first, const char* second, const char* third, const char* fourth)
{
    appendFormat(text, "\t\t\t\t\t %9s    ,%9s    ,%9s    ,%9s\n", first, second, third, fourth);
}

void appendAcceleration(std::string& text, const char* label, double accele)
{
    appendFormat(text, "\t%s\t\t\t:%9.3lfmpss,%9.3lfkphs,%9.3lf G\n", label, accele, accele * 3.6, accele / 9.80665);
}

void appendTrainingLevel(std::string& text)
{
    int row = std::clamp(physiology.level, 1, static_cast<int>(std::size(trainingLevels))) - 1;
    const TrainingLevel& level = trainingLevels[row];
    text += "\n";
    if (row > 0) {
        appendFormat(text, "\tupper limit of traning time is %s%s\n", hms(level.upperLimit).c_str(),
                     level.asOneInterval ? " as one interval" : "");
    }
    appendFormat(text, "\tpower traning level\t:  Lv%d, %s for ftp %5.1lfW\n", row + 1, level.name, modelState.ftp);
    appendFormat(text, "\tintensity factor\t\t:%9.3lf\n", physiology.intensityFactor);
}

void appendIntension(std::string& text)
{
    if (workingBlock.rideMode == ridePowerAndVelocity) {
        appendFormat(text, "\tphysiological factors in case of %s as follows:\n", intensionText().c_str());
    } else if (workingBlock.rideMode == rideAcceleration) {
        appendFormat(text, "\tphysiological factors in case of %5.3lfm per %5.3lfsec as follows:\n", runState.distance,
                     runState.sectorTime);
    }
}

struct EnergyLine {
    const char* label;
    double RunState::*joule;
};

constexpr EnergyLine energyLines[] = {
    {"air drag quantity\t\t", &RunState::airDragQuantity},
    {"rolling drag quantity\t", &RunState::rollingDragQuantity},
    {"potential energy\t\t", &RunState::potentialEnergy},
    {"starting kinetic energy\t", &RunState::startKineticEnergy},
    {"ending kinetic energy\t", &RunState::endKineticEnergy},
};

void appendEnergies(std::string& text)
{
    bool kilo = std::any_of(std::begin(energyLines), std::end(energyLines),
                            [](const EnergyLine& line) { return runState.*line.joule >= kiloFrom; });
    for (const EnergyLine& line : energyLines) {
        double joule = runState.*line.joule;
        appendFormat(text, "\t%s:%9.3lf %s\n", line.label, kilo ? joule / 1000.0 : joule, kilo ? "kJ" : "J");
    }
}

// The heat of the front brake alone decides on the unit of both.
void appendBrake(std::string& text, const char* name, int wheel)
{
    bool kilo = modelState.brakeHeat[0] >= kiloFrom;
    double scale = kilo ? 1000.0 : 1.0;
    double heat = modelState.brakeHeat[wheel];
    double radiated = modelState.brakeRadiated[wheel];
    const char* unit = kilo ? "kJ " : "J  ";
    appendFormat(text, "\tbrake heat%s\t\t:%9.1lf C  ,%9.3lf %s,%9.3lf %s,%9.3lf %s\n", name,
                 modelState.brakeTemperature[wheel], heat / scale, unit, radiated / scale, unit,
                 (heat + radiated) / scale, kilo ? "kJ" : "J");
}

} // namespace

void appendChain(std::string& text)
{
    const RunState& run = runState;
    appendFormat(text, "\t\t\t\t\t %9s    ,%9s    ,%9s\n", "power", "torque", "force");
    appendChainRow(text, stageLabels[stagePedaling], run.pedalingPower, run.pedalingTorque, run.pedalingForce);
    appendChainRow(text, stageLabels[stageCrank], run.crankPower, run.crankTorque, run.crankForce);
    appendChainRow(text, stageLabels[stageHub], run.hubPower, run.hubTorque, run.hubForce);
    appendChainRow(text, stageLabels[stageThrust], run.thrustPower, run.thrustTorque, run.thrustForce);
    if (modelState.motorLocation > 0) {
        appendChainRow(text, assistLabel, run.assistPower, run.assistTorque, run.assistForce);
    }
}

void appendRunChain(std::string& text)
{
    appendFourHeads(text, "mean", "maximal", "torque", "force");
    for (int stage = 0; stage < stageCount; ++stage) {
        appendRunStage(text, stageLabels[stage], stage);
    }
    if (modelState.motorLocation > 0) {
        appendRunRow(text, assistLabel, runState.assistMeanPower, runState.assistPeakPower, runState.assistMeanTorque,
                     runState.assistMeanForce);
    }
}

void appendBrakingRow(std::string& text)
{
    appendFourHeads(text, "mean", "maximal", "torque", "force");
    appendRunStage(text, "braking thrust power\t", stageThrust);
}

void appendCadence(std::string& text)
{
    appendFormat(text, "\tcadence\t\t\t:%9.3lf rpm geared %2d/%2d\n", runState.cadence, modelState.currentFrontTooth,
                 modelState.currentRearTooth);
}

void appendRequiredPower(std::string& text, double power)
{
    appendFormat(text, "\trequired power\t\t:%9.3lf W case of %5.1lf rpm cadence\n", power > 0.0 ? power : 0.0,
                 modelState.cadencePoweredMax);
}

void appendMotion(std::string& text)
{
    appendFormat(text, "\tsector time\t\t\t:%9.3lf sec\n", runState.sectorTime);
    appendAcceleration(text, "mean accele", runState.accele);
    appendAcceleration(text, "-- maximal", runState.maxAccele);
    appendFormat(text, "\tdistance\t\t\t:%9.3lf m\n", runState.distance);
}

void appendDrags(std::string& text)
{
    struct DragLine {
        const char* label;
        double force, power;
    };
    const DragLine lines[] = {
        {"shell air drag", runState.shellDrag, runState.shellDragPower},
        {"human air drag", runState.humanDrag, runState.humanDragPower},
        {"wheel air drag", runState.wheelDrag, runState.wheelDragPower},
        {"total air drag", runState.airDrag, runState.airDragPower},
        {"rolling drag", runState.rollingLoad, runState.rollingPower},
        {"gradient drag", runState.slopeLoad, runState.slopePower},
    };
    text += "\n\tdiverse drag as force and power as follows:\n";
    for (const DragLine& line : lines) {
        appendFormat(text, "\t%s\t\t:%9.3lf kgf,%9.3lf W\n", line.label, line.force, line.power);
    }
}

void appendPhysiology(std::string& text)
{
    if (runState.useFtp != 0) {
        appendTrainingLevel(text);
    }
    text += "\n";
    appendIntension(text);
    appendFormat(text, "\tnormalized power\t\t:%9.3lf W\n", physiology.normalizedPower);
    appendFormat(text, "\tvariability index\t\t:%9.3lf\n", physiology.variabilityIndex);
    if (runState.useFtp != 0) {
        appendFormat(text, "\ttraning stress score\t:%9.3lf\n", physiology.trainingStressScore);
    }
    appendFormat(text, "\tenergy kilo joule\t\t:%9.3lf kJ\n", physiology.kiloJoule);
    appendFormat(text, "\tenergy kilo calorie\t:%9.3lf kcal\n", physiology.kiloCalorie);
    appendFormat(text, "\trequired food calorie\t:%9.3lf kcal except daily basal metabolism\n",
                 physiology.foodKiloCalorie);
}

void appendBrakeHeat(std::string& text)
{
    text += "\n";
    appendEnergies(text);
    text += "\n";
    appendFourHeads(text, "celsius", "heat", "radiate", "residual");
    appendBrake(text, "front", 0);
    appendBrake(text, "rear", 1);
    appendFormat(text, "\t-- outside air temperature is %4.1lf C. radiate means both of convective and radiant\n",
                 modelState.temperature);
}

} // namespace torvane
