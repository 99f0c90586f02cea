// Profile pages "human" and "equip".
#include "core/choices.h"
#include "forms/pages.h"
#include "forms/rows.h"
#include "model/derived.h"

namespace torvane {

namespace {

constexpr int shellButtons[] = {1231, 1232};
constexpr size_t torsoRow = 2, factorRow = 9;
constexpr Range cadences = {30, 300};

bool entersTorsoAngle(const FormState& state, const Row&)
{
    return state.values.position == positionTorsoAngle;
}

bool usesFtp(const FormState& state, const Row&)
{
    return state.values.useFtp != 0;
}

double dragFactorShown(const FormState& state, const Row&)
{
    return dragFactorOf(state.values.calibration);
}

// The window's page has no room for it; there it comes out of a profile file.
constexpr Row dragFactorRow()
{
    Row row = realRow(0, 0, {"dragFactor", noField}, {0.5, 1.6, 0.01}, "%5.3lf", "an air drag factor");
    row.shows = dragFactorShown;
    return row;
}

constexpr Row humanRows[] = {
    realRow(1111, 1121, TORVANE_FIELD(humanHeight), {100, 250}, "%5.1lf", "a human height", "cm"),
    realRow(1112, 1122, TORVANE_FIELD(humanWeight), {30, 200}, "%5.1lf", "a human weight", "kg"),
    enabledWhen(realRow(1113, 1123, TORVANE_FIELD(torsoAngle), {0, 90}, "%5.1lf", "a torso angle", "deg"),
                entersTorsoAngle),
    realRow(1114, 1124, TORVANE_FIELD(cadenceUsual), cadences, "%5.1lf", "a usual cadence", "rpm"),
    realRow(1115, 1125, TORVANE_FIELD(cadencePoweredMax), cadences, "%5.1lf", "a maximum cadence", "rpm"),
    realRow(1116, 1126, TORVANE_FIELD(cadenceShiftUp), cadences, "%5.1lf", "a shift-up cadence", "rpm"),
    realRow(1117, 1127, TORVANE_FIELD(cadenceShiftDown), cadences, "%5.1lf", "a shift-down cadence", "rpm"),
    // The name is that of an entry that once stood here.
    countsWhen(checkedWhen(enabledWhen(realRow(1118, 1128, TORVANE_FIELD(ftp), {100, 700}, "%5.1lf",
                                               "an expected cadence", "W"),
                                       usesFtp),
                           usesFtp),
               always), // the profile tells it in any case
    choiceRow(1131, TORVANE_FIELD(position), positionNames),
    dragFactorRow(),
};
static_assert(humanRows[torsoRow].id == 1113 && humanRows[factorRow].offset == noField);

// A position brings its own angle.
void showTorsoAngle(FormState& state)
{
    if (state.values.position != positionTorsoAngle)
        showValue(state, humanRows[torsoRow], torsoAngleForPosition(state.values.position));
}

void humanChanged(FormState& state, const Row& row)
{
    if (row.id == 1131)
        showTorsoAngle(state);
    if (&row == &humanRows[factorRow]) // by hand: when it was learned, and how well, is no longer known
        state.values.calibration = {static_cast<float>(shownValue(state, row)), 0, 0, 0};
}

// The angle, whatever was entered while it was disabled, and the factor, which has no field.
void storeHuman(FormState& state, ParameterBlock& working)
{
    working.calibration = state.values.calibration;
    if (state.values.position != positionTorsoAngle)
        working.torsoAngle = torsoAngleForPosition(state.values.position);
}

constexpr Form makeHumanPage()
{
    Form form = pageForm(1001, "human", pageHuman, Marks::profile, humanRows);
    form.opened = showTorsoAngle;
    form.changed = humanChanged;
    form.store = storeHuman;
    return form;
}

// The weight is stored as what it meant when the page opened; ticking the box does not move it.
bool openedWithWheels(const FormState& state, const Row&)
{
    return state.entry.exceptWheels == 0;
}

bool openedExceptWheels(const FormState& state, const Row&)
{
    return state.entry.exceptWheels != 0;
}

bool hasAeroShell(const FormState& state, const Row&)
{
    return state.values.shellType == shellAero;
}

constexpr Range bikeWeights = {5, 30, 0.1};

constexpr Row equipRows[] = {
    presentWhen(realRow(1241, 1251, TORVANE_FIELD(bikeWeight), bikeWeights, "%7.3lf", "an equipment weight", "kg"),
                openedWithWheels),
    presentWhen(
        realRow(1241, 1251, TORVANE_FIELD(bikeWeightExceptWheels), bikeWeights, "%7.3lf", "an equipment weight", "kg"),
        openedExceptWheels),
    enabledWhen(realRow(1242, 1252, TORVANE_FIELD(shellAeroRatio), {0.3, 1, 0.1}, "%7.3lf", "a shell air ratio"),
                hasAeroShell),
    choiceRow(1211, TORVANE_FIELD(wear), wearNames),
    choiceRow(1212, TORVANE_FIELD(helmet), helmetNames),
    checkRow(1221, TORVANE_FIELD(exceptWheels)),
    radioRow(shellButtons, TORVANE_FIELD(shellType), shellTypeNames),
};

} // namespace

constinit const Form humanPage = makeHumanPage();
constinit const Form equipPage = pageForm(1002, "equip", pageEquip, Marks::profile, equipRows);

} // namespace torvane
