// Rows that every dialog of a FIT tool has: paths, and what the written file is to be. For their tables alone.
#pragma once

#include "core/fit_choices.h"
#include "fit/fit_tools.h"
#include "forms/rows.h"

namespace torvane {

constexpr Row sourceRow(int id, int browse, const char* name = "source", int index = 0)
{
    return {.kind = RowKind::path, .id = id, .spin = browse, .name = name, .index = index, .browse = Browse::openFit};
}

// Of a command that reads a ride from any file.
constexpr Row rideSourceRow(int id, int browse, const char* name = "source", int index = 0)
{
    Row row = sourceRow(id, browse, name, index);
    row.browse = Browse::openRide;
    return row;
}

constexpr Row destinationRow(int id, int browse, Browse kind = Browse::saveFit)
{
    return {.kind = RowKind::path,
            .id = id,
            .spin = browse,
            .name = "destination",
            .index = destinationPath,
            .browse = kind};
}

// The four members of one OutputChoice, by its offset.
constexpr size_t convertEnabledOf(size_t choice)
{
    return choice + offsetof(OutputChoice, convertEnabled);
}

constexpr size_t sportEnabledOf(size_t choice)
{
    return choice + offsetof(OutputChoice, sportEnabled);
}

int32_t wordAt(const ParameterBlock& block, size_t offset);

// A format or sport counts when its box is checked. The rows' index holds the offset of their OutputChoice.
bool convertIsEnabled(const FormState& state, const Row& row);
bool sportIsEnabled(const FormState& state, const Row& row);

constexpr Row convertBoxRow(int id, size_t choice)
{
    return checkRow(id, {"convertEnabled", convertEnabledOf(choice)});
}

constexpr Row headerFormRow(std::span<const int> ids, size_t choice,
                            std::span<const char* const> labels = headerFormNames)
{
    Row row = radioRow(ids, {"fitFormat", choice + offsetof(OutputChoice, fitFormat)}, labels);
    return enabledWhen(numbered(row, static_cast<int>(choice)), convertIsEnabled);
}

constexpr Row sportBoxRow(int id, size_t choice)
{
    return checkRow(id, {"sportEnabled", sportEnabledOf(choice)});
}

constexpr Row sportRow(int id, size_t choice)
{
    Row row = choiceRow(id, {"sportIndex", choice + offsetof(OutputChoice, sportIndex)}, sportNames);
    return enabledWhen(numbered(row, static_cast<int>(choice)), sportIsEnabled);
}

constexpr Form gpsForm(int id, const char* title, const char* confirm, GpsDialog dialog, std::span<const Row> rows)
{
    return {.id = id,
            .title = title,
            .confirm = confirm,
            .saveBox = 3051 + dialog,
            .saveFlag = offsetof(ParameterBlock, gpsSaveFlag) + static_cast<size_t>(dialog) * sizeof(int32_t),
            .rows = rows};
}

// A form whose entries the entry file keeps, where the box is ticked.
constexpr Form keptForm(Form form, int saveBox)
{
    form.saveBox = saveBox;
    form.saveFlag = noField;
    return form;
}

// The row of one path; null where the form has none.
const Row* pathRow(const FormState& state, size_t file);
// The verdict of a check of the form's inputs: the path that it refused is what the form refuses.
Verdict aboutPaths(FormState& state, Verdict verdict);
using ToolCheck = Verdict (*)(ToolInputs& inputs, ParameterBlock& options);

} // namespace torvane
