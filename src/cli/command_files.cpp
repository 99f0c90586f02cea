#include "cli/command_files.h"

#include "core/command_ids.h"
#include "core/files.h"
#include "core/text.h"

#include <algorithm>

namespace torvane {

namespace {

struct FileRule {
    int command;
    size_t least, most;
    FileKind writes; // of the last one, the destination; nothing: there is none
    const char* pattern;
    bool onlyNew = false;
};

constexpr FileRule rules[] = {
    {commandLoadProfile, 1, 1, FileKind::nothing, "FILE.pro"},
    {commandSaveProfile, 1, 1, FileKind::profile, "FILE.pro"},
    {commandLoadRide, 1, 1, FileKind::nothing, "RIDE.fit"},
    {commandExpress, 1, 1, FileKind::nothing, "RIDE.fit"},
    {commandAnalyse, 1, 1, FileKind::nothing, "RIDE.fit"},
    {commandCreate, 2, 2, FileKind::fit, "RIDE.fit OUT.fit"},
    {commandCombine, 2, 6, FileKind::fit, "A.fit B.fit [C.fit [D.fit [E.fit]]] OUT.fit", true},
    {commandConvert, 2, 2, FileKind::fit, "IN.fit OUT.fit"},
    {commandAddMessages, 2, 2, FileKind::fit, "IN.fit OUT.fit"},
    {commandDivide, 2, 2, FileKind::fit, "IN.fit BASE.fit"},
    {commandExclude, 2, 2, FileKind::fit, "IN.fit OUT.fit"},
    {commandOneStroke, 2, 2, FileKind::fit, "RIDE.fit OUT.fit"},
    {commandTimestamp, 2, 2, FileKind::fit, "IN.fit OUT.fit"},
    {commandFieldDump, 2, 2, FileKind::csv, "IN.fit OUT.csv"},
    {commandPrepare, 2, 2, FileKind::fit, "IN.fit OUT.fit"},
    {commandCompare, 2, 2, FileKind::nothing, "A.fit B.fit"},
};

const FileRule* ruleOf(int command)
{
    const FileRule* rule = std::ranges::find(rules, command, &FileRule::command);
    return rule == std::end(rules) ? nullptr : rule;
}

// A profile path without an extension gets one, as from the prompts.
std::string profilePath(const std::string& path)
{
    return fileName(path).find('.') == std::string_view::npos ? path + ".pro" : path;
}

RunFiles plainRun(const FileRule& rule, const std::vector<std::string>& files)
{
    RunFiles run;
    for (const std::string& file : files)
        run.sources.push_back(absolutePath(file));
    if (rule.command == commandLoadProfile || rule.command == commandSaveProfile)
        run.sources.back() = profilePath(run.sources.back());
    if (rule.writes != FileKind::nothing) {
        run.destination = run.sources.back();
        run.sources.pop_back();
    }
    return run;
}

// The same name in another folder, with the extension of what is written there.
std::string nameInFolder(const std::string& folder, const std::string& source, FileKind kind)
{
    std::string_view name = fileName(source);
    bool table = kind == FileKind::csv;
    std::string stem(table ? name.substr(0, name.rfind('.')) : name);
#ifdef _WIN32
    constexpr char separator = '\\';
#else
    constexpr char separator = '/';
#endif
    bool ends = lastSeparator(folder) + 1 == folder.size();
    return folder + (ends ? "" : std::string(1, separator)) + stem + (table ? ".csv" : "");
}

bool takesFolder(const FileRule& rule)
{
    return rule.most == 2 && rule.writes != FileKind::nothing;
}

std::string planFolder(const FileRule& rule, const Request& request, std::vector<RunFiles>& runs)
{
    if (!takesFolder(rule))
        return "--into is for commands that write one file for each source";
    std::string folder = absolutePath(request.into);
    if (!folderExists(folder))
        return "there is no folder " + folder;
    if (request.files.empty())
        return "no files given";
    for (const std::string& file : request.files) {
        std::string source = absolutePath(file);
        std::string destination = nameInFolder(folder, source, rule.writes);
        if (std::ranges::find(runs, destination, &RunFiles::destination) != runs.end())
            return "two files would be written to " + destination;
        runs.push_back({{source}, destination});
    }
    return {};
}

} // namespace

const char* filePattern(int command)
{
    const FileRule* rule = ruleOf(command);
    return rule ? rule->pattern : "";
}

Output outputOf(int command, const std::string& path)
{
    const FileRule* rule = ruleOf(command);
    return {path, rule ? rule->writes : FileKind::nothing, rule && rule->onlyNew};
}

std::string planRuns(const Command& command, const Request& request, std::vector<RunFiles>& runs)
{
    const FileRule* rule = ruleOf(command.id);
    std::string name = consoleName(command);
    if (!rule) {
        runs.push_back({});
        if (!request.into.empty())
            return name + " writes no file";
        return request.files.empty() ? "" : name + " takes no file; '" + request.files[0] + "' is no NAME=VALUE";
    }
    if (!request.into.empty())
        return planFolder(*rule, request, runs);
    if (request.files.size() < rule->least || request.files.size() > rule->most)
        return name + " takes " + rule->pattern;
    if (std::ranges::find(request.files, std::string()) != request.files.end())
        return "a path is empty";
    runs.push_back(plainRun(*rule, request.files));
    return {};
}

} // namespace torvane
