// What the preparing of a ride asks for: its own dialog and, from the console, the stroke that prepares first. The
// entries edit a record of their own, since the parameter block has no room for them; so they open with the program's
// defaults and are never kept as new ones.
#pragma once

#include "forms/rows.h"
#include "gps/prepare.h"

namespace torvane {

// The rows differ by the record that they edit.
using PrepareRecord = PrepareOptions& (*)();

inline PrepareOptions& optionsOfTool()
{
    return prepareOptions;
}

inline PrepareOptions& optionsOfOneStroke()
{
    return oneStrokePreparation.options;
}

template <PrepareRecord record, auto member>
double shownOption(const FormState&, const Row&)
{
    return record().*member;
}

template <PrepareRecord record, auto member>
void takeOption(FormState&, const Row&, int value)
{
    record().*member = value;
}

template <PrepareRecord record>
constexpr Row gapLimitRow(int id, int spin)
{
    Row row = wholeRow(id, spin, {"gapLimit", noField}, {leastGapLimit, mostGapLimit}, "a gap limit", "sec");
    row.shows = shownOption<record, &PrepareOptions::gapLimit>;
    return row;
}

template <PrepareRecord record>
constexpr Row jumpSpeedRow(int id, int spin)
{
    Row row =
        realRow(id, spin, {"jumpSpeed", noField}, {leastJumpSpeed, mostJumpSpeed, 1}, "%6.1lf", "a jump speed", "m/s");
    row.shows = shownOption<record, &PrepareOptions::jumpSpeed>;
    return row;
}

template <PrepareRecord record, int32_t PrepareOptions::*member>
constexpr Row dropRow(int id, const char* name)
{
    Row row = checkRow(id, {name, noField});
    row.shows = shownOption<record, member>;
    row.takes = takeOption<record, member>;
    return row;
}

// After a row has changed: what is typed into the two edit boxes goes to the record. A value beyond its limits stays in
// the box, where confirming finds it.
inline void takeLimits(const FormState& state, const Row& gapLimit, const Row& jumpSpeed, PrepareOptions& options)
{
    double gap = shownValue(state, gapLimit), speed = shownValue(state, jumpSpeed);
    if (gap >= gapLimit.least && gap <= gapLimit.most)
        options.gapLimit = static_cast<int32_t>(gap);
    if (speed >= jumpSpeed.least && speed <= jumpSpeed.most)
        options.jumpSpeed = speed;
}

} // namespace torvane
