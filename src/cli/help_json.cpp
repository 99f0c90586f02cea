#include "cli/help_json.h"

#include "cli/entry_help.h"
#include "cli/help.h"
#include "cli/request.h"
#include "core/json.h"
#include "version.h"

#include <algorithm>

namespace torvane {

namespace {

// A member only where there is something to tell.
void addText(JsonList& object, std::string_view key, std::string_view text)
{
    if (!text.empty())
        object.member(key, jsonString(text));
}

std::string jsonTexts(const std::vector<std::string>& texts)
{
    JsonList list('[');
    for (const std::string& text : texts)
        list.element(jsonString(text));
    return list.close();
}

const char* kindName(const Row& row)
{
    switch (row.kind) {
    case RowKind::real:
        return "number";
    case RowKind::whole:
        return "whole";
    case RowKind::check:
        return "switch";
    case RowKind::words:
        return "text";
    default:
        return "choice";
    }
}

void addNumber(JsonList& object, const EntryHelp& entry)
{
    const Row& row = *entry.row;
    addText(object, "unit", row.unit);
    if (row.leastBinds)
        object.member("least", jsonNumber(row.least));
    if (row.mostBinds)
        object.member("most", jsonNumber(row.most));
    JsonList others('[');
    for (double value : entry.defaults)
        others.element(jsonNumber(value));
    object.member("default", jsonNumber(entry.defaults[0]));
    if (entry.defaults.size() > 1)
        object.member("defaults", others.close());
}

void addValues(JsonList& object, const EntryHelp& entry)
{
    if (isNumber(*entry.row)) {
        addNumber(object, entry);
    } else if (entry.row->kind == RowKind::check) {
        object.member("choices", "[\"off\", \"on\"]");
        object.member("default", entry.defaults[0] != 0 ? "\"on\"" : "\"off\"");
    } else if (entry.row->kind == RowKind::words) {
        addText(object, "default", "");
    } else {
        object.member("choices", jsonTexts(entry.labels));
        addText(object, "default", entry.chosen);
    }
}

void addCounting(JsonList& object, const Counting& counting)
{
    if (counting.by.empty())
        return;
    JsonList list('[');
    for (const Deciding& deciding : counting.by) {
        JsonList one('{');
        one.member("entry", jsonString(deciding.choice->name));
        one.member("values", jsonTexts(deciding.values));
        list.element(one.close());
    }
    object.member(counting.now ? "countsWithAll" : "countsWithAny", list.close());
}

std::string jsonEntry(const EntryHelp& entry)
{
    JsonList object('{');
    object.member("name", jsonString(entry.row->name));
    object.member("kind", jsonString(kindName(*entry.row)));
    addValues(object, entry);
    addText(object, "when", entry.row->when);
    addText(object, "meaning", entry.meaning);
    addCounting(object, entry.counting);
    return object.close();
}

std::string jsonForm(const Session& session, const Form& form, bool page)
{
    JsonList entries('[');
    for (const EntryHelp& entry : entriesOf(session, form, page))
        entries.element(jsonEntry(entry));
    JsonList object('{');
    object.member("title", jsonString(form.title));
    object.member("entries", entries.close());
    return object.close();
}

std::string jsonForms(const Session& session, const std::vector<const Form*>& forms, bool page)
{
    JsonList list('[');
    for (const Form* form : forms)
        list.element(jsonForm(session, *form, page));
    return list.close();
}

std::string jsonFigureInfos(const std::vector<FigureInfo>& infos)
{
    JsonList list('[');
    for (const FigureInfo& info : infos) {
        JsonList object('{');
        object.member("name", jsonString(info.name));
        addText(object, "unit", info.unit);
        addText(object, "group", info.group);
        list.element(object.close());
    }
    return list.close();
}

std::string jsonCommand(const Session& session, const Command& command)
{
    JsonList object('{');
    object.member("command", std::to_string(command.id));
    object.member("name", jsonString(consoleName(command)));
    if (command.aliases[0] != '\0')
        object.member("aliases", jsonTexts(aliasesOf(command)));
    object.member("label", jsonString(command.label));
    object.member("meaning", jsonString(command.meaning));
    object.member("call", jsonString(callOf(command)));
    addText(object, "files", command.files.pattern);
    object.member("graph", command.graph == GraphWhen::never ? "false" : "true");
    object.member("page", command.hasPage ? "true" : "false");
    bool sheet = command.entry == Entry::sheet;
    object.member("forms", jsonForms(session, sheet ? formsOf(command.sheet) : formsOf(command), sheet));
    if (command.figures)
        object.member("figures", jsonFigureInfos(command.figures(command)));
    return object.close();
}

std::string jsonTopic(const Session& session, const Topic& topic)
{
    JsonList object('{');
    object.member("name", jsonString(topic.name));
    object.member("forms", jsonForms(session, formsOf(topic.sheet), true));
    return object.close();
}

std::string jsonLeading()
{
    LeadingCommand command = leadingCommand();
    JsonList object('{');
    object.member("name", jsonString(command.name));
    object.member("call", jsonString(command.call));
    object.member("meaning", jsonString(command.meaning));
    return object.close();
}

std::string jsonOptions()
{
    JsonList list('[');
    for (const OptionInfo& option : optionInfos()) {
        JsonList object('{');
        object.member("name", jsonString(option.name));
        addText(object, "value", option.value);
        object.member("meaning", jsonString(option.meaning));
        list.element(object.close());
    }
    return list.close();
}

} // namespace

std::string helpJson(const Session& session)
{
    JsonList commands('['), leading('['), pages('[');
    leading.element(jsonLeading());
    for (const Command& command : commandTable())
        if (isOfConsole(command))
            commands.element(jsonCommand(session, command));
    for (const Topic& topic : helpTopics())
        pages.element(jsonTopic(session, topic));
    JsonList object('{');
    object.member("version", jsonString(TORVANE_VERSION));
    object.member("options", jsonOptions());
    object.member("commands", commands.close());
    object.member("leading", leading.close());
    object.member("pages", pages.close());
    return object.close();
}

std::string helpJsonOn(const Session& session, std::string_view name)
{
    for (const Topic& topic : helpTopics())
        if (topic.name == name)
            return jsonTopic(session, topic);
    if (name == sweepWord)
        return jsonLeading();
    const Command* command = findCommand(name);
    return command && isOfConsole(*command) ? jsonCommand(session, *command) : std::string();
}

} // namespace torvane
