#include "report/theory_figures.h"

#include "core/units.h"

#include <span>

namespace torvane {

namespace {

using Row = FigureRow<Theory>;
using Rows = std::span<const Row>;

template <auto member>
double own(const Theory& theory)
{
    return theory.*member;
}

double velocity(const Theory& theory)
{
    return theory.velocity * kphPerMps;
}

bool seeksTeeth(const Theory& theory)
{
    return theory.target == gearTargetTeeth;
}

constexpr Row pedalingRows[] = {
    {"cadence", "rpm", own<&Theory::cadence>},       {"power", "W", own<&Theory::power>},
    {"torque", "Nm", own<&Theory::torque>},          {"force", "kgf", own<&Theory::force>},
    {"cadenceMax", "rpm", own<&Theory::cadenceMax>}, {"maxPower", "W", own<&Theory::maxPower>},
};

constexpr Row gearRows[] = {
    {"cadence", "rpm", own<&Theory::cadence>},
    {"velocity", "kph", velocity},
    {"frontTooth", "t", own<&Theory::frontTooth>},
    {"rearTooth", "t", own<&Theory::rearTooth>},
    {"gearRatio", "", own<&Theory::gearRatio>},
    {"expectedRatio", "", own<&Theory::expectedRatio>, seeksTeeth},
    {"askedCadence", "rpm", own<&Theory::askedCadence>, seeksTeeth},
};

constexpr Row roadOfPedaling[] = {
    {"roadVelocity", "kph", velocity},
    {"roadCadence", "rpm", own<&Theory::cadence>},
    {"roadFrontTooth", "t", own<&Theory::frontTooth>},
    {"roadRearTooth", "t", own<&Theory::rearTooth>},
    {"roadGearRatio", "", own<&Theory::gearRatio>},
};

constexpr Row roadOfGears[] = {
    {"roadPower", "W", own<&Theory::power>},
};

constexpr Row roadRows[] = {
    {"roadInclination", "%", [](const Theory& theory) { return theory.road.inclination; }},
    {"roadTorque", "Nm", own<&Theory::torque>},
    {"roadForce", "kgf", own<&Theory::force>},
    {"roadCadenceMax", "rpm", own<&Theory::cadenceMax>},
    {"roadRequiredPower", "W", own<&Theory::maxPower>},
};

Rows calculated(int calculator)
{
    return calculator == calculatorGears ? Rows(gearRows) : Rows(pedalingRows);
}

Rows ofRoad(int calculator)
{
    return calculator == calculatorGears ? Rows(roadOfGears) : Rows(roadOfPedaling);
}

} // namespace

void addTheoryFigures(Figures& figures, const Theory& theory)
{
    addFigures(figures.values, calculated(theory.calculator), theory);
}

void addRoadFigures(Figures& figures, const Theory& theory)
{
    addFigures(figures.values, ofRoad(theory.calculator), theory);
    addFigures(figures.values, roadRows, theory);
}

std::vector<FigureInfo> theoryFigureInfos(int calculator)
{
    std::vector<FigureInfo> infos;
    for (Rows rows : {calculated(calculator), ofRoad(calculator), Rows(roadRows)})
        addInfos(infos, rows);
    return infos;
}

} // namespace torvane
