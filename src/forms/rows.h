// Short words for the rows of a form table, so that a table reads like the page it describes. For the tables alone.
#pragma once

#include "core/units.h"
#include "forms/form.h"

#include <cstddef>

namespace torvane {

// A field of ParameterBlock under the name by which the console takes it.
struct Field {
    const char* name;
    size_t offset;
};

// The one macro: an offset cannot be had from a member in any other constant way.
#define TORVANE_FIELD(member)                                                                                          \
    Field                                                                                                              \
    {                                                                                                                  \
#member, offsetof(ParameterBlock, member)                                                                      \
    }
// A field that the console knows by another name, since the form says which one it is.
#define TORVANE_FIELD_AS(name, member)                                                                                 \
    Field                                                                                                              \
    {                                                                                                                  \
        name, offsetof(ParameterBlock, member)                                                                         \
    }

struct Range {
    double least, most;
    double step = 1;
};

constexpr Row realRow(int id, int spin, Field field, Range range, const char* format, const char* messageName,
                      const char* unit = "")
{
    return {.kind = RowKind::real,
            .id = id,
            .spin = spin,
            .name = field.name,
            .offset = field.offset,
            .unit = unit,
            .format = format,
            .step = range.step,
            .least = range.least,
            .most = range.most,
            .messageName = messageName};
}

constexpr Row wholeRow(int id, int spin, Field field, Range range, const char* messageName, const char* unit = "")
{
    Row row = realRow(id, spin, field, range, "%d", messageName, unit);
    row.kind = RowKind::whole;
    return row;
}

constexpr Row choiceRow(int id, Field field, std::span<const char* const> labels)
{
    return {.kind = RowKind::choice, .id = id, .name = field.name, .offset = field.offset, .labels = labels};
}

// The buttons' ids stand in the order of the labels.
constexpr Row radioRow(std::span<const int> ids, Field field, std::span<const char* const> labels)
{
    return {.kind = RowKind::radio,
            .id = ids[0],
            .name = field.name,
            .offset = field.offset,
            .labels = labels,
            .radioIds = ids};
}

constexpr Row checkRow(int id, Field field)
{
    return {.kind = RowKind::check, .id = id, .name = field.name, .offset = field.offset};
}

constexpr Row labelRow(int id, std::string (*text)(const FormState&, const Row&), int index = 0)
{
    return {.kind = RowKind::label, .id = id, .index = index, .text = text};
}

constexpr Row messages(Row row, const char* tooSmall, const char* tooLarge)
{
    row.tooSmall = tooSmall;
    row.tooLarge = tooLarge;
    return row;
}

constexpr Row enabledWhen(Row row, RowTest test)
{
    row.enabled = test;
    return row;
}

constexpr Row presentWhen(Row row, RowTest test)
{
    row.present = test;
    return row;
}

constexpr Row checkedWhen(Row row, RowTest test)
{
    row.checked = test;
    return row;
}

constexpr Row countsWhen(Row row, RowTest test)
{
    row.counts = test;
    return row;
}

inline bool always(const FormState&, const Row&)
{
    return true;
}

// Which one of a family this row is, for the tests that the family shares.
constexpr Row numbered(Row row, int index)
{
    row.index = index;
    return row;
}

// Held in m/s, shown in kph.
constexpr Row inKph(Row row)
{
    row.shownPerStored = kphPerMps;
    row.unit = "kph";
    return row;
}

// The page flag of a form.
constexpr size_t pageFlag(Page page)
{
    return offsetof(ParameterBlock, pageChanged) + static_cast<size_t>(page) * sizeof(int32_t);
}

constexpr Form pageForm(int saveBox, const char* title, Page page, Marks marks, std::span<const Row> rows)
{
    return {.id = saveBox,
            .title = title,
            .confirm = nullptr,
            .saveBox = saveBox,
            .saveFlag = pageFlag(page),
            .opensWith = OpensWith::working,
            .spinRule = SpinRule::overshoots,
            .marks = marks,
            .rows = rows};
}

} // namespace torvane
