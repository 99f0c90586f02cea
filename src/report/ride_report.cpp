// Titles and order of lines of the ride reports; the blocks that they share are in ride_lines.h.
#include "report/ride_report.h"

#include "core/text.h"
#include "core/units.h"
#include "report/report_text.h"
#include "report/ride_figures.h"
#include "report/ride_lines.h"
#include "report/status_text.h"
#include "report/time_text.h"

#include <iterator>

namespace torvane {

namespace {

constexpr const char* corneringTargets[] = {"cornering velocity", "cornering line radius", "friction safty margin"};
static_assert(std::size(corneringTargets) == corneringTargetCount);

double kph(double velocity)
{
    return velocity * kphPerMps;
}

// Title

struct ModeTitle {
    const char* words;
    std::span<const char* const> targets;
    bool quotesReference; // the title goes on with the value of the reference factor
};

constexpr ModeTitle modeTitles[rideModeCount] = {
    {"power and velocity which calculation target is", steadyTargetNames, false},
    {"acceleration which calculation referer is", accelerationFactorNames, true},
    {"deceleration which calculation referer is", decelerationFactorNames, true},
    {"pattern braking", brakingPatternNames, false},
    {"inclination and velocity powered zero which calculation target is", inclinationTargetNames, false},
    {"critical cornering which calculation target is", corneringTargets, false},
};

std::string titleOf(const RideRun& ride)
{
    const ModeTitle& mode = modeTitles[ride.in.rideMode];
    std::string title = formatText("%s '%s'", mode.words, nameAt(mode.targets, ride.in.rideTarget));
    return mode.quotesReference ? title + " " + reportReference(ride) : title;
}

// Where the road pushes harder at the ending velocity than the drag holds, the pane quotes the force that is needed
// instead of a power. A run that came to the brakes by a power below 0 quotes that power.
std::string paneTitle(const RideRun& ride, const std::string& title)
{
    int target = ride.in.rideTarget;
    bool brakes = ride.in.rideMode == rideDeceleration && ride.found.drive.thrustMode == thrustByBraking &&
                  !(ride.found.power < 0.0);
    if (brakes && target == decelerationEndingVelocity) {
        return formatText("%s '%s' required %5.3lf kgf", modeTitles[rideDeceleration].words,
                          decelerationFactorNames[target], ride.now.thrustForce);
    }
    return title;
}

// Lines between title and status

void appendRunLimits(std::string& text, const RideRun& ride)
{
    appendFormat(text, " -- inclination %5.3lf per, starting velocity is %6.3lf kph, ending velocity is %6.3lf kph\n",
                 ride.now.inclination, kph(ride.in.startVelocity), kph(ride.in.endVelocity));
}

// A rider whose cranks are whirled round by a gear far too low holds the wheel back as well, and is told of it so.
void appendDecelerationLimits(std::string& text, const RideRun& ride)
{
    if (ride.found.meanStagePower[stageThrust] < 0.0 && ride.in.rideTarget < decelerationConstantPower)
        text += "with braking due to constant force\n";
    appendRunLimits(text, ride);
}

void appendPattern(std::string& text, const RideRun& ride)
{
    double start = kph(ride.in.startVelocity);
    double end = kph(ride.in.endVelocity);
    appendFormat(text, " -- inclination %5.3lf per, ", ride.now.inclination);
    switch (ride.in.rideTarget) {
    case patternConstantForce:
        appendFormat(text, "constant force %3.1lf kgf from %3.1lf kph to %3.1lf kph\n", ride.found.force, start, end);
        break;
    case patternCriticalFull:
        appendFormat(text, "critical full braking from %3.1lf kph to %3.1lf kph\n", start, end);
        break;
    case patternConstantVelocity:
        appendFormat(text, "velocity is constant %3.1lf kph", end);
        text += ride.status == statusDone ? formatText(" due to braking %3.1lf kgf\n", ride.found.force) : "\n";
        break;
    default:
        appendFormat(text, "intermittent braking %3.1lf kgf to %3.1lf kph for every %3.1lf m\n", ride.found.force, end,
                     ride.in.intervalDistance);
    }
}

void appendLimits(std::string& text, const RideRun& ride)
{
    switch (ride.in.rideMode) {
    case rideAcceleration:
        appendRunLimits(text, ride);
        break;
    case rideDeceleration:
        appendDecelerationLimits(text, ride);
        break;
    case ridePatternBraking:
        appendPattern(text, ride);
        break;
    }
}

// Bodies

void appendReached(std::string& text, const RideRun& ride, bool stoppedShort)
{
    if (stoppedShort) {
        appendFormat(text, "reached to %5.3lf kph screened under %8.6lf mpss\n", kph(ride.found.velocity),
                     leastAcceleration);
    }
}

void appendSteadyRide(std::string& text, const RideRun& ride)
{
    appendChain(text, ride);
    appendFormat(text, "\n\tvelocity\t\t\t:%9.3lf kph\n", kph(ride.found.velocity));
    appendCadence(text, ride);
    appendRequiredPower(text, ride, ride.found.requiredPower);
    appendDrags(text, ride);
    appendPhysiology(text, ride);
}

// What accelerations and decelerations have in common, from the table on.
void appendRun(std::string& text, const RideRun& ride, bool requiresPower)
{
    appendRunChain(text, ride);
    if (requiresPower)
        appendRequiredPower(text, ride, ride.found.power);
    appendMotion(text, ride);
    if (ride.found.peakPower[stagePedaling] > 0.0)
        appendPhysiology(text, ride);
    if (ride.found.drive.thrustMode == thrustByBraking)
        appendBrakeHeat(text, ride);
}

void appendAccelerationRun(std::string& text, const RideRun& ride)
{
    bool constantPower = ride.in.rideTarget == accelerationConstantPower;
    appendReached(text, ride, ride.found.velocity < ride.in.endVelocity);
    if (constantPower) {
        text += "\tacceleration refered constant power is not realistic simulation but chimerical one\n"
                "\tat least while low velocity cause the power is converted due to the cadence\n\n";
    }
    appendRun(text, ride, !constantPower);
}

void appendDecelerationRun(std::string& text, const RideRun& ride)
{
    bool constantPower = ride.in.rideTarget == decelerationConstantPower;
    appendReached(text, ride, ride.found.velocity > ride.in.endVelocity);
    if (constantPower && ride.found.power < 0.0) {
        text += "\tdeceleration with braking refered constant power is not realistic simulation\n"
                "\tbut chimerical one at least while low velocity\n"
                "\tcause the braking power is converted due to the wheel cadence\n\n";
    }
    appendRun(text, ride, !constantPower && ride.found.peakPower[stageThrust] > 0.0);
}

void appendBrakingRun(std::string& text, const RideRun& ride)
{
    if (ride.in.rideTarget <= patternCriticalFull) {
        appendReached(text, ride, ride.found.velocity > ride.in.endVelocity);
        appendBrakingRow(text, ride);
        appendMotion(text, ride);
    } else {
        int32_t seconds = wholeSeconds(ride.found.sectorTime + 0.5);
        appendFormat(text, "\tin case of distance(moving) is %1.0lf m, time is %d sec(%s) as follows:\n",
                     ride.in.totalDistance, seconds, hms(seconds).c_str());
    }
    appendBrakeHeat(text, ride);
}

void appendRollingRun(std::string& text, const RideRun& ride)
{
    double start = kph(ride.in.startVelocity);
    if (ride.in.inclinationLimit == limitDistance)
        appendFormat(text, "-- starting velocity is %6.3lf kph, limitted %6.3lf m\n", start, ride.found.distance);
    else if (ride.in.inclinationLimit == limitTime)
        appendFormat(text, "-- starting velocity is %6.3lf kph, limitted %6.3lf sec\n", start, ride.found.sectorTime);
    appendFormat(text, "\tinclination\t\t\t:%9.3lf per\n", ride.now.inclination);
    if (ride.in.inclinationLimit == limitNone) {
        appendFormat(text, "\tfinal poised velocity\t:%9.3lf kph\n", kph(ride.found.velocity));
        appendDrags(text, ride);
    } else {
        appendFormat(text, "\tending velocity\t\t:%9.3lf kph\n", kph(ride.found.velocity));
        appendFormat(text, "\n\tsector time\t\t\t:%9.3lf sec\n", ride.found.sectorTime);
        appendFormat(text, "\tdistance\t\t\t:%9.3lf m\n", ride.found.distance);
    }
}

void appendCornering(std::string& text, const RideRun& ride)
{
    appendFormat(text, "\tcornering velocity\t:%9.3lf kph\n", kph(ride.found.velocity));
    appendFormat(text, "\tcornering line radius\t:%9.3lf m\n", ride.found.corneringRadius);
    appendFormat(text, "\tfriction safty margin\t:%9.3lf (ratio)\n", ride.found.safetyMargin);
    if (ride.found.safetyMargin < 0.0)
        text += "\tminor friction safty margin means over velocity and the bike would slip and fall\n";
    appendChain(text, ride);
    appendCadence(text, ride);
    appendRequiredPower(text, ride, ride.found.requiredPower);
}

constexpr void (*bodies[rideModeCount])(std::string& text, const RideRun& ride) = {
    appendSteadyRide, appendAccelerationRun, appendDecelerationRun, appendBrakingRun, appendRollingRun, appendCornering,
};

// Reference factors, by the order of an acceleration's.
struct Reference {
    const char* format;
    double RideFigures::*value; // null: the gravity asked for
};

constexpr Reference references[] = {
    {"%5.3lf W", &RideFigures::power},        {"%5.3lf W", &RideFigures::meanPower},
    {"%5.3lf W", &RideFigures::power},        {"%5.3lf W", &RideFigures::meanPower},
    {"%5.3lf sec", &RideFigures::sectorTime}, {"%5.1lf m", &RideFigures::distance},
    {"%5.3lf mpss", &RideFigures::accele},    {"%5.3lf G", nullptr},
    {"%5.3lf W", &RideFigures::power},
};

} // namespace

std::string reportReference(const RideRun& ride)
{
    int index = ride.in.rideTarget;
    if (ride.in.rideMode == rideDeceleration && index >= decelerationSectorTime)
        ++index; // a deceleration has no "PEV as mean"
    if (index < 0 || index >= static_cast<int>(std::size(references)))
        return {};
    const Reference& reference = references[index];
    return formatText(reference.format, reference.value != nullptr ? ride.found.*reference.value : ride.in.gravity);
}

void reportRide(Screens& screens, const RideRun& ride)
{
    std::string title = titleOf(ride);
    screens.setText(Pane::lower, "");
    screens.setStatus("status : " + title + statusTail(ride.status));
    std::string text = "\n " + paneTitle(ride, title) + "\n";
    appendLimits(text, ride);
    text += rideStatusLines(ride);
    if (!isFatal(ride.status)) {
        bodies[ride.in.rideMode](text, ride);
        text += "\n";
    }
    handOver(screens, Pane::lower, text);
}

} // namespace torvane
