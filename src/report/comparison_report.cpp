#include "report/comparison_report.h"

#include "core/screens.h"
#include "core/text.h"
#include "report/fit_report.h"
#include "report/report_text.h"

#include <string>

namespace torvane {

namespace {

// Second over first, as a number with two places, or a dash.
std::string ratioText(const double (&powers)[2])
{
    return powers[0] > 0 ? formatText("%.3f", powers[1] / powers[0]) : "-";
}

std::string correlationText(const PowerComparison& comparison)
{
    return comparison.windows >= leastWindows ? formatText("%.3f", comparison.correlation) : "-";
}

void appendPowers(std::string& text, const char* label, const double (&powers)[2])
{
    appendFormat(text, "\t%-24s: first %.1f, second %.1f watts, ratio %s\n", label, powers[0], powers[1],
                 ratioText(powers).c_str());
}

void appendWhole(std::string& text, const RideComparison& comparison)
{
    const PowerComparison& whole = comparison.whole;
    appendFormat(text, "\tcommon seconds          : %u; in the first alone %u, in the second alone %u\n", whole.seconds,
                 comparison.alone[0], comparison.alone[1]);
    appendPowers(text, "mean power", whole.mean);
    if (whole.normalised[0] > 0)
        appendPowers(text, "normalised power", whole.normalised);
    appendFormat(text, "\tcorrelation             : %s, of %u means over %u s\n", correlationText(whole).c_str(),
                 whole.windows, comparisonWindow);
}

void appendSector(std::string& text, size_t number, const PowerComparison& sector)
{
    appendFormat(text, "\t%4d  %s %8u %9.1f %9.1f %7s %9.1f %9.1f %11s\n", static_cast<int>(number),
                 formatTimeOfDay(sector.start).c_str(), sector.seconds, sector.mean[0], sector.mean[1],
                 ratioText(sector.mean).c_str(), sector.normalised[0], sector.normalised[1],
                 correlationText(sector).c_str());
}

void appendSectors(Screens& screens, std::string& text, const RideComparison& comparison)
{
    if (comparison.sectors.empty())
        return;
    text += "\n sectors of a minute or more, powers in watts\n\n";
    text += "\t  no     start  seconds      mean      mean   ratio      norm      norm correlation\n";
    size_t number = 0;
    for (const PowerComparison& sector : comparison.sectors) {
        appendSector(text, ++number, sector);
        handOverWhenLarge(screens, Pane::lower, text);
    }
}

} // namespace

void reportComparison(Screens& screens, const RideComparison& comparison, std::string_view first,
                      std::string_view second)
{
    std::string text = "\n comparison of power\n\n";
    appendFormat(text, "\tfirst                   : %s\n", shownFileName(first).c_str());
    appendFormat(text, "\tsecond                  : %s\n", shownFileName(second).c_str());
    appendWhole(text, comparison);
    appendSectors(screens, text, comparison);
    handOver(screens, Pane::lower, text);
}

} // namespace torvane
