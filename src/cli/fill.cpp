#include "cli/fill.h"

#include "cli/entries.h"
#include "cli/nearest.h"
#include "cli/run.h"
#include "cli/settings.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr int analyseFormId = 2053;

bool formTakes(const Form* form, std::string_view name)
{
    return form && hasEntry(*form, name);
}

std::string unknownEntry(const Command& command, const std::string& name)
{
    std::vector<std::string> names;
    for (const Form* form : {findForm(command.form), settingsForm(command)})
        if (form)
            collectNames(*form, names);
    std::vector<std::string> pageNames = settingNames();
    if (std::ranges::find(pageNames, name) != pageNames.end())
        return name + " is an entry of a page: give it as --set " + name + "=...";
    return consoleName(command) + " has no entry " + name + suggestion(name, names);
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

std::vector<Assignment> entriesFor(const Form& form, const Request& request)
{
    std::vector<Assignment> own;
    for (const Assignment& entry : request.entries)
        if (hasEntry(form, entry.name))
            own.push_back(entry);
    return own;
}

// Sets the entries of an open form; false when one was refused. What has no effect is told once the form is accepted.
bool enter(FormState& state, Run& run)
{
    EntryFaults faults;
    for (const Assignment& hidden : setEntries(state, entriesFor(*state.form, run.request), faults))
        faults.notes.push_back(hidden.name + " has no effect with these choices");
    run.notes.insert(run.notes.end(), faults.notes.begin(), faults.notes.end());
    for (const std::string& text : faults.refusals)
        refuse(run.streams, text);
    return faults.refusals.empty();
}

bool confirm(FormState& state, Run& run)
{
    if (!mayConfirm(state)) {
        refuse(run.streams, consoleName(run.command) + " needs " + state.form->confirmNeeds);
        return false;
    }
    Verdict verdict = confirmForm(state, workingBlock);
    tellBoxes(run.answer, run.streams, verdict.boxes);
    return verdict.passed;
}

void open(FormState& state, const Form& form, const LoadedRide& ride, const Run& run)
{
    openForm(state, form, savedBlock, workingBlock, run.session.model, true, ride);
    state.saveAsDefault = run.request.save;
    takePaths(state, run.files);
}

// The settings of an analysis, opened by a button of the dialog when something of them is to be changed.
bool fillChild(FormState& state, Run& run)
{
    for (const Row& row : state.form->rows) {
        const Form* child = row.kind == RowKind::button ? findForm(row.child) : nullptr;
        if (!child || entriesFor(*child, run.request).empty())
            continue;
        Verdict verdict = pressButton(state, row, workingBlock);
        tellBoxes(run.answer, run.streams, verdict.boxes);
        if (!verdict.passed || !fillForm(*child, state.ride, run))
            return false;
        buttonReturned(state, row, workingBlock);
    }
    return true;
}

} // namespace

const Form* settingsForm(const Command& command)
{
    bool analyses = command.id == commandCreate || command.menu == MenuAfter::oneStroke;
    return analyses ? findForm(analyseFormId) : nullptr;
}

std::string checkNames(const Command& command, const Request& request)
{
    for (const Assignment& entry : request.entries)
        if (!formTakes(findForm(command.form), entry.name) && !formTakes(settingsForm(command), entry.name))
            return unknownEntry(command, entry.name);
    return {};
}

bool fillForm(const Form& form, const LoadedRide& ride, Run& run)
{
    FormState state;
    open(state, form, ride, run);
    return enter(state, run) && confirm(state, run);
}

bool fillDialog(Run& run)
{
    const Form* form = findForm(run.command.form);
    if (!form)
        return true;
    FormState state;
    open(state, *form, run.session.ride, run);
    if (!enter(state, run) || !fillChild(state, run) || !confirm(state, run))
        return false;
    if (!run.files.destination.empty())
        run.answer.outputs = {state.paths[destinationPath]};
    return true;
}

} // namespace torvane
