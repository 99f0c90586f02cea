// Titles and order of lines of the ride reports; the blocks that they share are in ride_lines.h.
#include "report/ride_report.h"

#include "core/names.h"
#include "core/parameter_block.h"
#include "core/text.h"
#include "model/run_state.h"
#include "report/report_text.h"
#include "report/ride_lines.h"
#include "report/status_text.h"
#include "report/time_text.h"
#include "ride/ride_run.h"

#include <iterator>

namespace torvane {

namespace {

constexpr const char* steadyTargets[] = {"power", "velocity"};
constexpr const char* inclinationTargets[] = {"final velocity", "inclination"};
constexpr const char* corneringTargets[] = {"cornering velocity", "cornering line radius", "friction safty margin"};

// Targets that reports tell from the others.
constexpr int accelerationConstantPower = 8;
constexpr int decelerationPowerAtEnd = 2;
constexpr int decelerationConstantPower = 7;
enum Pattern : int { patternConstantForce, patternCriticalFull, patternConstantVelocity, patternIntermittent };

double kph(double velocity)
{
    return velocity * 3.6;
}

// Title

struct ModeTitle {
    const char* words;
    std::span<const char* const> targets;
    bool quotesReference; // the title goes on with the value of the reference factor
};

constexpr ModeTitle modeTitles[rideModeCount] = {
    {"power and velocity which calculation target is", steadyTargets, false},
    {"acceleration which calculation referer is", accelerationFactorNames, true},
    {"deceleration which calculation referer is", decelerationFactorNames, true},
    {"pattern braking", brakingPatternNames, false},
    {"inclination and velocity powered zero which calculation target is", inclinationTargets, false},
    {"critical cornering which calculation target is", corneringTargets, false},
};

std::string titleOf(const ModeTitle& mode)
{
    std::string title = formatText("%s '%s'", mode.words, nameAt(mode.targets, workingBlock.rideTarget));
    return mode.quotesReference ? title + " " + reportReference() : title;
}

// Where the road pushes harder at the ending velocity than the drag holds, the pane quotes the force that is needed
// instead of a power. A run that came to the brakes by a power below 0 quotes that power.
std::string paneTitle(const std::string& title)
{
    int target = workingBlock.rideTarget;
    bool brakes = workingBlock.rideMode == rideDeceleration && runState.thrustMode != 0 && !(runState.power < 0.0);
    if (brakes && target == decelerationPowerAtEnd) {
        return formatText("%s '%s' required %5.3lf kgf", modeTitles[rideDeceleration].words,
                          decelerationFactorNames[target], runState.thrustForce);
    }
    return title;
}

// Lines between title and status

void appendRunLimits(std::string& text)
{
    appendFormat(text, " -- inclination %5.3lf per, starting velocity is %6.3lf kph, ending velocity is %6.3lf kph\n",
                 runState.inclination, kph(runState.startVelocity), kph(runState.endVelocity));
}

// A rider whose cranks are whirled round by a gear far too low holds the wheel back as well, and is told of it so.
void appendDecelerationLimits(std::string& text)
{
    if (runState.meanStagePower[stageThrust] < 0.0 && workingBlock.rideTarget < decelerationConstantPower) {
        text += "with braking due to constant force\n";
    }
    appendRunLimits(text);
}

void appendPattern(std::string& text, ResultStatus status)
{
    const RunState& run = runState;
    double start = kph(run.startVelocity);
    double end = kph(run.endVelocity);
    appendFormat(text, " -- inclination %5.3lf per, ", run.inclination);
    switch (workingBlock.rideTarget) {
    case patternConstantForce:
        appendFormat(text, "constant force %3.1lf kgf from %3.1lf kph to %3.1lf kph\n", run.force, start, end);
        break;
    case patternCriticalFull:
        appendFormat(text, "critical full braking from %3.1lf kph to %3.1lf kph\n", start, end);
        break;
    case patternConstantVelocity:
        appendFormat(text, "velocity is constant %3.1lf kph", end);
        text += status == 0 ? formatText(" due to braking %3.1lf kgf\n", run.force) : "\n";
        break;
    default:
        appendFormat(text, "intermittent braking %3.1lf kgf to %3.1lf kph for every %3.1lf m\n", run.force, end,
                     run.intervalDistance);
    }
}

void appendLimits(std::string& text, ResultStatus status)
{
    switch (workingBlock.rideMode) {
    case rideAcceleration:
        appendRunLimits(text);
        break;
    case rideDeceleration:
        appendDecelerationLimits(text);
        break;
    case ridePatternBraking:
        appendPattern(text, status);
        break;
    }
}

// Bodies

void appendReached(std::string& text, bool stoppedShort)
{
    constexpr double leastAcceleration = 0.00025; // m/s2, at which a run is at its end
    if (stoppedShort) {
        appendFormat(text, "reached to %5.3lf kph screened under %8.6lf mpss\n", kph(runState.velocity),
                     leastAcceleration);
    }
}

void appendSteadyRide(std::string& text)
{
    appendChain(text);
    appendFormat(text, "\n\tvelocity\t\t\t:%9.3lf kph\n", kph(runState.velocity));
    appendCadence(text);
    appendRequiredPower(text, runState.peakPower[0]);
    appendDrags(text);
    appendPhysiology(text);
}

// What accelerations and decelerations have in common, from the table on.
void appendRun(std::string& text, bool requiresPower)
{
    appendRunChain(text);
    if (requiresPower) {
        appendRequiredPower(text, runState.power);
    }
    appendMotion(text);
    if (runState.peakPower[0] > 0.0) {
        appendPhysiology(text);
    }
    if (runState.thrustMode == 1) {
        appendBrakeHeat(text);
    }
}

void appendAccelerationRun(std::string& text)
{
    bool constantPower = workingBlock.rideTarget == accelerationConstantPower;
    appendReached(text, runState.velocity < runState.endVelocity);
    if (constantPower) {
        text += "\tacceleration refered constant power is not realistic simulation but chimerical one\n"
                "\tat least while low velocity cause the power is converted due to the cadence\n\n";
    }
    appendRun(text, !constantPower);
}

void appendDecelerationRun(std::string& text)
{
    bool constantPower = workingBlock.rideTarget == decelerationConstantPower;
    appendReached(text, runState.velocity > runState.endVelocity);
    if (constantPower && runState.power < 0.0) {
        text += "\tdeceleration with braking refered constant power is not realistic simulation\n"
                "\tbut chimerical one at least while low velocity\n"
                "\tcause the braking power is converted due to the wheel cadence\n\n";
    }
    appendRun(text, !constantPower && runState.peakPower[stageThrust] > 0.0);
}

void appendBrakingRun(std::string& text)
{
    if (workingBlock.rideTarget <= patternCriticalFull) {
        appendReached(text, runState.velocity > runState.endVelocity);
        appendBrakingRow(text);
        appendMotion(text);
    } else {
        int32_t seconds = wholeSeconds(runState.sectorTime + 0.5);
        appendFormat(text, "\tin case of distance(moving) is %1.0lf m, time is %d sec(%s) as follows:\n",
                     runState.totalDistance, seconds, hms(seconds).c_str());
    }
    appendBrakeHeat(text);
}

void appendRollingRun(std::string& text)
{
    const RunState& run = runState;
    double start = kph(run.startVelocity);
    if (run.inclinationLimit == 1) {
        appendFormat(text, "-- starting velocity is %6.3lf kph, limitted %6.3lf m\n", start, run.distance);
    } else if (run.inclinationLimit == 2) {
        appendFormat(text, "-- starting velocity is %6.3lf kph, limitted %6.3lf sec\n", start, run.sectorTime);
    }
    appendFormat(text, "\tinclination\t\t\t:%9.3lf per\n", run.inclination);
    if (run.inclinationLimit == 0) {
        appendFormat(text, "\tfinal poised velocity\t:%9.3lf kph\n", kph(run.velocity));
        appendDrags(text);
    } else {
        appendFormat(text, "\tending velocity\t\t:%9.3lf kph\n", kph(run.velocity));
        appendFormat(text, "\n\tsector time\t\t\t:%9.3lf sec\n", run.sectorTime);
        appendFormat(text, "\tdistance\t\t\t:%9.3lf m\n", run.distance);
    }
}

void appendCornering(std::string& text)
{
    appendFormat(text, "\tcornering velocity\t:%9.3lf kph\n", kph(runState.velocity));
    appendFormat(text, "\tcornering line radius\t:%9.3lf m\n", runState.corneringRadius);
    appendFormat(text, "\tfriction safty margin\t:%9.3lf (ratio)\n", runState.safetyMargin);
    if (runState.safetyMargin < 0.0) {
        text += "\tminor friction safty margin means over velocity and the bike would slip and fall\n";
    }
    appendChain(text);
    appendCadence(text);
    appendRequiredPower(text, runState.peakPower[0]);
}

constexpr void (*bodies[rideModeCount])(std::string& text) = {
    appendSteadyRide, appendAccelerationRun, appendDecelerationRun, appendBrakingRun, appendRollingRun, appendCornering,
};

// Reference factors, by the order of an acceleration's.
struct Reference {
    const char* format;
    double RunState::*value;
};

constexpr Reference references[] = {
    {"%5.3lf W", &RunState::power},     {"%5.3lf W", &RunState::meanPower},    {"%5.3lf W", &RunState::power},
    {"%5.3lf W", &RunState::meanPower}, {"%5.3lf sec", &RunState::sectorTime}, {"%5.1lf m", &RunState::distance},
    {"%5.3lf mpss", &RunState::accele}, {"%5.3lf G", &RunState::gravity},      {"%5.3lf W", &RunState::power},
};

} // namespace

std::string reportReference()
{
    int index = workingBlock.rideTarget;
    if (workingBlock.rideMode == rideDeceleration && index >= 3) {
        ++index; // a deceleration has no "PEV as mean"
    }
    if (index < 0 || index >= static_cast<int>(std::size(references))) {
        return {};
    }
    return formatText(references[index].format, runState.*references[index].value);
}

void reportRide(Screens& screens, ResultStatus status)
{
    int mode = workingBlock.rideMode;
    if (mode < 0 || mode >= rideModeCount) {
        return;
    }
    std::string title = titleOf(modeTitles[mode]);
    screens.setText(Pane::lower, "");
    screens.setStatus("status : " + title + statusTail(status));
    std::string text = "\n " + paneTitle(title) + "\n";
    appendLimits(text, status);
    text += rideStatusLines(status);
    if (!isFatal(status)) {
        bodies[mode](text);
        text += "\n";
    }
    handOver(screens, Pane::lower, text);
}

} // namespace torvane
