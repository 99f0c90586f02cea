#include "report/theory_report.h"

#include "core/parameter_block.h"
#include "core/text.h"
#include "model/run_state.h"
#include "report/report_text.h"
#include "report/status_text.h"

namespace torvane {

namespace {

enum Calculator : int { cadenceTheory, pedalingDynamics, gearCombination };
constexpr int targetGearTeeth = 2; // of the gear combination

constexpr const char* cadenceTargets[] = {"cadence", "power", "cadence powered max", "maximal power"};
constexpr const char* pedalingTargets[] = {"cadence", "power", "torque, forca"};
constexpr const char* gearTargets[] = {"cadence", "velocity", "gear teeth"};

struct CalculatorTitle {
    const char* name;
    std::span<const char* const> targets;
};

constexpr CalculatorTitle titles[theoryCount] = {
    {"cadence theory", cadenceTargets},
    {"pedaling dynamics", pedalingTargets},
    {"gear combination", gearTargets},
};

bool knownCalculator()
{
    return workingBlock.theoryCalculator >= 0 && workingBlock.theoryCalculator < theoryCount;
}

std::string theoryTitle()
{
    const CalculatorTitle& title = titles[workingBlock.theoryCalculator];
    return formatText("%s which calculation target is '%s'", title.name,
                      nameAt(title.targets, workingBlock.theoryTarget));
}

void setTheoryStatus(Screens& screens, ResultStatus status)
{
    screens.setStatus("status : " + theoryTitle() + statusTail(status));
}

void appendTorqueAndForce(std::string& text)
{
    appendFormat(text, "\t-- torque\t\t\t:%7.1lf Nm\n", runState.torque);
    appendFormat(text, "\t-- force\t\t\t:%7.1lf kgf\n", runState.force);
    appendFormat(text, "\tcadence powered max\t:%7.1lf rpm\n", runState.cadenceMax);
}

void appendPedaling(std::string& text)
{
    appendFormat(text, "\tcadence\t\t\t:%7.1lf rpm\n", runState.cadence);
    appendFormat(text, "\tpedaling power\t\t:%7.1lf W\n", runState.power);
    appendTorqueAndForce(text);
    appendFormat(text, "\tmaximal power\t\t:%7.1lf W\n", runState.maxPower);
}

void appendGears(std::string& text)
{
    appendFormat(text, "\tcadence\t\t\t:%7.1lf rpm\n", runState.cadence);
    appendFormat(text, "\tvelocity\t\t\t:%7.1lf kph\n", runState.velocity * 3.6);
    appendFormat(text, "\tfront chainring tooth\t:%5d\n", runState.frontTooth);
    appendFormat(text, "\trear cluster tooth\t:%5d\n", runState.rearTooth);
    appendFormat(text, "\tgear ratio\t\t\t:%9.3lf\n", runState.gearRatio);
    if (workingBlock.theoryTarget != targetGearTeeth) {
        return;
    }
    // The ratio answers the cadence as entered; runState.cadence has moved on to the gear found.
    appendFormat(text, "\texpected gear ratio\t:%9.3lf case of %4.1lf rpm\n", runState.expectedRatio,
                 workingBlock.theoryCadence[gearCombination]);
    if (runState.useMissionProfile == 0) {
        text += "\t-- case of unuse current mission profile,\n"
                "\t-- teeth coverage both of chainring and cluster are same as current profile\n";
    }
}

} // namespace

void reportTheoryResult(Screens& screens, ResultStatus status)
{
    if (!knownCalculator()) {
        return;
    }
    screens.setText(Pane::lower, "");
    setTheoryStatus(screens, status);
    std::string text = "\n " + theoryTitle() + "\n" + theoryStatusLines(status);
    if (!isFatal(status)) {
        text += "\n";
        auto append = workingBlock.theoryCalculator == gearCombination ? appendGears : appendPedaling;
        append(text);
    }
    handOver(screens, Pane::lower, text);
}

void reportTheoryReal(Screens& screens, ResultStatus status)
{
    if (!knownCalculator()) {
        return;
    }
    setTheoryStatus(screens, status);
    std::string text = formatText("\treal performance with inclination %5.3lf per and current profile as follows:\n",
                                  runState.inclination);
    text += theoryStatusLines(status);
    if (!isFatal(status)) {
        if (workingBlock.theoryCalculator == gearCombination) {
            appendFormat(text, "\tpedaling power\t\t:%7.1lf W\n", runState.power);
        } else {
            appendFormat(text, "\tvelocity\t\t\t:%7.1lf kph for the power\n", runState.velocity * 3.6);
            appendFormat(text, "\texpected cadence\t\t:%7.1lf rpm, geared %2d/%2d ratio %5.3lf\n", runState.cadence,
                         runState.frontTooth, runState.rearTooth, runState.gearRatio);
        }
        appendTorqueAndForce(text);
        appendFormat(text, "\t-- required power\t\t:%7.1lf W\n", runState.maxPower);
    }
    handOver(screens, Pane::lower, text);
}

} // namespace torvane
