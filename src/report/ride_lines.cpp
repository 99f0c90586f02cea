#include "report/ride_lines.h"

#include "core/text.h"
#include "core/units.h"
#include "model/constants.h"
#include "report/time_text.h"

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

bool thrustInKiloWatt(const RideRun& ride)
{
    return std::fabs(ride.found.peakPower[stageThrust]) >= kiloFrom;
}

void appendRunRow(std::string& text, const RideRun& ride, const char* label, double mean, double peak, double torque,
                  double force)
{
    if (thrustInKiloWatt(ride)) {
        appendFormat(text, "\t%s:%9.3lf kW ,%9.3lf kW ,%9.3lf Nm ,%9.3lf kgf\n", label, mean / 1000.0, peak / 1000.0,
                     torque, force);
    } else {
        appendFormat(text, "\t%s:%9.3lf W  ,%9.3lf W  ,%9.3lf Nm ,%9.3lf kgf\n", label, mean, peak, torque, force);
    }
}

void appendRunStage(std::string& text, const RideRun& ride, const char* label, int stage)
{
    appendRunRow(text, ride, label, ride.found.meanStagePower[stage], ride.found.peakPower[stage],
                 ride.found.meanStageTorque[stage], ride.found.meanStageForce[stage]);
}

void appendFourHeads(std::string& text, const char* first, const char* second, const char* third, const char* fourth)
{
    appendFormat(text, "\t\t\t\t\t %9s    ,%9s    ,%9s    ,%9s\n", first, second, third, fourth);
}

void appendAcceleration(std::string& text, const char* label, double accele)
{
    appendFormat(text, "\t%s\t\t\t:%9.3lfmpss,%9.3lfkphs,%9.3lf G\n", label, accele, accele * kphPerMps,
                 accele / standardGravity);
}

void appendTrainingLevel(std::string& text, const RideRun& ride)
{
    int row = std::clamp(ride.physiology.level, 1, static_cast<int>(std::size(trainingLevels))) - 1;
    const TrainingLevel& level = trainingLevels[row];
    text += "\n";
    if (row > 0) {
        appendFormat(text, "\tupper limit of traning time is %s%s\n", hms(level.upperLimit).c_str(),
                     level.asOneInterval ? " as one interval" : "");
    }
    appendFormat(text, "\tpower traning level\t:  Lv%d, %s for ftp %5.1lfW\n", row + 1, level.name,
                 ride.model.state.ftp);
    appendFormat(text, "\tintensity factor\t\t:%9.3lf\n", ride.physiology.intensityFactor);
}

void appendIntension(std::string& text, const RideRun& ride)
{
    if (ride.in.rideMode == ridePowerAndVelocity) {
        appendFormat(text, "\tphysiological factors in case of %s as follows:\n",
                     intensionText(ride.physiology.length).c_str());
    } else if (ride.in.rideMode == rideAcceleration) {
        appendFormat(text, "\tphysiological factors in case of %5.3lfm per %5.3lfsec as follows:\n",
                     ride.found.distance, ride.found.sectorTime);
    }
}

struct EnergyLine {
    const char* label;
    double RideFigures::*joule;
};

constexpr EnergyLine energyLines[] = {
    {"air drag quantity\t\t", &RideFigures::airDragQuantity},
    {"rolling drag quantity\t", &RideFigures::rollingDragQuantity},
    {"potential energy\t\t", &RideFigures::potentialEnergy},
    {"starting kinetic energy\t", &RideFigures::startKineticEnergy},
    {"ending kinetic energy\t", &RideFigures::endKineticEnergy},
};

void appendEnergies(std::string& text, const RideRun& ride)
{
    bool kilo = std::any_of(std::begin(energyLines), std::end(energyLines),
                            [&](const EnergyLine& line) { return ride.found.*line.joule >= kiloFrom; });
    for (const EnergyLine& line : energyLines) {
        double joule = ride.found.*line.joule;
        appendFormat(text, "\t%s:%9.3lf %s\n", line.label, kilo ? joule / 1000.0 : joule, kilo ? "kJ" : "J");
    }
}

// The heat of the front brake alone decides on the unit of both.
void appendBrake(std::string& text, const RideRun& ride, const char* name, int wheel)
{
    bool kilo = ride.heat.brakeHeat[0] >= kiloFrom;
    double scale = kilo ? 1000.0 : 1.0;
    double heat = ride.heat.brakeHeat[wheel];
    double radiated = ride.heat.brakeRadiated[wheel];
    const char* unit = kilo ? "kJ " : "J  ";
    appendFormat(text, "\tbrake heat%s\t\t:%9.1lf C  ,%9.3lf %s,%9.3lf %s,%9.3lf %s\n", name,
                 ride.heat.brakeTemperature[wheel], heat / scale, unit, radiated / scale, unit,
                 (heat + radiated) / scale, kilo ? "kJ" : "J");
}

} // namespace

void appendChain(std::string& text, const RideRun& ride)
{
    const Evaluation& now = ride.now;
    appendFormat(text, "\t\t\t\t\t %9s    ,%9s    ,%9s\n", "power", "torque", "force");
    appendChainRow(text, stageLabels[stagePedaling], now.pedalingPower, now.pedalingTorque, now.pedalingForce);
    appendChainRow(text, stageLabels[stageCrank], now.crankPower, now.crankTorque, now.crankForce);
    appendChainRow(text, stageLabels[stageHub], now.hubPower, now.hubTorque, now.hubForce);
    appendChainRow(text, stageLabels[stageThrust], now.thrustPower, now.thrustTorque, now.thrustForce);
    if (ride.model.state.motorLocation > motorNone)
        appendChainRow(text, assistLabel, now.assistPower, now.assistTorque, now.assistForce);
}

void appendRunChain(std::string& text, const RideRun& ride)
{
    appendFourHeads(text, "mean", "maximal", "torque", "force");
    for (int stage = 0; stage < stageCount; ++stage)
        appendRunStage(text, ride, stageLabels[stage], stage);
    if (ride.model.state.motorLocation > motorNone) {
        appendRunRow(text, ride, assistLabel, ride.found.assistMeanPower, ride.found.assistPeakPower,
                     ride.found.assistMeanTorque, ride.found.assistMeanForce);
    }
}

void appendBrakingRow(std::string& text, const RideRun& ride)
{
    appendFourHeads(text, "mean", "maximal", "torque", "force");
    appendRunStage(text, ride, "braking thrust power\t", stageThrust);
}

void appendCadence(std::string& text, const RideRun& ride)
{
    appendFormat(text, "\tcadence\t\t\t:%9.3lf rpm geared %2d/%2d\n", ride.now.cadence, ride.now.currentFrontTooth,
                 ride.now.currentRearTooth);
}

void appendRequiredPower(std::string& text, const RideRun& ride, double power)
{
    appendFormat(text, "\trequired power\t\t:%9.3lf W case of %5.1lf rpm cadence\n", power > 0.0 ? power : 0.0,
                 ride.model.state.cadencePoweredMax);
}

void appendMotion(std::string& text, const RideRun& ride)
{
    appendFormat(text, "\tsector time\t\t\t:%9.3lf sec\n", ride.found.sectorTime);
    appendAcceleration(text, "mean accele", ride.found.accele);
    appendAcceleration(text, "-- maximal", ride.found.maxAccele);
    appendFormat(text, "\tdistance\t\t\t:%9.3lf m\n", ride.found.distance);
}

void appendDrags(std::string& text, const RideRun& ride)
{
    const Evaluation& now = ride.now;
    struct DragLine {
        const char* label;
        double force, power;
    };
    const DragLine lines[] = {
        {"shell air drag", now.shellDrag, now.shellDragPower}, {"human air drag", now.humanDrag, now.humanDragPower},
        {"wheel air drag", now.wheelDrag, now.wheelDragPower}, {"total air drag", now.airDrag, now.airDragPower},
        {"rolling drag", now.rollingLoad, now.rollingPower},   {"gradient drag", now.slopeLoad, now.slopePower},
    };
    text += "\n\tdiverse drag as force and power as follows:\n";
    for (const DragLine& line : lines)
        appendFormat(text, "\t%s\t\t:%9.3lf kgf,%9.3lf W\n", line.label, line.force, line.power);
}

void appendPhysiology(std::string& text, const RideRun& ride)
{
    const PhysiologyFigures& body = ride.physiology;
    if (ride.in.physiology.useFtp != 0)
        appendTrainingLevel(text, ride);
    text += "\n";
    appendIntension(text, ride);
    appendFormat(text, "\tnormalized power\t\t:%9.3lf W\n", body.normalizedPower);
    appendFormat(text, "\tvariability index\t\t:%9.3lf\n", body.variabilityIndex);
    if (ride.in.physiology.useFtp != 0)
        appendFormat(text, "\ttraning stress score\t:%9.3lf\n", body.trainingStressScore);
    appendFormat(text, "\tenergy kilo joule\t\t:%9.3lf kJ\n", body.kiloJoule);
    appendFormat(text, "\tenergy kilo calorie\t:%9.3lf kcal\n", body.kiloCalorie);
    appendFormat(text, "\trequired food calorie\t:%9.3lf kcal except daily basal metabolism\n", body.foodKiloCalorie);
}

void appendBrakeHeat(std::string& text, const RideRun& ride)
{
    text += "\n";
    appendEnergies(text, ride);
    text += "\n";
    appendFourHeads(text, "celsius", "heat", "radiate", "residual");
    appendBrake(text, ride, "front", 0);
    appendBrake(text, ride, "rear", 1);
    appendFormat(text, "\t-- outside air temperature is %4.1lf C. radiate means both of convective and radiant\n",
                 ride.model.state.temperature);
}

} // namespace torvane
