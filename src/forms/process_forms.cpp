// The dialogs of acceleration and deceleration: one value field that serves every reference factor, and a starting
// gear.
#include "core/ride_choices.h"
#include "core/text.h"
#include "core/units.h"
#include "forms/dialogs.h"
#include "forms/ride_rows.h"
#include "model/gear_table.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

// What the value field of a factor is; a factor "as maximal" or "as mean" value has none.
enum Factor : int { factorPower, factorNothing, factorTime, factorDistance, factorAccele, factorGravity };

constexpr Factor accelerationFactors[] = {factorPower,    factorPower,  factorNothing, factorNothing, factorTime,
                                          factorDistance, factorAccele, factorGravity, factorPower};
constexpr Factor decelerationFactors[] = {factorPower,    factorPower,  factorNothing, factorTime,
                                          factorDistance, factorAccele, factorGravity, factorPower};
static_assert(std::size(accelerationFactors) == accelerationFactorCount);
static_assert(std::size(decelerationFactors) == decelerationFactorCount);

constexpr const char* factorUnits[] = {"W", "W", "sec", "m", "mpss", "G"};

// The row's index is its factor.
bool isAccelerationFactor(const FormState& state, const Row& row)
{
    return accelerationFactors[state.values.rideTarget] == row.index;
}

bool isDecelerationFactor(const FormState& state, const Row& row)
{
    return decelerationFactors[state.values.rideTarget] == row.index;
}

std::string accelerationUnit(const FormState& state, const Row&)
{
    return factorUnits[accelerationFactors[state.values.rideTarget]];
}

std::string decelerationUnit(const FormState& state, const Row&)
{
    return factorUnits[decelerationFactors[state.values.rideTarget]];
}

constexpr Row factorRow(RowTest test, Factor factor, int id, Field field, Range range, const char* messageName,
                        const char* format = "%7.1lf")
{
    Row row = realRow(id, id + 10, field, range, format, messageName, factorUnits[factor]);
    return presentWhen(numbered(row, factor), test);
}

// Another factor starts from its own stored value.
void reloadValues(FormState& state, const Row& target)
{
    if (target.id != 5211 && target.id != 5311)
        return;
    for (const Row& row : state.form->rows)
        if (row.id == 5241 || row.id == 5341)
            reloadRow(state, row);
}

// Starting gear

constexpr int accelerationGearButtons[] = {5221, 5222};
constexpr int decelerationGearButtons[] = {5321, 5322};

bool selectsAccelerationGear(const FormState& state, const Row&)
{
    return state.values.startGearMode[startOfAcceleration] == gearSelected;
}

bool selectsDecelerationGear(const FormState& state, const Row&)
{
    return state.values.startGearMode[startOfDeceleration] == gearSelected;
}

std::vector<std::string> gearLabels(const FormState& state)
{
    const Model& model = *state.model;
    std::vector<std::string> labels;
    labels.reserve(static_cast<size_t>(model.state.gearCount));
    for (int row = 0; row < model.state.gearCount; ++row)
        labels.push_back(formatText("%d x %d", frontToothOf(model, row), rearToothOf(model, row)));
    return labels;
}

constexpr Row gearRow(int id, Field field, RowTest test)
{
    Row row = choiceRow(id, field, {});
    row.labelsNow = gearLabels;
    return enabledWhen(row, test);
}

// Among the defaults there is no gear: the one that suits the default starting velocity stands for it.
void proposeGear(FormState& state, RideMode rideMode, GearedStart which)
{
    if (!state.fromDefaults)
        return;
    double velocity = state.values.rideStartVelocity[rideMode];
    state.values.startGearIndex[which] = usualGear(*state.model, velocity);
}

// Acceleration

constexpr double leastKickTime = 0.1; // s

// A kick starts from standing.
bool startsStanding(const FormState& state, const Row&)
{
    return std::trunc(state.values.rideStartVelocity[rideAcceleration] * kphPerMps) == 0;
}

constexpr Row kickRow()
{
    Row row = rideRow(5244, TORVANE_FIELD(initialKickTime), {leastKickTime, 1, 0.1}, "an initial kick time", "sec");
    return checkedWhen(enabledWhen(row, startsStanding), startsStanding);
}

constexpr Row accelerationRows[] = {
    rideTargetRow(5211, accelerationFactorNames),
    labelRow(5231, accelerationUnit),
    factorRow(isAccelerationFactor, factorPower, 5241, TORVANE_FIELD_AS("ridePower", ridePower[rideAcceleration]),
              powers, "a power"),
    factorRow(isAccelerationFactor, factorTime, 5241, TORVANE_FIELD_AS("rideLegTime", rideLegTime[rideAcceleration]),
              legTimes, "a leg time"),
    factorRow(isAccelerationFactor, factorDistance, 5241,
              TORVANE_FIELD_AS("rideDistance", rideDistance[rideAcceleration]), distances, "a distance"),
    factorRow(isAccelerationFactor, factorAccele, 5241, TORVANE_FIELD_AS("rideAccele", rideAccele[rideAcceleration]),
              {0, 10, 0.1}, "an accele"),
    factorRow(isAccelerationFactor, factorGravity, 5241, TORVANE_FIELD_AS("rideGravity", rideGravity[rideAcceleration]),
              {0, 1.2, 0.01}, "a gravity", "%7.3lf"),
    velocityRow(5242, TORVANE_FIELD_AS("rideStartVelocity", rideStartVelocity[rideAcceleration]),
                "a starting velocity"),
    velocityRow(5243, TORVANE_FIELD_AS("rideEndVelocity", rideEndVelocity[rideAcceleration]), "a ending velocity"),
    kickRow(),
    inclinationRow(5245, TORVANE_FIELD_AS("rideInclination", rideInclination[rideAcceleration])),
    radioRow(accelerationGearButtons, TORVANE_FIELD_AS("startGearMode", startGearMode[startOfAcceleration]),
             startGearModeNames),
    gearRow(5212, TORVANE_FIELD_AS("startGearIndex", startGearIndex[startOfAcceleration]), selectsAccelerationGear),
};

// A start in motion was stored without a kick; the next one may stand.
void openAcceleration(FormState& state)
{
    proposeGear(state, rideAcceleration, startOfAcceleration);
    if (state.values.initialKickTime == 0)
        state.values.initialKickTime = leastKickTime;
}

void storeKickTime(FormState&, ParameterBlock& working)
{
    bool standing = working.rideStartVelocity[rideAcceleration] == 0;
    working.initialKickTime = standing ? std::max(working.initialKickTime, leastKickTime) : 0;
}

constexpr Form makeAccelerationForm()
{
    Form form = rideForm(2022, "acceleration", rideAcceleration, accelerationRows);
    form.opened = openAcceleration;
    form.changed = reloadValues;
    form.store = storeKickTime;
    return form;
}

// Deceleration

constexpr Row decelerationRows[] = {
    rideTargetRow(5311, decelerationFactorNames),
    labelRow(5331, decelerationUnit),
    factorRow(isDecelerationFactor, factorPower, 5341, TORVANE_FIELD_AS("ridePower", ridePower[rideDeceleration]),
              {-15000, 3000}, "a power"),
    factorRow(isDecelerationFactor, factorTime, 5341, TORVANE_FIELD_AS("rideLegTime", rideLegTime[rideDeceleration]),
              legTimes, "a leg time"),
    factorRow(isDecelerationFactor, factorDistance, 5341,
              TORVANE_FIELD_AS("rideDistance", rideDistance[rideDeceleration]), distances, "a distance"),
    factorRow(isDecelerationFactor, factorAccele, 5341, TORVANE_FIELD_AS("rideAccele", rideAccele[rideDeceleration]),
              {-10, 10, 0.1}, "an accele"),
    factorRow(isDecelerationFactor, factorGravity, 5341, TORVANE_FIELD_AS("rideGravity", rideGravity[rideDeceleration]),
              {-1.2, 1.2, 0.01}, "a gravity", "%7.3lf"),
    velocityRow(5342, TORVANE_FIELD_AS("rideStartVelocity", rideStartVelocity[rideDeceleration]),
                "a starting velocity"),
    velocityRow(5343, TORVANE_FIELD_AS("rideEndVelocity", rideEndVelocity[rideDeceleration]), "a ending velocity"),
    inclinationRow(5344, TORVANE_FIELD_AS("rideInclination", rideInclination[rideDeceleration])),
    radioRow(decelerationGearButtons, TORVANE_FIELD_AS("startGearMode", startGearMode[startOfDeceleration]),
             startGearModeNames),
    gearRow(5312, TORVANE_FIELD_AS("startGearIndex", startGearIndex[startOfDeceleration]), selectsDecelerationGear),
};

void proposeDecelerationGear(FormState& state)
{
    proposeGear(state, rideDeceleration, startOfDeceleration);
}

constexpr Form makeDecelerationForm()
{
    Form form = rideForm(2023, "deceleration", rideDeceleration, decelerationRows);
    form.opened = proposeDecelerationGear;
    form.changed = reloadValues;
    return form;
}

} // namespace

constinit const Form accelerationForm = makeAccelerationForm();
constinit const Form decelerationForm = makeDecelerationForm();

} // namespace torvane
