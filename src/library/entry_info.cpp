#include "library/entry_info.h"

#include "command/fill.h"
#include "command/settings_entries.h"
#include "core/parameter_block.h"
#include "forms/entry_meanings.h"
#include "library/errors.h"

namespace torvane::library {

namespace {

EntryKind kindOf(const Row& row)
{
    if (row.kind == RowKind::check)
        return EntryKind::onOff;
    if (isNumber(row))
        return row.kind == RowKind::whole ? EntryKind::whole : EntryKind::number;
    if (row.kind == RowKind::words)
        return EntryKind::text;
    return EntryKind::choice;
}

double valueOf(const FormState& state, const Row& row)
{
    if (isNumber(row) || row.kind == RowKind::check)
        return shownValue(state, row);
    return row.kind == RowKind::button || row.kind == RowKind::words ? 0 : chosenValue(state, row);
}

EntryInfo described(const FormState& state, const Row& row)
{
    EntryInfo info = {.name = row.name, .kind = kindOf(row), .value = valueOf(state, row), .when = row.when};
    info.meaning = meaningOf(*state.form, row.name);
    if (isNumber(row)) {
        Limits limits = limitsOf(row);
        info.unit = limits.unit;
        info.least = limits.least;
        info.most = limits.most;
    }
    if (info.kind == EntryKind::choice)
        info.choices = rowLabels(state, row);
    return info;
}

void describeForm(const Session& session, const Form& form, std::vector<EntryInfo>& infos)
{
    FormState state;
    openForm(state, form, session.saved, session.working, session.model, true, session.ride);
    for (const Row& row : form.rows)
        if (row.name && row.kind != RowKind::path && row.kind != RowKind::label)
            infos.push_back(described(state, row));
}

} // namespace

std::vector<EntryInfo> describedSettings(const Session& session)
{
    std::vector<EntryInfo> infos;
    for (Sheet sheet : settingsSheets)
        for (const Form* page : sheetPages(sheet)) {
            describeForm(session, *page, infos);
            for (const Row& row : page->rows)
                if (row.kind == RowKind::button && row.index == 0)
                    describeForm(session, *findForm(row.child), infos);
        }
    return infos;
}

std::vector<EntryInfo> describedEntries(const Session& session, const Command& command)
{
    std::vector<EntryInfo> infos;
    for (const Form* form : {findForm(command.form), settingsForm(command)})
        if (form)
            describeForm(session, *form, infos);
    return infos;
}

} // namespace torvane::library
