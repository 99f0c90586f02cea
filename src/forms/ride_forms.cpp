// The dialogs of the ride simulations that answer for one velocity, one slope, one bend, and of pattern braking.
#include "core/ride_choices.h"
#include "forms/dialogs.h"
#include "forms/ride_rows.h"

#include <string>

namespace torvane {

namespace {

// The entry that is asked for cannot be typed: its number is that of the target.
bool isGiven(const FormState& state, const Row& row)
{
    return state.values.rideTarget != row.index;
}

constexpr Row givenWhenNotTarget(Row row, int target)
{
    return enabledWhen(numbered(row, target), isGiven);
}

// Power and velocity

constexpr int intensionButtons[] = {5121, 5122};

bool asksVelocity(const FormState& state, const Row&)
{
    return state.values.rideTarget == steadyTargetVelocity;
}

bool isIntensionCase(const FormState& state, const Row& row)
{
    return state.values.intensionCase == row.index;
}

std::string intensionBase(const FormState& state, const Row&)
{
    return state.values.intensionCase == intensionByTime ? "time based" : "distance based";
}

std::string firstIntensionUnit(const FormState& state, const Row&)
{
    return state.values.intensionCase == intensionByTime ? "min" : "km";
}

std::string secondIntensionUnit(const FormState& state, const Row&)
{
    return state.values.intensionCase == intensionByTime ? "sec" : "m";
}

constexpr Row intensionRow(int id, int intensionCase, Field field, const char* messageName, const char* unit)
{
    Row row = wholeRow(id, id + 10, field, {0, 1000}, messageName, unit);
    return presentWhen(numbered(row, intensionCase), isIntensionCase);
}

constexpr Row powerVelocityRows[] = {
    rideTargetRow(5111, steadyTargetNames),
    enabledWhen(choiceRow(5112, TORVANE_FIELD_AS("ridePowerBase", ridePowerBase[ridePowerAndVelocity]), stageNames),
                asksVelocity),
    givenWhenNotTarget(
        rideRow(5131, TORVANE_FIELD_AS("ridePower", ridePower[ridePowerAndVelocity]), powers, "a power", "W"),
        steadyTargetPower),
    givenWhenNotTarget(
        velocityRow(5132, TORVANE_FIELD_AS("rideVelocity", rideVelocity[ridePowerAndVelocity]), "a velocity"),
        steadyTargetVelocity),
    inclinationRow(5133, TORVANE_FIELD_AS("rideInclination", rideInclination[ridePowerAndVelocity])),
    radioRow(intensionButtons, TORVANE_FIELD(intensionCase), intensionCaseNames),
    labelRow(5151, intensionBase),
    labelRow(5153, firstIntensionUnit),
    labelRow(5154, secondIntensionUnit),
    intensionRow(5134, intensionByTime, TORVANE_FIELD(intensionFirst[0]), "a time", "min"),
    intensionRow(5134, intensionByDistance, TORVANE_FIELD(intensionFirst[1]), "a distance", "km"),
    intensionRow(5135, intensionByTime, TORVANE_FIELD(intensionSecond[0]), "a time", "sec"),
    intensionRow(5135, intensionByDistance, TORVANE_FIELD(intensionSecond[1]), "a distance", "m"),
};

// Pattern braking

bool brakesByForce(const FormState& state, const Row&)
{
    return state.values.rideTarget == patternConstantForce || state.values.rideTarget == patternIntermittent;
}

bool brakesFromVelocity(const FormState& state, const Row&)
{
    return state.values.rideTarget == patternConstantForce || state.values.rideTarget == patternCriticalFull;
}

bool brakesAtIntervals(const FormState& state, const Row&)
{
    return state.values.rideTarget == patternIntermittent;
}

bool brakesOverDistance(const FormState& state, const Row&)
{
    return state.values.rideTarget == patternConstantVelocity || state.values.rideTarget == patternIntermittent;
}

bool isBrakingPattern(const FormState& state, const Row& row)
{
    return state.values.rideTarget == row.index;
}

std::string patternLabel(const FormState& state, const Row&)
{
    return std::string("-- ") + brakingPatternNames[state.values.rideTarget];
}

constexpr Row shortFormat(Row row)
{
    row.format = "%5.1lf";
    return row;
}

constexpr Row brakingRow(int id, Field field, Range range, const char* messageName, const char* unit, RowTest test)
{
    return enabledWhen(shortFormat(rideRow(id, field, range, messageName, unit)), test);
}

// Each pattern has an inclination of its own.
constexpr Row patternInclinationRow(int pattern, Field field)
{
    return presentWhen(numbered(shortFormat(inclinationRow(5436, field)), pattern), isBrakingPattern);
}

constexpr Row patternBrakingRows[] = {
    rideTargetRow(5411, brakingPatternNames),
    labelRow(5421, patternLabel),
    brakingRow(5431, TORVANE_FIELD_AS("rideForce", rideForce[ridePatternBraking]), {-100, 0}, "a force", "kgf",
               brakesByForce),
    enabledWhen(
        shortFormat(velocityRow(5432, TORVANE_FIELD_AS("rideStartVelocity", rideStartVelocity[ridePatternBraking]),
                                "a starting velocity")),
        brakesFromVelocity),
    shortFormat(velocityRow(5433, TORVANE_FIELD_AS("rideEndVelocity", rideEndVelocity[ridePatternBraking]),
                            "a ending velocity")),
    brakingRow(5434, TORVANE_FIELD(intervalDistance), distances, "an interval distance", "m", brakesAtIntervals),
    brakingRow(5435, TORVANE_FIELD(totalDistance), distances, "a total distance", "m", brakesOverDistance),
    patternInclinationRow(patternConstantForce,
                          TORVANE_FIELD_AS("brakingInclination", brakingInclination[patternConstantForce])),
    patternInclinationRow(patternCriticalFull,
                          TORVANE_FIELD_AS("brakingInclination", brakingInclination[patternCriticalFull])),
    patternInclinationRow(patternConstantVelocity,
                          TORVANE_FIELD_AS("brakingInclination", brakingInclination[patternConstantVelocity])),
    patternInclinationRow(patternIntermittent,
                          TORVANE_FIELD_AS("brakingInclination", brakingInclination[patternIntermittent])),
};

// Inclination and velocity

constexpr int limitButtons[] = {5521, 5522, 5523};

bool hasLimit(const FormState& state, const Row&)
{
    return state.values.inclinationLimit != limitNone;
}

bool isLimit(const FormState& state, const Row& row)
{
    return state.values.inclinationLimit == row.index;
}

// A run without limit rolls from this velocity, too, though its control is disabled then.
constexpr Row limitedStartRow()
{
    Row row = velocityRow(5533, TORVANE_FIELD_AS("rideStartVelocity", rideStartVelocity[rideInclinationAndVelocity]),
                          "a velocity");
    return countsWhen(enabledWhen(row, hasLimit), always);
}

constexpr Row inclinationRows[] = {
    rideTargetRow(5511, inclinationTargetNames),
    givenWhenNotTarget(
        velocityRow(5531, TORVANE_FIELD_AS("rideVelocity", rideVelocity[rideInclinationAndVelocity]), "a velocity"),
        inclinationTargetVelocity),
    givenWhenNotTarget(
        inclinationRow(5532, TORVANE_FIELD_AS("rideInclination", rideInclination[rideInclinationAndVelocity])),
        inclinationTargetSlope),
    radioRow(limitButtons, TORVANE_FIELD(inclinationLimit), inclinationLimitNames),
    limitedStartRow(),
    enabledWhen(numbered(rideRow(5534, TORVANE_FIELD_AS("rideDistance", rideDistance[rideInclinationAndVelocity]),
                                 distances, "a distance", "m"),
                         limitDistance),
                isLimit),
    enabledWhen(numbered(rideRow(5535, TORVANE_FIELD_AS("rideLegTime", rideLegTime[rideInclinationAndVelocity]),
                                 legTimes, "a leg time", "sec"),
                         limitTime),
                isLimit),
};

// Critical cornering

constexpr Row corneringRows[] = {
    rideTargetRow(5611, corneringTargetNames),
    givenWhenNotTarget(
        velocityRow(5621, TORVANE_FIELD_AS("rideVelocity", rideVelocity[rideCriticalCornering]), "a velocity"),
        corneringTargetVelocity),
    givenWhenNotTarget(rideRow(5622, TORVANE_FIELD(corneringRadius), {0, 1000}, "a corner radius", "m"),
                       corneringTargetRadius),
    givenWhenNotTarget(rideRow(5623, TORVANE_FIELD(safetyMargin), {0, 0.5, 0.1}, "a friction safty margin", ""),
                       corneringTargetMargin),
};

} // namespace

constinit const Form powerVelocityForm = rideForm(2021, "power and velocity", ridePowerAndVelocity, powerVelocityRows);
constinit const Form patternBrakingForm = rideForm(2024, "pattern braking", ridePatternBraking, patternBrakingRows);
constinit const Form inclinationForm =
    rideForm(2025, "inclination and velocity", rideInclinationAndVelocity, inclinationRows);
constinit const Form corneringForm = rideForm(2026, "critical cornering", rideCriticalCornering, corneringRows);

} // namespace torvane
