// Condition pages "course" and "peloton".
#include "core/choices.h"
#include "core/text.h"
#include "forms/pages.h"
#include "forms/rows.h"
#include "model/derived.h"

#include <cmath>

namespace torvane {

namespace {

// Course

constexpr int pressureButtons[] = {1911, 1912};
constexpr int surfaceButtons[] = {1913, 1914, 1915};
constexpr size_t pressureRow = 3;

bool pressureIsComputed(const FormState& state, const Row&)
{
    return state.values.airPressureSource == pressureComputed;
}

bool pressureIsEntered(const FormState& state, const Row&)
{
    return state.values.airPressureSource == pressureEntered;
}

double pressureShown(const FormState& state, const Row&)
{
    const ParameterBlock& values = state.values;
    if (values.airPressureSource == pressureComputed)
        return airPressureAt(values.temperature, values.altitude);
    return values.hectoPascal;
}

constexpr Row enteredPressureRow()
{
    Row row = realRow(1924, 1934, TORVANE_FIELD(hectoPascal), {0, 1500}, "%5.1lf", "hecto pascal", "hPa");
    row.shows = pressureShown;
    return enabledWhen(row, pressureIsEntered);
}

constexpr Row courseRows[] = {
    realRow(1921, 1931, TORVANE_FIELD(windSpeed), {-30, 30, 0.1}, "%5.1lf", "a wind speed", "m/s"),
    enabledWhen(realRow(1922, 1932, TORVANE_FIELD(altitude), {-100, 10000}, "%5.1lf", "altitude", "m"),
                pressureIsComputed),
    countsWhen(enabledWhen(realRow(1923, 1933, TORVANE_FIELD(temperature), {-50, 50}, "%5.1lf", "temperature", "Cel"),
                           pressureIsComputed),
               always), // brakes cool down to it
    enteredPressureRow(),
    messages(wholeRow(1925, 1935, TORVANE_FIELD(bpn), {40, 100}, nullptr), "found too small value of the BPN",
             "found too large value of the BPN"),
    radioRow(pressureButtons, TORVANE_FIELD(airPressureSource), pressureSourceNames),
    radioRow(surfaceButtons, TORVANE_FIELD(roadSurface), roadSurfaceNames),
};
static_assert(courseRows[pressureRow].id == 1924);

// The pressure follows altitude and temperature when they are chosen, not while they are typed. Where it is entered the
// stored one is shown: the one that counts if it is not typed over.
void pressureSourceChanged(FormState& state, const Row& row)
{
    if (row.id == pressureButtons[0])
        reloadRow(state, courseRows[pressureRow]);
}

constexpr Form makeCoursePage()
{
    Form form = pageForm(1011, "course", pageCourse, Marks::condition, courseRows);
    form.changed = pressureSourceChanged;
    return form;
}

// Peloton

constexpr int pelotonButtons[] = {11941, 11942};
constexpr int rotateButtons[] = {11943, 11944};

bool ratioIsEntered(const FormState& state, const Row&)
{
    return state.values.pelotonMode == pelotonEntered;
}

bool ratioIsCalculated(const FormState& state, const Row&)
{
    return state.values.pelotonMode == pelotonCalculated;
}

// Alone there is no velocity that the ratio would hold for.
bool velocityMatters(const FormState& state, const Row&)
{
    return state.values.pelotonMode == pelotonCalculated || state.values.pelotonRatio < 1;
}

// The entered velocity against 40 kph: for display alone, the model has its own formula.
double calculatedRatio(const ParameterBlock& values)
{
    int32_t riders = values.pelotonNumber;
    if (riders < 2)
        return 1;
    double length = riders < 15 ? riders : riders / 10.0 + 15;
    double ratio = (1 / std::pow(length, 0.2)) * std::pow(40, 0.2) / std::pow(values.pelotonVelocity, 0.2) *
                   std::pow(values.wheelDistance, 0.2) / std::pow(50, 0.2);
    return values.rotateTop == topRotates ? ((riders - 1) * ratio + 1) / riders : ratio;
}

std::string ratioText(const FormState& state, const Row&)
{
    const ParameterBlock& values = state.values;
    double ratio = values.pelotonMode == pelotonEntered ? values.pelotonRatio : calculatedRatio(values);
    return formatText("%5.3lf", ratio > 1 ? 1 : ratio);
}

constexpr Row pelotonRows[] = {
    enabledWhen(realRow(11951, 11961, TORVANE_FIELD(pelotonRatio), {0.3, 1, 0.01}, "%5.3lf", "air ratio in a peloton"),
                ratioIsEntered),
    enabledWhen(
        realRow(11952, 11962, TORVANE_FIELD(pelotonVelocity), {30, 100}, "%5.1lf", "velocity of a peloton", "kph"),
        velocityMatters),
    enabledWhen(wholeRow(11953, 11963, TORVANE_FIELD(pelotonNumber), {2, 100}, "a number of a peloton"),
                ratioIsCalculated),
    enabledWhen(wholeRow(11954, 11964, TORVANE_FIELD(wheelDistance), {5, 300}, "a distance of wheels", "cm"),
                ratioIsCalculated),
    radioRow(pelotonButtons, TORVANE_FIELD(pelotonMode), pelotonModeNames),
    enabledWhen(radioRow(rotateButtons, TORVANE_FIELD(rotateTop), topOfTrainNames), ratioIsCalculated),
    labelRow(11955, ratioText),
};

} // namespace

constinit const Form coursePage = makeCoursePage();
constinit const Form pelotonPage = pageForm(1012, "peloton", pagePeloton, Marks::condition, pelotonRows);

} // namespace torvane
