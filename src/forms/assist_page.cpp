// Profile page "e-Assist": the motor and up to three speed ranges, each beginning where the one before ends.
#include "core/choices.h"
#include "core/text.h"
#include "forms/pages.h"
#include "forms/rows.h"

namespace torvane {

namespace {

constexpr int locationButtons[] = {1811, 1812, 1813};
constexpr int firstRangeButtons[] = {1821, 1822};
constexpr int secondRangeButtons[] = {1824, 1825, 1826};
constexpr int thirdRangeButtons[] = {1827, 1828, 1829};

bool hasMotor(const FormState& state, const Row&)
{
    return state.values.motorLocation != motorNone;
}

bool isActiveRange(const FormState& state, const Row& row)
{
    return state.values.assistRangeMode[row.index] != rangeNone;
}

// A motor looks at the ends of all ranges.
constexpr Row speedRow(int index, Field field, const char* tooSmall, const char* tooLarge)
{
    int id = 1832 + 2 * index;
    Row row = realRow(id, id + 10, field, {0, 100}, "%5.1lf", nullptr, "kph");
    return countsWhen(enabledWhen(numbered(messages(row, tooSmall, tooLarge), index), isActiveRange), hasMotor);
}

constexpr Row ratioRow(int index, Field field, const char* tooSmall, const char* tooLarge)
{
    int id = 1833 + 2 * index;
    Row row = realRow(id, id + 10, field, {0, 10, 0.1}, "%5.1lf", nullptr);
    return enabledWhen(numbered(messages(row, tooSmall, tooLarge), index), isActiveRange);
}

double speedBefore(const FormState& state, const Row& row)
{
    return state.values.assistRangeSpeed[row.index - 1];
}

std::string rangeStart(const FormState& state, const Row& row)
{
    return formatText("%5.1lf kph   ~ ", speedBefore(state, row));
}

// A linear range runs from the ratio at its start to the one at its end.
std::string linearStart(const FormState& state, const Row& row)
{
    bool linear = state.values.assistRangeMode[row.index] == rangeLinear;
    return linear ? formatText("at %5.1lf kph   ~ ", speedBefore(state, row)) : std::string();
}

constexpr size_t locationRow = 0, firstModeRow = 1, powerRow = 4, firstSpeedRow = 5; // a ratio follows its speed

constexpr Row assistRows[] = {
    radioRow(locationButtons, TORVANE_FIELD(motorLocation), motorLocationNames),
    radioRow(firstRangeButtons, TORVANE_FIELD(assistRangeMode[0]), std::span(rangeModeNames).first(rangeLinear)),
    radioRow(secondRangeButtons, TORVANE_FIELD(assistRangeMode[1]), rangeModeNames),
    radioRow(thirdRangeButtons, TORVANE_FIELD(assistRangeMode[2]), rangeModeNames),
    enabledWhen(messages(realRow(1831, 1841, TORVANE_FIELD(maxEPower), {0, 9999}, "%5.1lf", nullptr, "W"),
                         "found illegal maximum e-Power value", "found illegal maximum e-Power value"),
                hasMotor),
    speedRow(0, TORVANE_FIELD(assistRangeSpeed[0]), "found too small speed of range 0",
             "found too large speed of range 0"),
    ratioRow(0, TORVANE_FIELD(assistRangeRatio[0]), "found too small ratio of range 0",
             "found too large ratio of range 0"),
    speedRow(1, TORVANE_FIELD(assistRangeSpeed[1]), "found too small speed of range 1",
             "found too large speed of range 1"),
    ratioRow(1, TORVANE_FIELD(assistRangeRatio[1]), "found too small ratio of range 1",
             "found too large ratio of range 1"),
    speedRow(2, TORVANE_FIELD(assistRangeSpeed[2]), "found too small speed of range 2",
             "found too large speed of range 2"),
    ratioRow(2, TORVANE_FIELD(assistRangeRatio[2]), "found too small ratio of range 2",
             "found too large ratio of range 2"),
    labelRow(1851, rangeStart, 1),
    labelRow(1852, rangeStart, 2),
    labelRow(1853, linearStart, 1),
    labelRow(1854, linearStart, 2),
};
static_assert(assistRows[locationRow].id == 1811 && assistRows[firstModeRow].id == 1821 &&
              assistRows[powerRow].id == 1831 && assistRows[firstSpeedRow].id == 1832);

// How a range does not fit the one before it, and the entry to blame.
struct Misfit {
    const char* text = nullptr; // null: it fits
    size_t row = 0;
};

Misfit misfit(const ParameterBlock& values, size_t n)
{
    bool active = values.assistRangeMode[n] != rangeNone;
    if (active && values.assistRangeMode[n - 1] == rangeNone)
        return {"found illegal void range %d", firstModeRow + n};
    if (active && values.assistRangeSpeed[n] < values.assistRangeSpeed[n - 1])
        return {"found illegal speed order of a range %d", firstSpeedRow + 2 * n};
    if (values.assistRangeMode[n] == rangeConstant && values.assistRangeRatio[n] == 0)
        return {"found non-sense ratio for constant range %d", firstSpeedRow + 2 * n + 1};
    return {};
}

Verdict validateAssist(FormState& state)
{
    const ParameterBlock& values = state.values;
    if (values.motorLocation == motorNone && values.assistRangeMode[0] != rangeNone)
        return refuseRow(state, assistRows[locationRow], "found illegal motor location");
    Verdict power = checkLimits(state, powerRow, powerRow + 1);
    if (!power.passed)
        return power;
    // Without a motor the ranges are only kept for later.
    for (size_t n = 1; n < assistRangeCount && values.motorLocation != motorNone; ++n)
        if (Misfit fault = misfit(values, n); fault.text)
            return refuseRow(state, assistRows[fault.row], formatText(fault.text, static_cast<int>(n)));
    return checkLimits(state, powerRow + 1, std::size(assistRows));
}

constexpr Form makeAssistPage()
{
    Form form = pageForm(1008, "e-Assist", pageAssist, Marks::profile, assistRows);
    form.validate = validateAssist;
    return form;
}

} // namespace

constinit const Form assistPage = makeAssistPage();

} // namespace torvane
