#include "report/theory_report.h"

#include "core/text.h"
#include "core/units.h"
#include "report/report_text.h"
#include "report/status_text.h"

namespace torvane {

namespace {

// Some words differ from those of the dialogs.
constexpr const char* cadenceTargets[] = {"cadence", "power", "cadence powered max", "maximal power"};
constexpr const char* pedalingTargets[] = {"cadence", "power", "torque, forca"};
constexpr const char* gearTargets[] = {"cadence", "velocity", "gear teeth"};
static_assert(std::size(cadenceTargets) == cadenceTargetCount && std::size(pedalingTargets) == pedalingTargetCount &&
              std::size(gearTargets) == gearTargetCount);

struct CalculatorTitle {
    const char* name;
    std::span<const char* const> targets;
};

constexpr CalculatorTitle titles[calculatorCount] = {
    {"cadence theory", cadenceTargets},
    {"pedaling dynamics", pedalingTargets},
    {"gear combination", gearTargets},
};

std::string theoryTitle(const Theory& theory)
{
    const CalculatorTitle& title = titles[theory.calculator];
    return formatText("%s which calculation target is '%s'", title.name, nameAt(title.targets, theory.target));
}

void setTheoryStatus(Screens& screens, const Theory& theory, ResultStatus status)
{
    screens.setStatus("status : " + theoryTitle(theory) + statusTail(status));
}

void appendTorqueAndForce(std::string& text, const Theory& theory)
{
    appendFormat(text, "\t-- torque\t\t\t:%7.1lf Nm\n", theory.torque);
    appendFormat(text, "\t-- force\t\t\t:%7.1lf kgf\n", theory.force);
    appendFormat(text, "\tcadence powered max\t:%7.1lf rpm\n", theory.cadenceMax);
}

void appendPedaling(std::string& text, const Theory& theory)
{
    appendFormat(text, "\tcadence\t\t\t:%7.1lf rpm\n", theory.cadence);
    appendFormat(text, "\tpedaling power\t\t:%7.1lf W\n", theory.power);
    appendTorqueAndForce(text, theory);
    appendFormat(text, "\tmaximal power\t\t:%7.1lf W\n", theory.maxPower);
}

void appendGears(std::string& text, const Theory& theory)
{
    appendFormat(text, "\tcadence\t\t\t:%7.1lf rpm\n", theory.cadence);
    appendFormat(text, "\tvelocity\t\t\t:%7.1lf kph\n", theory.velocity * kphPerMps);
    appendFormat(text, "\tfront chainring tooth\t:%5d\n", theory.frontTooth);
    appendFormat(text, "\trear cluster tooth\t:%5d\n", theory.rearTooth);
    appendFormat(text, "\tgear ratio\t\t\t:%9.3lf\n", theory.gearRatio);
    if (theory.target != gearTargetTeeth)
        return;
    // The ratio answers the cadence as entered.
    appendFormat(text, "\texpected gear ratio\t:%9.3lf case of %4.1lf rpm\n", theory.expectedRatio,
                 theory.askedCadence);
    if (theory.useMissionProfile == 0) {
        text += "\t-- case of unuse current mission profile,\n"
                "\t-- teeth coverage both of chainring and cluster are same as current profile\n";
    }
}

} // namespace

void reportTheoryResult(Screens& screens, const Theory& theory, ResultStatus status)
{
    screens.setText(Pane::lower, "");
    setTheoryStatus(screens, theory, status);
    std::string text = "\n " + theoryTitle(theory) + "\n" + theoryStatusLines(status);
    if (!isFatal(status)) {
        text += "\n";
        auto append = theory.calculator == calculatorGears ? appendGears : appendPedaling;
        append(text, theory);
    }
    handOver(screens, Pane::lower, text);
}

void reportTheoryReal(Screens& screens, const Theory& theory, ResultStatus status)
{
    setTheoryStatus(screens, theory, status);
    std::string text = formatText("\treal performance with inclination %5.3lf per and current profile as follows:\n",
                                  theory.road.inclination);
    text += theoryStatusLines(status);
    if (!isFatal(status)) {
        if (theory.calculator == calculatorGears) {
            appendFormat(text, "\tpedaling power\t\t:%7.1lf W\n", theory.power);
        } else {
            appendFormat(text, "\tvelocity\t\t\t:%7.1lf kph for the power\n", theory.velocity * kphPerMps);
            appendFormat(text, "\texpected cadence\t\t:%7.1lf rpm, geared %2d/%2d ratio %5.3lf\n", theory.cadence,
                         theory.frontTooth, theory.rearTooth, theory.gearRatio);
        }
        appendTorqueAndForce(text, theory);
        appendFormat(text, "\t-- required power\t\t:%7.1lf W\n", theory.maxPower);
    }
    handOver(screens, Pane::lower, text);
}

} // namespace torvane
