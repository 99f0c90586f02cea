#include "cli/help.h"

#include "cli/entry_help.h"
#include "cli/request.h"
#include "core/text.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr size_t nameWidth = 26;
constexpr size_t lineWidth = 100;

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

std::string joined(const std::vector<std::string>& words, const char* between)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : between) + word;
    return text;
}

std::string defaultsOf(const EntryHelp& entry)
{
    std::vector<std::string> texts;
    for (double value : entry.defaults)
        texts.push_back(number(value));
    return "(default " + joined(texts, " or ") + ")";
}

std::vector<std::string> wordsOf(const EntryHelp& entry)
{
    std::vector<std::string> words;
    const Row& row = *entry.row;
    if (isNumber(row)) {
        addRange(words, row);
        words.push_back(defaultsOf(entry));
    } else if (row.kind == RowKind::check) {
        words = {"off | on", entry.defaults[0] != 0 ? "(default on)" : "(default off)"};
    } else if (row.kind == RowKind::words) {
        words = {"a", "text"};
    } else {
        addChoices(words, entry.labels);
        if (!entry.chosen.empty())
            words.push_back("(default " + entry.chosen + ")");
    }
    if (row.when[0] != '\0')
        words.push_back(std::string("- ") + row.when);
    return words;
}

void addWords(std::vector<std::string>& words, std::string_view text)
{
    for (size_t start = 0; start < text.size();) {
        size_t end = std::min(text.find(' ', start), text.size());
        words.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
}

// "counts with rideTarget = mean power | PEV as mean".
std::vector<std::string> countingWords(const Counting& counting)
{
    std::vector<std::string> words;
    for (const Deciding& deciding : counting.by) {
        addWords(words, words.empty() ? "counts with" : counting.now ? "and" : "or");
        addWords(words, std::string(deciding.choice->name) + " =");
        addChoices(words, deciding.values);
    }
    return words;
}

std::string entryText(const EntryHelp& entry)
{
    std::vector<std::string> meaning;
    addWords(meaning, entry.meaning);
    std::vector<std::string> counting = countingWords(entry.counting);
    return describedLine(entry.row->name, wordsOf(entry)) + describedLine("", meaning) +
           (counting.empty() ? "" : describedLine("", counting));
}

std::string formText(const Session& session, const Form& form, bool page)
{
    std::string text = formatText("\n%s\n", form.title);
    for (const EntryHelp& entry : entriesOf(session, form, page))
        text += entryText(entry);
    return text;
}

std::string pageEntries(const Session& session, Sheet sheet)
{
    std::string text;
    for (const Form* page : formsOf(sheet))
        text += formText(session, *page, true);
    return text;
}

std::string topicHelp(const Session& session, const Topic& topic)
{
    return "Entries of the " + std::string(topic.name) + " pages, as --set NAME=VALUE:\n" +
           pageEntries(session, topic.sheet);
}

// "answers: power W, velocity kph, ...", and a line for each group.
std::string answersText(const Command& command)
{
    std::string text, group;
    std::vector<std::string> words;
    auto endGroup = [&] {
        words.back().pop_back(); // the comma
        text += describedLine("answers: " + group, words);
        words.clear();
    };
    for (const FigureInfo& info : command.figures ? command.figures(command) : std::vector<FigureInfo>()) {
        if (info.group != group && !words.empty())
            endGroup();
        group = info.group;
        words.push_back(info.name + (*info.unit != '\0' ? std::string(" ") + info.unit : "") + ",");
    }
    if (words.empty())
        return {};
    endGroup();
    return "\nfigures (--json)\n" + text;
}

std::string commandHelp(const Session& session, const Command& command)
{
    std::string text = callOf(command) + "\n";
    text += formatText("  %s\n  command %d, \"%s\"", command.meaning, command.id, command.label);
    if (command.aliases[0] != '\0')
        text += ", also: " + joined(aliasesOf(command), ", ");
    text += "\n";
    if (command.entry == Entry::sheet)
        return text + pageEntries(session, command.sheet);
    for (const Form* form : formsOf(command))
        text += formText(session, *form, false);
    return text + answersText(command);
}

std::string optionLine(const OptionInfo& option)
{
    std::string name(option.name);
    std::vector<std::string> words;
    addWords(words, option.meaning);
    return describedLine(option.value.empty() ? name : name + " " + std::string(option.value), words);
}

std::string commandLine(const Command& command)
{
    std::vector<std::string> words;
    addWords(words, command.meaning);
    std::string names = joined(aliasesOf(command), ", ");
    return formatText("  %d  %s%s%s\n", command.id, consoleName(command).c_str(), names.empty() ? "" : ", ",
                      names.c_str()) +
           describedLine("", words);
}

// "[--par FILE]" of each option, broken into lines.
std::string optionUsage()
{
    constexpr size_t indent = 19;
    std::string text, line = "usage: torvane-cli";
    for (const OptionInfo& option : optionInfos()) {
        std::string name(option.name), value(option.value);
        std::string word = formatText(" [%s%s%s]%s", name.c_str(), value.empty() ? "" : " ", value.c_str(),
                                      name == "--set" ? "..." : "");
        if (line.size() + word.size() > lineWidth) {
            text += line + "\n";
            line = std::string(indent - 1, ' ');
        }
        line += word;
    }
    return text + line + "\n" + std::string(indent, ' ');
}

std::string sweepHelp()
{
    auto [name, call, meaning] = leadingCommand();
    return std::string(call) + "\n  " + std::string(meaning) +
           "\n\n"
           "  One to three entries are given as FROM:TO:STEP, also those of the pages: --set torsoAngle=10:40:5. Each\n"
           "  combination is a row: the values, the figures of the command with their units (torvane-cli help COMMAND\n"
           "  lists them), and its outcome: done, warning, or why there is no answer. All digits are those of a "
           "single\n"
           "  call. --rows FILE.csv, .tsv or .ndjson writes a file; else the rows go to standard output, with --json "
           "as\n"
           "  an object a line. --jobs N runs so many at a time.\n\n"
           "  torvane-cli sweep power-and-velocity rideVelocity=20:60:0.5 rideInclination=-10:10:1 --rows grid.csv\n";
}

} // namespace

LeadingCommand leadingCommand()
{
    return {sweepWord, "torvane-cli sweep COMMAND ENTRY=FROM:TO:STEP... [NAME=VALUE]... [FILE]... [--rows FILE]",
            "the figures of another command for every combination of up to three entries' values"};
}

std::span<const Topic> helpTopics()
{
    return topics;
}

bool isOfConsole(const Command& command)
{
    return command.work != Work::frontEnd;
}

std::vector<std::string> aliasesOf(const Command& command)
{
    std::vector<std::string> aliases;
    addWords(aliases, command.aliases);
    return aliases;
}

std::string callOf(const Command& command)
{
    std::string call = "torvane-cli " + consoleName(command);
    if (command.entry == Entry::sheet || !formsOf(command).empty())
        call += " [NAME=VALUE]...";
    std::string pattern = command.files.pattern;
    return pattern.empty() ? call : call + " " + pattern;
}

std::string usageText()
{
    return optionUsage() + "COMMAND [NAME=VALUE]... [FILE]...\n"
                           "       torvane-cli sweep COMMAND ENTRY=FROM:TO:STEP... [NAME=VALUE]... [FILE]...\n"
                           "       torvane-cli help [COMMAND | profile | condition | preference]\n";
}

std::string generalHelp()
{
    std::string text = usageText() + "\n";
    for (const OptionInfo& option : optionInfos())
        text += optionLine(option);
    text += "\n"
            "Reports go to standard output, the status line and messages to standard error.\n"
            "Exit codes: 0 done, warnings included; 1 fatal status or failed operation; 2 refused input; 128 and the\n"
            "number of the signal that ended it.\n"
            "\n"
            "Commands, by number or name:\n";
    for (const Command& command : commandTable())
        if (isOfConsole(command))
            text += commandLine(command);
    std::vector<std::string> words;
    addWords(words, leadingCommand().meaning);
    return text + formatText("  in front of a command: %s\n", std::string(sweepWord).c_str()) +
           describedLine("", words);
}

std::string helpOn(const Session& session, std::string_view name)
{
    if (const Topic* topic = findTopic(name))
        return topicHelp(session, *topic);
    if (name == sweepWord)
        return sweepHelp();
    const Command* command = findCommand(name);
    return command && isOfConsole(*command) ? commandHelp(session, *command) : std::string();
}

} // namespace torvane
