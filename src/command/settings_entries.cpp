#include "command/settings_entries.h"

#include "command/command_table.h"
#include "command/nearest.h"
#include "command/settings_command.h"
#include "forms/form.h"
#include "forms/pages.h"

#include <algorithm>

namespace torvane {

namespace {

struct Applying {
    Session& session;
    bool save;
    EntryFaults& faults;
    std::vector<Box>& boxes;
};

std::vector<Assignment> entriesOf(const Form& form, const std::vector<Assignment>& settings)
{
    std::vector<Assignment> own;
    for (const Assignment& assignment : settings)
        if (hasEntry(form, assignment.name))
            own.push_back(assignment);
    return own;
}

bool confirm(FormState& state, Applying& applying)
{
    if (!applying.faults.refusals.empty())
        return false;
    Verdict verdict = confirmPage(applying.session, state);
    keepRefused(applying.faults, state);
    applying.boxes.insert(applying.boxes.end(), verdict.boxes.begin(), verdict.boxes.end());
    return verdict.passed;
}

// The dialog behind a "predict" button, for the wheel that the working block names.
bool fillPrediction(const std::vector<Assignment>& settings, Applying& applying)
{
    FormState child;
    openForm(child, predictWheelForm, applying.session.saved, applying.session.working, applying.session.model, true);
    setEntries(child, settings, applying.faults);
    return confirm(child, applying);
}

// What is known of a wheel's build, even when nothing is predicted from it. The page behind which it stands is accepted
// with it.
bool storeBuilds(const std::vector<Assignment>& builds, Applying& applying)
{
    int32_t before = applying.session.working.predictWheel;
    bool stored = true;
    for (int wheel = 0; stored && wheel < wheelCount; ++wheel) {
        applying.session.working.predictWheel = wheel;
        stored = fillPrediction(builds, applying);
    }
    applying.session.working.predictWheel = before;
    return stored;
}

bool pressPredict(FormState& state, const Assignment& assignment, Applying& applying)
{
    for (const Row& row : state.form->rows) {
        if (row.kind != RowKind::button || choiceOf(rowLabels(state, row), assignment.value) != row.index)
            continue;
        pressButton(state, row, applying.session.working);
        if (!fillPrediction({}, applying))
            return false;
        buttonReturned(state, row, applying.session.working);
        return true;
    }
    applying.faults.refusals.push_back(
        {RefusalKind::badValue, assignment.name, "predictWheel takes front or rear, not '" + assignment.value + "'"});
    return false;
}

bool pressButtons(FormState& state, const std::vector<Assignment>& own, Applying& applying)
{
    for (const Assignment& assignment : own)
        if (assignment.name == "predictWheel" && !pressPredict(state, assignment, applying))
            return false;
    return true;
}

// A page is accepted again as long as that brings entries into view that it hid when it opened.
bool fillPage(const Form& page, std::vector<Assignment> pending, Applying& applying)
{
    for (;;) {
        FormState state;
        openForm(state, page, applying.session.saved, applying.session.working, applying.session.model, true);
        state.saveAsDefault = applying.save;
        std::vector<Assignment> hidden = setEntries(state, pending, applying.faults);
        if (!pressButtons(state, pending, applying) || !confirm(state, applying))
            return false;
        if (hidden.empty() || hidden.size() == pending.size()) {
            for (const Assignment& assignment : hidden)
                applying.faults.notes.push_back(assignment.name + " has no effect with these choices");
            return true;
        }
        pending = hidden;
    }
}

bool fillSheet(Sheet sheet, const std::vector<Assignment>& settings, Applying& applying)
{
    bool touched = false;
    for (const Form* page : sheetPages(sheet)) {
        std::vector<Assignment> own = entriesOf(*page, settings), builds;
        if (page == &wheelPage)
            builds = entriesOf(predictWheelForm, settings);
        if (own.empty() && builds.empty())
            continue;
        touched = true;
        if (!builds.empty() && !storeBuilds(builds, applying))
            return false;
        if (!fillPage(*page, own, applying))
            return false;
    }
    if (touched)
        findCommand(sheet)->operation(applying.session);
    return true;
}

bool anyFormHas(std::string_view name)
{
    return std::ranges::any_of(allForms(), [&](const Form* form) { return hasEntry(*form, name); });
}

bool namesAreKnown(const std::vector<Assignment>& settings, EntryFaults& faults)
{
    std::vector<std::string> names = settingNames();
    for (const Assignment& assignment : settings) {
        if (std::ranges::find(names, assignment.name) != names.end())
            continue;
        const std::string& name = assignment.name;
        if (anyFormHas(name))
            faults.refusals.push_back({RefusalKind::ofCommand, name, name + " is an entry of a command"});
        else
            faults.refusals.push_back(
                {RefusalKind::unknownEntry, name, "no page has an entry " + name + suggestion(name, names)});
    }
    return faults.refusals.empty();
}

} // namespace

std::vector<std::string> settingNames()
{
    std::vector<std::string> names;
    for (Sheet sheet : settingsSheets)
        for (const Form* page : sheetPages(sheet))
            collectNames(*page, names);
    collectNames(predictWheelForm, names);
    return names;
}

bool applySettings(Session& session, const std::vector<Assignment>& settings, bool save, EntryFaults& faults,
                   std::vector<Box>& boxes)
{
    Applying applying = {session, save, faults, boxes};
    if (!namesAreKnown(settings, faults))
        return false;
    return std::ranges::all_of(settingsSheets, [&](Sheet sheet) { return fillSheet(sheet, settings, applying); });
}

} // namespace torvane
