#include "cli/help.h"

#include "command/command_table.h"
#include "command/entries.h"
#include "command/fill.h"
#include "command/kept_entries.h"
#include "core/text.h"
#include "forms/form.h"

#include <algorithm>
#include <vector>

namespace torvane {

namespace {

constexpr size_t nameWidth = 26;
constexpr size_t lineWidth = 100;

struct Topic {
    std::string_view name;
    Sheet sheet;
};

constexpr Topic topics[] = {
    {"profile", Sheet::profile}, {"condition", Sheet::condition}, {"preference", Sheet::preference}};

const Topic* findTopic(std::string_view name)
{
    const Topic* topic = std::ranges::find(topics, name, &Topic::name);
    return topic == std::end(topics) ? nullptr : topic;
}

std::string padded(std::string text, size_t width)
{
    text.resize(std::max(text.size() + 1, width), ' ');
    return text;
}

// Words after a name, broken into lines that start under the first one.
std::string describedLine(const std::string& name, const std::vector<std::string>& words)
{
    std::string line(2, ' '), text;
    line += padded(name, nameWidth);
    for (const std::string& word : words) {
        if (line.size() > nameWidth + 2 && line.size() + word.size() > lineWidth) {
            text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
            line = std::string(nameWidth + 2, ' ');
        }
        line += word + " ";
    }
    return text + line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
}

std::string number(double value)
{
    return formatText("%.10g", value);
}

void addChoices(std::vector<std::string>& words, const std::vector<std::string>& labels)
{
    for (size_t i = 0; i < labels.size(); ++i)
        words.push_back(labels[i] + (i + 1 < labels.size() ? " |" : ""));
}

void addUnit(std::vector<std::string>& words, const Row& row)
{
    if (row.unit[0] != '\0')
        words.push_back(row.unit);
}

void addRange(std::vector<std::string>& words, const Row& row)
{
    if (row.leastBinds && row.mostBinds)
        words.push_back(number(row.least) + " to " + number(row.most));
    else if (row.leastBinds)
        words.push_back("from " + number(row.least));
    addUnit(words, row);
}

// Edit boxes of one name that serve several choices, each with its own default.
std::string defaultsOf(const FormState& state, const Row& row)
{
    std::vector<std::string> defaults;
    for (const Row& other : state.form->rows) {
        if (other.kind != row.kind || std::string_view(other.name ? other.name : "") != row.name)
            continue;
        std::string text = number(shownValue(state, other));
        if (std::ranges::find(defaults, text) == defaults.end())
            defaults.push_back(text);
    }
    std::string joined;
    for (const std::string& text : defaults)
        joined += (joined.empty() ? "" : " or ") + text;
    return joined;
}

std::vector<std::string> wordsOf(const FormState& state, const Row& row)
{
    std::vector<std::string> words;
    std::vector<std::string> labels = rowLabels(state, row);
    switch (row.kind) {
    case RowKind::real:
    case RowKind::whole:
        addRange(words, row);
        words.push_back("(default " + defaultsOf(state, row) + ")");
        break;
    case RowKind::check:
        words = {"off | on", shownValue(state, row) != 0 ? "(default on)" : "(default off)"};
        break;
    case RowKind::choice:
    case RowKind::radio:
        addChoices(words, labels);
        if (int value = chosenValue(state, row); value >= 0 && value < static_cast<int>(labels.size()))
            words.push_back("(default " + labels[static_cast<size_t>(value)] + ")");
        break;
    default:
        addChoices(words, labels);
    }
    if (row.when[0] != '\0')
        words.push_back(std::string("- ") + row.when);
    return words;
}

// A control that serves one entry under several choices tells it once. The course of a ride without altitude would be
// flat by itself.
std::string formEntries(const Session& session, const Form& form, bool working)
{
    LoadedRide ride;
    ride.presence.altitudeFlags = presentInRecords;
    FormState state;
    openForm(state, form, working ? session.working : session.saved, session.working, session.model, true, ride);
    takeKept(state, session.kept);
    std::string text;
    std::vector<std::string> told;
    for (const Row& row : form.rows) {
        if (!row.name || row.kind == RowKind::path)
            continue;
        std::string line = describedLine(row.name, wordsOf(state, row));
        if (std::ranges::find(told, line) == told.end())
            text += line;
        told.push_back(line);
    }
    return text;
}

std::string pageEntries(const Session& session, Sheet sheet)
{
    std::string text;
    for (const Form* page : sheetPages(sheet)) {
        text += formatText("\n%s\n", page->title) + formEntries(session, *page, true);
        for (const Row& row : page->rows)
            if (row.kind == RowKind::button && row.index == 0)
                text += formEntries(session, *findForm(row.child), true);
    }
    return text;
}

std::string topicHelp(const Session& session, const Topic& topic)
{
    return "Entries of the " + std::string(topic.name) + " pages, as --set NAME=VALUE:\n" +
           pageEntries(session, topic.sheet);
}

std::string aliasList(const Command& command)
{
    std::string text;
    for (char c : std::string_view(command.aliases))
        text += c == ' ' ? ", " : std::string(1, c);
    return text;
}

bool takesEntries(const Command& command)
{
    std::vector<std::string> names;
    if (const Form* form = findForm(command.form))
        collectNames(*form, names);
    return !names.empty() || command.entry == Entry::sheet;
}

std::string callOf(const Command& command)
{
    std::string call = "torvane-cli " + consoleName(command);
    if (takesEntries(command))
        call += " [NAME=VALUE]...";
    std::string pattern = command.files.pattern;
    return pattern.empty() ? call : call + " " + pattern;
}

std::string commandHelp(const Session& session, const Command& command)
{
    std::string text = callOf(command) + "\n";
    text += formatText("  command %d, \"%s\"", command.id, command.label);
    if (command.aliases[0] != '\0')
        text += ", also: " + aliasList(command);
    text += "\n";
    if (command.entry == Entry::sheet)
        return text + pageEntries(session, command.sheet);
    for (const Form* form : {takesEntries(command) ? findForm(command.form) : nullptr, settingsForm(command)})
        if (form)
            text += formatText("\n%s\n", form->title) + formEntries(session, *form, false);
    return text;
}

bool isOfConsole(const Command& command)
{
    return command.work != Work::frontEnd;
}

} // namespace

std::string usageText()
{
    return "usage: torvane-cli [--par FILE] [--profile FILE.pro] [--save] [--set NAME=VALUE]... [--graph FILE.svg]\n"
           "                   [--json] [--into FOLDER [--jobs N]] [--force] [--prepare] COMMAND [NAME=VALUE]...\n"
           "                   [FILE]...\n"
           "       torvane-cli --help | --version | help COMMAND | help profile | condition | preference\n";
}

std::string generalHelp()
{
    std::string text = usageText();
    text +=
        "\n"
        "  --par FILE          start from the defaults in this parameter file\n"
        "  --profile FILE.pro  then load this profile\n"
        "  --set NAME=VALUE    set an entry of the profile, condition or preference pages\n"
        "  --save              make what was entered the new defaults of the --par file\n"
        "  --graph FILE.svg    draw the graph of the command into a file\n"
        "  --json              print the answer as one JSON object\n"
        "  --into FOLDER       for several files: write one file for each into a folder\n"
        "  --jobs N            with --into: so many files at a time; as many as the machine has cores unless given\n"
        "  --force             write over a file of another kind, or one that is there already; never over a source\n"
        "  --prepare           at-one-stroke: first put the ride as its device wrote it in order\n"
        "\n"
        "Reports go to standard output, the status line and messages to standard error.\n"
        "Exit codes: 0 done, warnings included; 1 fatal status or failed operation; 2 refused input; 128 and the\n"
        "number of the signal that ended it.\n"
        "\n"
        "Commands, by number or name:\n";
    for (const Command& command : commandTable())
        if (isOfConsole(command))
            text += formatText("  %d  %s%s\n", command.id, padded(consoleName(command), nameWidth + 2).c_str(),
                               aliasList(command).c_str());
    for (size_t end = text.find(" \n"); end != text.npos; end = text.find(" \n"))
        text.erase(end, 1);
    return text;
}

std::string helpOn(const Session& session, std::string_view name)
{
    if (const Topic* topic = findTopic(name))
        return topicHelp(session, *topic);
    const Command* command = findCommand(name);
    return command && isOfConsole(*command) ? commandHelp(session, *command) : std::string();
}

bool isHelpTopic(std::string_view name)
{
    return findTopic(name) != nullptr;
}

} // namespace torvane
