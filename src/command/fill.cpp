#include "command/fill.h"

#include "command/kept_entries.h"
#include "command/nearest.h"
#include "command/settings_command.h"
#include "command/settings_entries.h"
#include "core/files.h"
#include "fit/fit_tools.h"
#include "forms/dialogs.h"

#include <algorithm>

namespace torvane {

namespace {

bool formTakes(const Form* form, std::string_view name)
{
    return form && hasEntry(*form, name);
}

Refusal unknownEntry(const Command& command, const std::string& name)
{
    std::vector<std::string> names;
    for (const Form* form : {findForm(command.form), settingsForm(command)})
        if (form)
            collectNames(*form, names);
    std::vector<std::string> pageNames = settingNames();
    if (std::ranges::find(pageNames, name) != pageNames.end())
        return {RefusalKind::ofPage, name, name + " is an entry of a page"};
    return {RefusalKind::unknownEntry, name, consoleName(command) + " has no entry " + name + suggestion(name, names)};
}

void takePaths(FormState& state, const RunFiles& files)
{
    for (const Row& row : state.form->rows) {
        if (row.kind != RowKind::path)
            continue;
        size_t index = static_cast<size_t>(row.index);
        if (row.index == destinationPath)
            setPath(state, row, files.destination);
        else if (index < files.sources.size())
            setPath(state, row, files.sources[index]);
    }
}

std::vector<Assignment> entriesFor(const Form& form, const std::vector<Assignment>& entries)
{
    std::vector<Assignment> own;
    for (const Assignment& entry : entries)
        if (hasEntry(form, entry.name))
            own.push_back(entry);
    return own;
}

void keepBoxes(Filling& filling, const Verdict& verdict)
{
    filling.boxes.insert(filling.boxes.end(), verdict.boxes.begin(), verdict.boxes.end());
}

// Sets the entries of an open form; false when one was refused. What has no effect is told once the form is accepted.
bool enter(FormState& state, Filling& filling)
{
    EntryFaults& faults = filling.faults;
    for (const Assignment& hidden : setEntries(state, entriesFor(*state.form, filling.entries), faults))
        faults.notes.push_back(hidden.name + " has no effect with these choices");
    return faults.refusals.empty();
}

bool confirm(FormState& state, Filling& filling)
{
    if (!mayConfirm(state)) {
        filling.faults.refusals.push_back(
            {RefusalKind::missing, {}, consoleName(filling.command) + " needs " + state.form->confirmNeeds});
        return false;
    }
    Verdict verdict = confirmDialog(filling.session, state);
    keepRefused(filling.faults, state);
    keepBoxes(filling, verdict);
    return verdict.passed;
}

void open(FormState& state, const Form& form, const LoadedRide& ride, const Filling& filling)
{
    openForm(state, form, filling.session.saved, filling.session.working, filling.session.model, true, ride);
    takeKept(state, filling.session.kept);
    state.saveAsDefault = filling.saveAsDefault;
    takePaths(state, filling.files);
}

// The settings of an analysis, opened by a button of the dialog when something of them is to be changed.
bool fillChild(FormState& state, Filling& filling)
{
    for (const Row& row : state.form->rows) {
        const Form* child = row.kind == RowKind::button ? findForm(row.child) : nullptr;
        if (!child || entriesFor(*child, filling.entries).empty())
            continue;
        Verdict verdict = pressButton(state, row, filling.session.working);
        keepBoxes(filling, verdict);
        if (!verdict.passed || !fillForm(*child, state.ride, filling))
            return false;
        buttonReturned(state, row, filling.session.working);
    }
    return true;
}

} // namespace

const Form* settingsForm(const Command& command)
{
    return command.takesSettings ? &analyseForm : nullptr;
}

std::vector<std::string> filesOf(const Filling& filling)
{
    if (!filling.command.files.inParts)
        return {filling.destination};
    std::vector<std::string> parts;
    int count = dividedPartCount(filling.session.inputs.files[0]);
    parts.reserve(static_cast<size_t>(count));
    for (int part = 0; part < count; ++part)
        parts.push_back(dividedFileName(filling.destination, part));
    return parts;
}

std::vector<std::string> filesNamedBy(const Command& command, const std::vector<Assignment>& entries)
{
    std::vector<std::string> paths;
    const Form* form = findForm(command.form);
    for (const Assignment& entry : entries) {
        auto names = [&](const Row& row) {
            return row.kind == RowKind::words && row.browse != Browse::none && row.name == entry.name;
        };
        if (form && !entry.value.empty() && std::ranges::any_of(form->rows, names))
            paths.push_back(absolutePath(entry.value));
    }
    return paths;
}

Refusal checkNames(const Command& command, const std::vector<Assignment>& entries)
{
    for (const Assignment& entry : entries)
        if (!formTakes(findForm(command.form), entry.name) && !formTakes(settingsForm(command), entry.name))
            return unknownEntry(command, entry.name);
    return {};
}

bool fillForm(const Form& form, const LoadedRide& ride, Filling& filling)
{
    FormState state;
    open(state, form, ride, filling);
    return enter(state, filling) && confirm(state, filling);
}

bool fillDialog(Filling& filling)
{
    const Form* form = findForm(filling.command.form);
    if (!form)
        return true;
    FormState state;
    open(state, *form, filling.session.ride, filling);
    if (!enter(state, filling) || !fillChild(state, filling) || !confirm(state, filling))
        return false;
    if (!filling.files.destination.empty())
        filling.destination = state.inputs.files[toolDestination].path;
    return true;
}

} // namespace torvane
