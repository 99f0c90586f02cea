#include "cli/entry_help.h"

#include "command/fill.h"
#include "command/kept_entries.h"

#include <algorithm>

namespace torvane {

namespace {

std::vector<double> defaultsOf(const FormState& state, const Row& row)
{
    std::vector<double> defaults;
    for (const Row& other : state.form->rows) {
        if (other.kind != row.kind || !other.name || std::string_view(other.name) != row.name)
            continue;
        double value = shownValue(state, other);
        if (std::ranges::find(defaults, value) == defaults.end())
            defaults.push_back(value);
    }
    return defaults;
}

EntryHelp helpOn(const FormState& state, const Row& row)
{
    EntryHelp help = {
        .row = &row, .meaning = meaningOf(*state.form, row.name), .counting = countingOf(state, row.name)};
    if (isNumber(row) || row.kind == RowKind::check) {
        help.defaults = defaultsOf(state, row);
        return help;
    }
    if (row.kind == RowKind::words)
        return help;
    help.labels = rowLabels(state, row);
    int value = row.kind == RowKind::button ? -1 : chosenValue(state, row);
    if (value >= 0 && value < static_cast<int>(help.labels.size()))
        help.chosen = help.labels[static_cast<size_t>(value)];
    return help;
}

bool saysTheSame(const Row& a, const Row& b)
{
    return std::string_view(a.name) == b.name && a.kind == b.kind && std::string_view(a.unit) == b.unit &&
           a.least == b.least && a.most == b.most && std::string_view(a.when) == b.when;
}

} // namespace

// The course of a ride without altitude would be flat by itself.
std::vector<EntryHelp> entriesOf(const Session& session, const Form& form, bool page)
{
    LoadedRide ride;
    ride.presence.altitudeFlags = presentInRecords;
    FormState state;
    openForm(state, form, page ? session.working : session.saved, session.working, session.model, true, ride);
    takeKept(state, session.kept);
    std::vector<EntryHelp> entries;
    for (const Row& row : form.rows) {
        bool told = row.name == nullptr || row.kind == RowKind::path ||
                    std::ranges::any_of(entries, [&](const EntryHelp& entry) { return saysTheSame(*entry.row, row); });
        if (!told)
            entries.push_back(helpOn(state, row));
    }
    return entries;
}

std::vector<const Form*> formsOf(const Command& command)
{
    std::vector<const Form*> forms;
    for (const Form* form : {findForm(command.form), settingsForm(command)}) {
        std::vector<std::string> names;
        if (form)
            collectNames(*form, names);
        if (!names.empty())
            forms.push_back(form);
    }
    return forms;
}

std::vector<const Form*> formsOf(Sheet sheet)
{
    std::vector<const Form*> forms;
    for (const Form* page : sheetPages(sheet)) {
        forms.push_back(page);
        for (const Row& row : page->rows)
            if (row.kind == RowKind::button && row.index == 0)
                forms.push_back(findForm(row.child));
    }
    return forms;
}

} // namespace torvane
