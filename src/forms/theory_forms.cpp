// The dialogs of the three theory calculators. The entry that is asked for cannot be typed.
#include "core/ride_choices.h"
#include "core/text.h"
#include "forms/dialogs.h"
#include "forms/rows.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace torvane {

namespace {

constexpr int noTarget = -1; // number of a row that no target asks for

bool isGiven(const FormState& state, const Row& row)
{
    return state.values.theoryTarget != row.index;
}

constexpr Row targetRow(int id, std::span<const char* const> labels)
{
    return choiceRow(id, TORVANE_FIELD(theoryTarget), labels);
}

constexpr Row givenRow(int target, int id, Field field, Range range, const char* messageName, const char* unit)
{
    Row row = realRow(id, id + 10, field, range, "%7.1lf", messageName, unit);
    return enabledWhen(numbered(row, target), isGiven);
}

constexpr Range cadences = {30, 300}, powers = {0, 3000}, torques = {0, 300}, inclinations = {-100, 100, 0.1};

// Among the defaults of a calculator the cadences are those of the profile in force.
void takeCadences(FormState& state)
{
    if (!state.fromDefaults)
        return;
    std::ranges::fill(state.values.theoryCadence, state.model->state.cadenceUsual);
    std::ranges::fill(state.values.theoryCadenceMax, state.model->state.cadencePoweredMax);
}

constexpr Form theoryForm(int id, const char* title, TheoryCalculator calculator, std::span<const Row> rows)
{
    return {.id = id,
            .title = title,
            .confirm = "Calculate",
            .saveBox = 3021 + calculator,
            .saveFlag = offsetof(ParameterBlock, theorySaveFlag) + static_cast<size_t>(calculator) * sizeof(int32_t),
            .rows = rows,
            .opened = takeCadences};
}

// Cadence theory

constexpr size_t powerRow = 2;

constexpr Row cadenceRows[] = {
    targetRow(4111, cadenceTargetNames),
    givenRow(cadenceTargetCadence, 4121, TORVANE_FIELD_AS("theoryCadence", theoryCadence[calculatorCadence]), cadences,
             "a cadence", "rpm"),
    givenRow(cadenceTargetPower, 4122, TORVANE_FIELD_AS("theoryPower", theoryPower[calculatorCadence]), powers,
             "a power", "W"),
    givenRow(cadenceTargetSummit, 4123, TORVANE_FIELD_AS("theoryCadenceMax", theoryCadenceMax[calculatorCadence]),
             cadences, "a cadence powered maximum", "rpm"),
    givenRow(cadenceTargetMaxPower, 4124, TORVANE_FIELD_AS("theoryMaxPower", theoryMaxPower[calculatorCadence]), powers,
             "a maximum power", "W"),
    givenRow(noTarget, 4125, TORVANE_FIELD_AS("theoryInclination", theoryInclination[calculatorCadence]), inclinations,
             "an inclination", "%"),
};

static_assert(cadenceRows[powerRow].id == 4122);

// The parabola of power over cadence has no point above its summit.
Verdict checkSummit(FormState& state)
{
    const ParameterBlock& values = state.values;
    bool needsPoint = values.theoryTarget == cadenceTargetCadence || values.theoryTarget == cadenceTargetSummit;
    if (needsPoint && values.theoryPower[calculatorCadence] > values.theoryMaxPower[calculatorCadence])
        return refuseRow(state, cadenceRows[powerRow], "found power tried to input over the maximal power");
    return {};
}

constexpr Form makeCadenceForm()
{
    Form form = theoryForm(2011, "cadence theory", calculatorCadence, cadenceRows);
    form.check = checkSummit;
    return form;
}

// Pedaling dynamics

constexpr int torqueOrForceButtons[] = {4212, 4213};

bool torqueOrForceIsGiven(const FormState& state, const Row&)
{
    return state.values.theoryTarget != pedalingTargetTorque;
}

bool isChosenOfTorqueOrForce(const FormState& state, const Row& row)
{
    return state.values.theoryTarget != pedalingTargetTorque && state.values.torqueOrForce == row.index;
}

// A torque of 0 is refused even beside a force.
bool torqueIsLookedAt(const FormState& state, const Row& row)
{
    return row.index == givenTorque && state.values.theoryTarget != pedalingTargetTorque;
}

constexpr Row torqueOrForceRow(int index, int id, Field field, const char* messageName, const char* unit)
{
    Row row = realRow(id, id + 10, field, torques, "%7.1lf", messageName, unit);
    return countsWhen(enabledWhen(numbered(row, index), isChosenOfTorqueOrForce), torqueIsLookedAt);
}

constexpr Row pedalingRows[] = {
    targetRow(4211, pedalingTargetNames),
    enabledWhen(radioRow(torqueOrForceButtons, TORVANE_FIELD(torqueOrForce), torqueOrForceNames), torqueOrForceIsGiven),
    givenRow(pedalingTargetCadence, 4221, TORVANE_FIELD_AS("theoryCadence", theoryCadence[calculatorPedaling]),
             cadences, "a cadence", "rpm"),
    givenRow(pedalingTargetPower, 4222, TORVANE_FIELD_AS("theoryPower", theoryPower[calculatorPedaling]), powers,
             "a power", "W"),
    torqueOrForceRow(givenTorque, 4223, TORVANE_FIELD_AS("theoryTorque", theoryTorque[calculatorPedaling]), "a torque",
                     "Nm"),
    torqueOrForceRow(givenForce, 4224, TORVANE_FIELD_AS("theoryForce", theoryForce[calculatorPedaling]), "a force",
                     "kgf"),
    givenRow(noTarget, 4225, TORVANE_FIELD_AS("theoryInclination", theoryInclination[calculatorPedaling]), inclinations,
             "an inclination", "%"),
};

// Gear combination. The teeth come from the lists of the profile or are free; both write the same two fields.

constexpr size_t frontToothRow = 4, rearToothRow = 5;

bool listsCount(const ParameterBlock& values)
{
    return values.theoryTarget != gearTargetTeeth && values.useMissionProfile != 0;
}

bool teethAreFree(const FormState& state, const Row&)
{
    return state.values.theoryTarget != gearTargetTeeth && state.values.useMissionProfile == 0;
}

bool teethAreOfProfile(const FormState& state, const Row&)
{
    return listsCount(state.values);
}

bool teethAreNotOfProfile(const FormState& state, const Row&)
{
    return !listsCount(state.values);
}

std::span<const int32_t> chainrings(const FormState& state)
{
    const ModelState& m = state.model->state;
    return std::span(m.chainring).first(static_cast<size_t>(std::clamp(m.chainringCount, 0, 3)));
}

std::span<const int32_t> sprockets(const FormState& state)
{
    const ModelState& m = state.model->state;
    return std::span(m.sprocket).first(static_cast<size_t>(std::clamp(m.sprocketCount, 0, 15)));
}

std::vector<std::string> toothLabels(std::span<const int32_t> teeth)
{
    std::vector<std::string> labels;
    for (int32_t tooth : teeth)
        labels.push_back(formatText("%d", tooth));
    return labels;
}

// Place of a tooth in a list: of the nearest one, and of the smaller one of two equally near.
int placeOf(int32_t tooth, std::span<const int32_t> teeth)
{
    auto distance = [tooth](int32_t each) { return std::pair(std::abs(int64_t{each} - tooth), each); };
    return static_cast<int>(std::ranges::min_element(teeth, {}, distance) - teeth.begin());
}

// The tooth that is calculated with.
int32_t toothInForce(const FormState& state, int32_t stored, std::span<const int32_t> teeth)
{
    return listsCount(state.values) && !teeth.empty() ? teeth[static_cast<size_t>(placeOf(stored, teeth))] : stored;
}

int32_t frontToothInForce(const FormState& state)
{
    return toothInForce(state, state.values.frontTooth, chainrings(state));
}

int32_t rearToothInForce(const FormState& state)
{
    return toothInForce(state, state.values.rearTooth, sprockets(state));
}

double shownFrontTooth(const FormState& state, const Row&)
{
    return frontToothInForce(state);
}

double shownRearTooth(const FormState& state, const Row&)
{
    return rearToothInForce(state);
}

// An entry that a choice leaves aside is not held to its limits: the profile's teeth have their own.
constexpr Row freeToothRow(int id, Field field, Range range, const char* messageName,
                           double (*shows)(const FormState&, const Row&))
{
    Row row =
        checkedWhen(enabledWhen(wholeRow(id, id + 10, field, range, messageName), teethAreFree), teethAreNotOfProfile);
    row.shows = shows;
    row.when = "with useMissionProfile off";
    return row;
}

std::vector<std::string> chainringLabels(const FormState& state)
{
    return toothLabels(chainrings(state));
}

std::vector<std::string> sprocketLabels(const FormState& state)
{
    return toothLabels(sprockets(state));
}

double shownChainring(const FormState& state, const Row&)
{
    return placeOf(state.values.frontTooth, chainrings(state));
}

double shownSprocket(const FormState& state, const Row&)
{
    return placeOf(state.values.rearTooth, sprockets(state));
}

void takeChainring(FormState& state, const Row&, int value)
{
    state.values.frontTooth = chainrings(state)[static_cast<size_t>(value)];
}

void takeSprocket(FormState& state, const Row&, int value)
{
    state.values.rearTooth = sprockets(state)[static_cast<size_t>(value)];
}

using Labels = std::vector<std::string> (*)(const FormState&);
using Shows = double (*)(const FormState&, const Row&);
using Takes = void (*)(FormState&, const Row&, int);

constexpr Row listedToothRow(int id, const char* name, Labels labels, Shows shows, Takes takes)
{
    return {.kind = RowKind::choice,
            .id = id,
            .name = name,
            .when = "with useMissionProfile on",
            .enabled = teethAreOfProfile,
            .labelsNow = labels,
            .shows = shows,
            .takes = takes};
}

constexpr Row gearRows[] = {
    targetRow(4311, gearTargetNames),
    givenRow(gearTargetCadence, 4321, TORVANE_FIELD_AS("theoryCadence", theoryCadence[calculatorGears]), cadences,
             "a cadence", "rpm"),
    inKph(givenRow(gearTargetVelocity, 4322, TORVANE_FIELD_AS("theoryVelocity", theoryVelocity[calculatorGears]),
                   {0, 200}, "a velocity", "")),
    givenRow(noTarget, 4323, TORVANE_FIELD_AS("theoryInclination", theoryInclination[calculatorGears]), inclinations,
             "an inclination", "%"),
    freeToothRow(4324, TORVANE_FIELD(frontTooth), {28, 70}, "a front tooth", shownFrontTooth),
    freeToothRow(4325, TORVANE_FIELD(rearTooth), {8, 40}, "a rear tooth", shownRearTooth),
    checkRow(4341, TORVANE_FIELD(useMissionProfile)),
    listedToothRow(4351, "frontTooth", chainringLabels, shownChainring, takeChainring),
    listedToothRow(4352, "rearTooth", sprocketLabels, shownSprocket, takeSprocket),
};
static_assert(gearRows[frontToothRow].id == 4324 && gearRows[rearToothRow].id == 4325);

// The free fields follow the lists while those count; what was typed into them is theirs again afterwards.
void teethChanged(FormState& state, const Row& row)
{
    if (row.id != 4324 && row.id != 4325)
        for (size_t tooth : {frontToothRow, rearToothRow})
            reprintRow(state, gearRows[tooth]);
}

// A tooth that the profile does not have is not calculated with: the list shows another one.
void storeTeeth(FormState& state, ParameterBlock& working)
{
    working.frontTooth = frontToothInForce(state);
    working.rearTooth = rearToothInForce(state);
}

constexpr Form makeGearForm()
{
    Form form = theoryForm(2013, "gear combination", calculatorGears, gearRows);
    form.changed = teethChanged;
    form.store = storeTeeth;
    return form;
}

} // namespace

constinit const Form cadenceTheoryForm = makeCadenceForm();
constinit const Form pedalingDynamicsForm = theoryForm(2012, "pedaling dynamics", calculatorPedaling, pedalingRows);
constinit const Form gearCombinationForm = makeGearForm();

} // namespace torvane
