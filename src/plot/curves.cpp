#include "plot/curves.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace torvane {

namespace {

constexpr std::string_view bareUnits[] = {"Cel"};

bool isLetter(char c)
{
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

char lower(char c)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool sameName(std::string_view a, std::string_view b)
{
    return std::ranges::equal(a, b, [](char x, char y) { return lower(x) == lower(y); });
}

// A unit at the end of a name, without brackets; empty: none.
std::string_view bareUnit(std::string_view series)
{
    for (std::string_view unit : bareUnits)
        if (series.size() > unit.size() && series.ends_with(unit) && series[series.size() - unit.size() - 1] == ' ')
            return unit;
    return {};
}

std::string allNames(const GraphSeries& series)
{
    std::string names;
    for (const std::string& name : series.seriesNames)
        names += (names.empty() ? "" : ", ") + curveName(name);
    return names;
}

int findCurve(const GraphSeries& series, std::string_view name)
{
    auto found = std::ranges::find_if(series.seriesNames,
                                      [&](const std::string& each) { return sameName(curveName(each), name); });
    return found == series.seriesNames.end() ? -1 : static_cast<int>(found - series.seriesNames.begin());
}

std::string unknownCurve(const GraphSeries& series, std::string_view name)
{
    return "there is no curve '" + std::string(name) + "'; there are " + allNames(series);
}

// What a graph with such a curve is about.
struct About {
    std::string_view sign;
    std::array<std::string_view, 4> curves;
};

constexpr About abouts[] = {
    {"missedAfter", {"measuredPower", "powerBefore", "powerAfter", "missedAfter"}},
    {"predictedPower", {"altitude", "velocity", "predictedPower", "measuredPower"}},
    {"altitude", {"altitude", "velocity", "pedalingPower", "frontBrake"}},
    {"frontBrake", {"velocity", "frontBrake", "rearBrake"}},
    {"totalAirResist", {"pedalingPower", "totalAirResist", "rollingResist", "gradiantResist"}},
    {"pedalingPower", {"velocity", "pedalingPower", "crankCadence"}},
    {"accele", {"velocity", "distance"}},
};

} // namespace

std::string curveUnit(std::string_view series)
{
    size_t open = series.find('(');
    size_t close = series.find(')', open == series.npos ? 0 : open);
    if (open != series.npos && close != series.npos)
        return std::string(series.substr(open + 1, close - open - 1));
    return std::string(bareUnit(series));
}

std::string curveName(std::string_view series)
{
    std::string_view words = series.substr(0, series.find('('));
    words.remove_suffix(bareUnit(words).size());
    std::string name;
    bool begins = false;
    for (char c : words) {
        if (isLetter(c))
            name += begins && !name.empty() ? static_cast<char>(std::toupper(static_cast<unsigned char>(c))) : c;
        begins = !isLetter(c);
    }
    return name;
}

CurveChoice curvesAbout(const GraphSeries& series)
{
    CurveChoice choice;
    for (const About& about : abouts) {
        if (findCurve(series, about.sign) < 0)
            continue;
        for (std::string_view name : about.curves)
            if (int curve = findCurve(series, name); curve > 0)
                choice.curves.push_back(curve);
        return choice;
    }
    for (int i = 1; i < series.seriesCount(); ++i)
        choice.curves.push_back(i);
    return choice;
}

std::string chooseCurves(const GraphSeries& series, std::string_view curves, std::string_view x, CurveChoice& choice)
{
    if (!x.empty() && (choice.x = findCurve(series, x)) < 0)
        return unknownCurve(series, x);
    if (!curves.empty())
        choice.curves.clear();
    while (!curves.empty()) {
        std::string_view name = curves.substr(0, curves.find(','));
        curves.remove_prefix(std::min(curves.size(), name.size() + 1));
        int curve = findCurve(series, name);
        if (curve < 0)
            return unknownCurve(series, name);
        if (std::ranges::find(choice.curves, curve) == choice.curves.end())
            choice.curves.push_back(curve);
    }
    return {};
}

} // namespace torvane
