// The sections of the profile and the condition. Labels, tabs and formats are one piece, so that columns can be read
// off the source; they line up on a pane of fixed pitch.
#include "report/profile_report.h"

#include "core/choices.h"
#include "core/shown_text.h"
#include "core/text.h"
#include "report/report_text.h"

#include <algorithm>
#include <chrono>
#include <cstring>

namespace torvane {

namespace {

void appendHuman(std::string& text, const ModelState& model)
{
    static constexpr const char* positions[] = {"aero bar", "drop position", "bracket", "top position", "dancing"};
    static_assert(1 + std::size(positions) == positionCount);
    appendFormat(text, "\thuman height\t\t:%7.1lf cm\n", model.humanHeight);
    appendFormat(text, "\thuman weight\t\t:%7.1lf kg\n", model.humanWeight);
    if (model.position != positionTorsoAngle) {
        appendFormat(text, "\tposition selected is '%s' typified torso angle as follow:\n",
                     nameAt(positions, model.position - 1));
    }
    appendFormat(text, "\ttorso angle\t\t\t:%7.1lf deg\n", model.torsoAngle);
    appendFormat(text, "\tcadence usual\t\t:%7.1lf rpm\n", model.cadenceUsual);
    appendFormat(text, "\tcadence powered max\t:%7.1lf rpm\n", model.cadencePoweredMax);
    appendFormat(text, "\tcadence shift-up\t\t:%7.1lf rpm\n", model.cadenceShiftUp);
    appendFormat(text, "\tcadence shift-down\t:%7.1lf rpm\n", model.cadenceShiftDown);
    appendFormat(text, "\tFTP\t\t\t\t:%7.1lf W\n", model.ftp);
    text += "\t-- FTP can be enabled in preference for training level and score\n";
}

// Where the rider has one; with what it was learned from, where it was learned.
void appendDragFactor(std::string& text, const Calibration& calibration)
{
    if (dragFactorOf(calibration) == 1.0)
        return;
    appendFormat(text, "\tair drag factor\t\t:%9.3lf", dragFactorOf(calibration));
    if (calibration.halfInterval > 0) {
        std::chrono::year_month_day day{std::chrono::sys_days(std::chrono::days(calibration.day))};
        appendFormat(text, " +- %.3lf, learned on %04d-%02u-%02u at %.0lf Cel", double{calibration.halfInterval},
                     static_cast<int>(day.year()), static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                     double{calibration.temperature});
    }
    text += "\n";
}

void appendEquipment(std::string& text, const ModelState& model)
{
    static constexpr const char* helmets[] = {"no helmet", "normal helmet", "aero helmet"};
    static_assert(std::size(helmets) == helmetCount);
    appendFormat(text, "\twear selected is\t\t:    '%s'\n", nameAt(wearNames, model.wear));
    appendFormat(text, "\thelmet selected is\t:    '%s'\n", nameAt(helmets, model.helmet));
    if (model.exceptWheels == 0)
        appendFormat(text, "\tequipment weight\t\t:%7.1lf kg\n", model.bikeWeight);
    else
        appendFormat(text, "\tequipment weight\t\t:%7.1lf kg except wheels\n", model.bikeWeightExceptWheels);
    if (model.shellType == shellNormal)
        appendFormat(text, "\tshell air drag ratio\t:%9.3lf normal shell\n", 1.0);
    else
        appendFormat(text, "\tshell air drag ratio\t:%9.3lf aero shell\n", model.shellAeroRatio);
}

void appendTeeth(std::string& text, const char* label, std::span<const int32_t> teeth, int32_t count)
{
    text += label;
    size_t shown = static_cast<size_t>(std::clamp<int32_t>(count, 0, static_cast<int32_t>(teeth.size())));
    for (size_t i = 0; i < shown; ++i)
        appendFormat(text, i == 0 ? "%5d, " : "%d, ", teeth[i]);
    text += "\n";
}

void appendShifting(std::string& text, const ModelState& model)
{
    appendFormat(text, "\tshifting time loss\t:%9.3lf sec\n", model.shiftTimeLoss);
    appendFormat(text, "\tcrank length\t\t:%7.1lf mm\n", model.crankLength);
    appendFormat(text, "\tchainring count\t\t:%5d\n", model.chainringCount);
    appendTeeth(text, "\tchainring teeth\t\t:", model.chainring, model.chainringCount);
    appendFormat(text, "\tsprocket count\t\t:%5d\n", model.sprocketCount);
    appendTeeth(text, "\tcluster teeth\t\t:", model.sprocket, model.sprocketCount);
}

void appendWheel(std::string& text, const ModelState& model)
{
    appendFormat(text, "\tfront wheel weight\t:%7.1lf g\n", model.wheelWeight[0]);
    appendFormat(text, "\tfront wheel size\t\t:%5d inches\n", model.wheelSize[0]);
    appendFormat(text, "\tfront wheel resist\t:%7.1lf W\n", model.wheelResist[0]);
    appendFormat(text, "\t-- case of velocity is\t:%7.1lf kph\n", model.wheelResistVelocity[0]);
    appendFormat(text, "\trear wheel weight\t\t:%7.1lf g\n", model.wheelWeight[1]);
    appendFormat(text, "\trear wheel size\t\t:%5d inches\n", model.wheelSize[1]);
    appendFormat(text, "\trear wheel resist\t\t:%7.1lf W\n", model.wheelResist[1]);
    appendFormat(text, "\t-- case of velocity is\t:%7.1lf kph\n", model.wheelResistVelocity[1]);
    text += "\tin case of resist-prediction due to wheel specifications as follows:\n";
    appendFormat(text, "\t-- front rim depth\t:%5d mm\n", model.rimDepth[0]);
    appendFormat(text, "\t-- front spoke count\t:%5d\n", model.spokeCount[0]);
    appendFormat(text, "\t-- front model year\t:%5d A.D.\n", model.modelYear[0]);
    appendFormat(text, "\t-- rear rim depth\t\t:%5d mm\n", model.rimDepth[1]);
    appendFormat(text, "\t-- rear spoke count\t:%5d\n", model.spokeCount[1]);
    appendFormat(text, "\t-- rear model year\t:%5d A.D.\n", model.modelYear[1]);
}

void appendTyre(std::string& text, const ModelState& model)
{
    appendFormat(text, "\tfront tyre size\t\t:%7.1lf mm\n", model.tyreSize[0]);
    appendFormat(text, "\tfront tyre weight\t\t:%7.1lf g\n", model.tyreWeight[0]);
    appendFormat(text, "\tfront rolling coef\t:%11.5lf\n", model.rollingCoefficient[0]);
    appendFormat(text, "\tfront friction coef\t:%9.3lf\n", model.frictionCoefficient[0]);
    appendFormat(text, "\trear tyre size\t\t:%7.1lf mm\n", model.tyreSize[1]);
    appendFormat(text, "\trear tyre weight\t\t:%7.1lf g\n", model.tyreWeight[1]);
    appendFormat(text, "\trear rolling coef\t\t:%11.5lf\n", model.rollingCoefficient[1]);
    appendFormat(text, "\trear friction coef\t:%9.3lf\n", model.frictionCoefficient[1]);
}

// Label and tabs of a brake's lines; they differ between the wheels and between the types.
struct BrakeLabels {
    const char* system;
    const char* material;
    const char* weight[2]; // rim, disc
    const char* size[2];   // rim, disc
};

constexpr BrakeLabels brakeLabels[2] = {
    {"front brake system\t",
     "front brake material\t",
     {"front rim weight\t\t", "front rotor weight\t"},
     {"front rim depth\t\t", "front rotor diameter\t"}},
    {"rear brake system\t\t",
     "rear brake material\t",
     {"rear rim weight\t\t", "rear rotor weight\t\t"},
     {"rear rim depth\t\t", "rear rotor diameter\t"}},
};

void appendBrake(std::string& text, const ModelState& model)
{
    for (int wheel = 0; wheel < wheelCount; ++wheel) {
        const BrakeLabels& labels = brakeLabels[wheel];
        int type = model.brakeType[wheel] != brakeRim ? brakeDisc : brakeRim;
        appendFormat(text, "\t%s:  %s\n", labels.system, brakeTypeNames[type]);
        appendFormat(text, "\t%s:  %s\n", labels.material,
                     nameAt(brakeMaterialNames, model.brakeMaterial[type][wheel]));
        appendFormat(text, "\t%s:%7.1lf g\n", labels.weight[type], model.brakeWeight[type][wheel]);
        appendFormat(text, "\t%s:%7.1lf mm\n", labels.size[type], model.brakeSurfaceSize[type][wheel]);
    }
}

void appendPowerLoss(std::string& text, const ModelState& model)
{
    appendFormat(text, "\tshell power loss\t\t:%7.1lf per\n", model.shellLossPercent);
    appendFormat(text, "\t-- case of torque\t\t:%7.1lf Nm\n", model.shellLossTorque);
    appendFormat(text, "\tmission power loss\t:%7.1lf per\n", model.missionLossPercent);
    appendFormat(text, "\twheel power loss\t\t:%7.1lf per\n", model.wheelLossPercent);
    appendFormat(text, "\t-- case of torque\t\t:%7.1lf Nm\n", model.wheelLossTorque);
}

// A range behind the first inactive one is not printed, even when it is active itself.
void appendAssist(std::string& text, const ModelState& model)
{
    static constexpr const char* ranges[] = {"first range", "second range", "third range"};
    static_assert(std::size(ranges) == assistRangeCount);
    if (model.motorLocation <= motorNone) {
        text += "\te-Assist Power\t\t:  none\n";
        return;
    }
    appendFormat(text, "\te-Assist Power\t\t:%7.1lf watts as maximum\n", model.maxEPower);
    for (int i = 0; i < assistRangeCount && model.assistRangeMode[i] > rangeNone; ++i) {
        bool linear = model.assistRangeMode[i] > rangeConstant;
        appendFormat(text, "\t%s\n", ranges[i]);
        appendFormat(text, "\t-- type\t\t\t:  %s\n", linear ? "linear" : "constant");
        appendFormat(text, "\t-- range\t\t\t:  ~ %5.1lf kph\n", model.assistRangeSpeed[i]);
        appendFormat(text, "\t-- ratio\t\t\t:  %5.1lf%s\n", model.assistRangeRatio[i],
                     linear ? ", at the end of range" : "");
    }
}

void appendCourse(std::string& text, const ModelState& model)
{
    appendFormat(text, "\twind speed\t\t\t:%9.3lf mps\n", model.windSpeed);
    if (model.airPressureSource == pressureComputed) {
        appendFormat(text, "\taltitude\t\t\t:%7.1lf m\n", model.altitude);
        appendFormat(text, "\ttemperature\t\t\t:%7.1lf Cel\n", model.temperature);
    } else {
        appendFormat(text, "\thecto pascal\t\t:%7.1lf hPa\n", model.hectoPascal);
    }
    appendFormat(text, "\tBPN\t\t\t\t:%5d bpn\n", model.bpn);
    appendFormat(text, "\troad surface condition is '%s'\n", nameAt(roadSurfaceNames, model.roadSurface));
}

void appendPeloton(std::string& text, const ModelState& model)
{
    if (model.pelotonMode != pelotonEntered) {
        appendFormat(text, "\tpeloton number\t\t:%5d\n", model.pelotonNumber);
        appendFormat(text, "\twheel distance\t\t:%5d cm\n", model.wheelDistance);
        appendFormat(text, "\trotation top\t\t:     %s\n", model.rotateTop != topStays ? "do" : "no");
    } else if (model.pelotonRatio < 1.0) {
        appendFormat(text, "\tair drag ratio\t\t:%11.1lf\n", model.pelotonRatio);
        appendFormat(text, "\t-- case of velocity\t:%7.1lf kph\n", model.pelotonVelocity);
    } else {
        text += "\tnot under peloton or train but alone"; // its line ends with the report's last line feed
    }
}

struct Section {
    uint32_t bit;
    const char* title;
    void (*append)(std::string& text, const ModelState& model);
};

constexpr Section profileSections[] = {
    {sectionHuman, "human build and abilities", appendHuman},
    {sectionEquipment, "principal equipment", appendEquipment},
    {sectionShifting, "shifting profile", appendShifting},
    {sectionWheel, "wheel specifications", appendWheel},
    {sectionTyre, "tyre specifications", appendTyre},
    {sectionBrake, "brake specifications", appendBrake},
    {sectionPowerLoss, "power loss of equipment", appendPowerLoss},
    {sectionAssist, "e-Assist", appendAssist},
};

constexpr Section conditionSections[] = {
    {sectionCourse, "course condition", appendCourse},
    {sectionPeloton, "air drag ratio under peloton / train", appendPeloton},
};

void reportSections(Screens& screens, Pane pane, const ModelState& model, std::string text,
                    std::span<const Section> sections, uint32_t mask, const Calibration& calibration = {})
{
    for (const Section& section : sections) {
        if ((mask & section.bit) != 0) {
            appendFormat(text, "\n %s\n\n", section.title);
            section.append(text, model);
            if (section.append == appendHuman)
                appendDragFactor(text, calibration);
        }
    }
    text += "\n";
    screens.setText(pane, "");
    handOver(screens, pane, text);
}

} // namespace

void reportProfile(Screens& screens, Pane pane, const ModelState& model, const ParameterBlock& block, uint32_t mask)
{
    std::string_view name(block.profileFileName, strnlen(block.profileFileName, sizeof block.profileFileName));
    std::string head = "\n\t\tcurrent profile   : " + shownText(name) + "\n";
    reportSections(screens, pane, model, std::move(head), profileSections, mask, block.calibration);
}

void reportCondition(Screens& screens, Pane pane, const ModelState& model, uint32_t mask)
{
    reportSections(screens, pane, model, "\n\t\tcurrent condition\n", conditionSections, mask);
}

} // namespace torvane
