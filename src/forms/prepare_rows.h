// What the preparing of a ride asks for: its own dialog and, from the console, the stroke that prepares first. The
// entries edit a record of the open form, since the parameter block has no room for them; the entry file keeps them.
#pragma once

#include "forms/rows.h"

namespace torvane {

template <auto member>
double shownOption(const FormState& state, const Row&)
{
    return state.preparation.options.*member;
}

template <auto member>
void takeOption(FormState& state, const Row&, int value)
{
    state.preparation.options.*member = value;
}

constexpr Row gapLimitRow(int id, int spin)
{
    Row row = wholeRow(id, spin, {"gapLimit", noField}, {leastGapLimit, mostGapLimit}, "a gap limit", "sec");
    row.shows = shownOption<&PrepareOptions::gapLimit>;
    row.kept = true;
    return row;
}

constexpr Row jumpSpeedRow(int id, int spin)
{
    Row row =
        realRow(id, spin, {"jumpSpeed", noField}, {leastJumpSpeed, mostJumpSpeed, 1}, "%6.1lf", "a jump speed", "m/s");
    row.shows = shownOption<&PrepareOptions::jumpSpeed>;
    row.kept = true;
    return row;
}

template <int32_t PrepareOptions::*member>
constexpr Row dropRow(int id, const char* name)
{
    Row row = checkRow(id, {name, noField});
    row.shows = shownOption<member>;
    row.takes = takeOption<member>;
    row.kept = true;
    return row;
}

constexpr Row rideSportRow(int id)
{
    Row row = choiceRow(id, {"sport", noField}, rideSportNames);
    row.shows = shownOption<&PrepareOptions::sport>;
    row.takes = takeOption<&PrepareOptions::sport>;
    row.kept = true;
    return row;
}

// After a row has changed: what is typed into the two edit boxes goes to the record. A value beyond its limits stays in
// the box, where confirming finds it.
inline void takeLimits(FormState& state, const Row& gapLimit, const Row& jumpSpeed)
{
    PrepareOptions& options = state.preparation.options;
    double gap = shownValue(state, gapLimit), speed = shownValue(state, jumpSpeed);
    if (gap >= gapLimit.least && gap <= gapLimit.most)
        options.gapLimit = static_cast<int32_t>(gap);
    if (speed >= jumpSpeed.least && speed <= jumpSpeed.most)
        options.jumpSpeed = speed;
}

} // namespace torvane
