// Profile page "wheel", and the dialog that predicts the resist of one wheel from its build.
#include "core/choices.h"
#include "forms/pages.h"
#include "forms/rows.h"
#include "model/derived.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr int predictDialog = 1450;
constexpr size_t frontSizeRow = 0, frontResistRow = 4, frontResistVelocityRow = 6; // those of the rear wheel follow

constexpr Row wheelSizeRow(int index, Field field)
{
    return messages(wholeRow(1421 + index, 1431 + index, field, {10, 30}, nullptr, "inch"),
                    "found too small inches of a wheel", "found too large inches of a wheel");
}

constexpr Row wheelWeightRow(int id, Field field)
{
    return realRow(id, id + 10, field, {250, 2500}, "%5.1lf", "a wheel weight", "g");
}

constexpr Row wheelResistRow(int id, Field field)
{
    return realRow(id, id + 10, field, {10, 70}, "%5.1lf", "a case of wheel regist", "W");
}

constexpr Row resistVelocityRow(int id, Field field)
{
    return realRow(id, id + 10, field, {40, 50}, "%5.1lf", "a case of velocity", "kph");
}

Verdict choosePredictedWheel(FormState&, const Row& row, ParameterBlock& working)
{
    working.predictWheel = row.index;
    return {};
}

extern const Row wheelRows[10];

// The fit is for a 28 inch front wheel; a rear wheel runs in the wake of the seat tube and the legs.
void showPrediction(FormState& state, const Row& button, const ParameterBlock& working)
{
    size_t wheel = static_cast<size_t>(button.index);
    WheelResist predicted =
        predictWheelResist(working.rimDepth[wheel], working.spokeCount[wheel], working.modelYear[wheel]);
    double resist = wheel == wheelRear ? predicted.resist * 0.6 : predicted.resist;
    resist *= shownValue(state, wheelRows[frontSizeRow + wheel]) / 28.0;
    showValue(state, wheelRows[frontResistRow + wheel], resist);
    showValue(state, wheelRows[frontResistVelocityRow + wheel], predicted.velocity);
}

constexpr Row predictButton(int index)
{
    return {.kind = RowKind::button,
            .id = 1411 + index,
            .name = "predictWheel",
            .labels = wheelNames,
            .index = index,
            .child = predictDialog,
            .pressed = choosePredictedWheel,
            .returned = showPrediction};
}

constexpr Row wheelRows[10] = {
    wheelSizeRow(0, TORVANE_FIELD(wheelSize[0])),
    wheelSizeRow(1, TORVANE_FIELD(wheelSize[1])),
    wheelWeightRow(1423, TORVANE_FIELD(wheelWeight[0])),
    wheelWeightRow(1426, TORVANE_FIELD(wheelWeight[1])),
    wheelResistRow(1424, TORVANE_FIELD(wheelResist[0])),
    wheelResistRow(1427, TORVANE_FIELD(wheelResist[1])),
    resistVelocityRow(1425, TORVANE_FIELD(wheelResistVelocity[0])),
    resistVelocityRow(1428, TORVANE_FIELD(wheelResistVelocity[1])),
    predictButton(0),
    predictButton(1),
};
static_assert(wheelRows[frontSizeRow].id == 1421 && wheelRows[frontResistRow].id == 1424 &&
              wheelRows[frontResistVelocityRow].id == 1425);

void copyBuild(ParameterBlock& to, const ParameterBlock& from)
{
    to.predictWheel = from.predictWheel;
    std::ranges::copy(from.rimDepth, to.rimDepth);
    std::ranges::copy(from.spokeCount, to.spokeCount);
    std::ranges::copy(from.modelYear, to.modelYear);
}

// The predict dialog stores its figures at once; they count when the page is accepted, and otherwise go back.
void keepBuild(FormState& state, ParameterBlock& working)
{
    copyBuild(state.stored, working);
}

void restoreBuild(const FormState& state, ParameterBlock& working)
{
    copyBuild(working, state.stored);
}

constexpr Form makeWheelPage()
{
    Form form = pageForm(1004, "wheel", pageWheel, Marks::profile, wheelRows);
    form.store = keepBuild;
    form.undone = restoreBuild;
    return form;
}

bool isPredictedWheel(const FormState& state, const Row& row)
{
    return state.values.predictWheel == row.index;
}

constexpr Row buildRow(int id, int wheel, Field field, Range range, const char* messageName, const char* unit = "")
{
    return presentWhen(numbered(wholeRow(id, id + 10, field, range, messageName, unit), wheel), isPredictedWheel);
}

constexpr Row predictRows[] = {
    buildRow(1451, 0, TORVANE_FIELD(rimDepth[0]), {10, 300}, "a rim depth", "mm"),
    buildRow(1451, 1, TORVANE_FIELD(rimDepth[1]), {10, 300}, "a rim depth", "mm"),
    buildRow(1452, 0, TORVANE_FIELD(spokeCount[0]), {3, 36}, "a spoke count"),
    buildRow(1452, 1, TORVANE_FIELD(spokeCount[1]), {3, 36}, "a spoke count"),
    buildRow(1453, 0, TORVANE_FIELD(modelYear[0]), {1970, 2100}, "a model year", "A.D."),
    buildRow(1453, 1, TORVANE_FIELD(modelYear[1]), {1970, 2100}, "a model year", "A.D."),
};

} // namespace

constinit const Form wheelPage = makeWheelPage();
constinit const Form predictWheelForm = {.id = predictDialog,
                                         .title = "predict wheel resist",
                                         .confirm = "Predict",
                                         .saveBox = 0,
                                         .saveFlag = noField,
                                         .opensWith = OpensWith::working,
                                         .spinRule = SpinRule::overshoots,
                                         .rows = predictRows};

} // namespace torvane
