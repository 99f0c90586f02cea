#include "command/kept_entries.h"

#include "command/entries.h"
#include "core/text.h"

#include <algorithm>

namespace torvane {

namespace {

bool withinLimits(const FormState& state, const Row& row)
{
    double value = shownValue(state, row);
    return value >= row.least && value <= row.most;
}

// False, and the row as it was, where it does not take the value.
bool take(FormState& state, const Row& row, std::string_view value)
{
    EntryFaults faults;
    std::string before = isNumber(row) ? rowText(state, row) : std::string();
    setEntries(state, {{row.name, std::string(value)}}, faults);
    if (faults.refusals.empty() && (!isNumber(row) || withinLimits(state, row)))
        return true;
    if (isNumber(row))
        editText(state, row, before);
    return false;
}

std::string valueText(const FormState& state, const Row& row)
{
    if (row.kind == RowKind::real)
        return formatText("%.15g", shownValue(state, row));
    if (row.kind == RowKind::whole)
        return formatText("%.0lf", shownValue(state, row));
    if (row.kind == RowKind::check)
        return chosenValue(state, row) ? "on" : "off";
    return rowLabels(state, row)[static_cast<size_t>(chosenValue(state, row))];
}

std::string skipped(const Row& row, std::string_view value)
{
    std::string text = std::string(row.name) + '=' + std::string(value);
    return isNumber(row) ? text + formatText(", which takes %g to %g %s", row.least, row.most, row.unit)
                         : text + ", which has no such choice";
}

} // namespace

void takeKept(FormState& state, const EntryFile& file)
{
    for (const Row& row : state.form->rows)
        if (std::string_view value = row.kept ? keptValue(file, row.name) : std::string_view(); !value.empty())
            take(state, row, value);
}

void keepEntries(const FormState& state, EntryFile& file)
{
    for (const Row& row : state.form->rows)
        if (row.kept && takesEffect(state, row))
            keepValue(file, row.name, valueText(state, row));
}

std::vector<std::string> skippedEntries(const EntryFile& file)
{
    std::vector<std::string> texts = brokenLines(file);
    if (file.lines.empty())
        return texts;
    ParameterBlock block = defaultBlock();
    Model model = modelOf(block);
    for (const Form* form : allForms()) {
        FormState state;
        openForm(state, *form, block, block, model, true);
        for (const Row& row : form->rows) {
            std::string_view value = row.kept ? keptValue(file, row.name) : std::string_view();
            if (value.empty() || take(state, row, value))
                continue;
            if (std::string text = skipped(row, value); std::ranges::find(texts, text) == texts.end())
                texts.push_back(text);
        }
    }
    return texts;
}

} // namespace torvane
