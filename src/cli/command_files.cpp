#include "cli/command_files.h"

#include "core/files.h"
#include "core/text.h"

#include <algorithm>

namespace torvane {

namespace {

// A profile path without an extension gets one, as from the prompts.
std::string profilePath(const std::string& path)
{
    return fileName(path).find('.') == std::string_view::npos ? path + ".pro" : path;
}

RunFiles plainRun(const Command& command, const std::vector<std::string>& files)
{
    RunFiles run;
    for (const std::string& file : files)
        run.sources.push_back(absolutePath(file));
    if (command.entry == Entry::openProfile || command.entry == Entry::saveProfile)
        run.sources.back() = profilePath(run.sources.back());
    bool hasDestination = command.files.destinationIsLast();
    if (command.files.destinationIsOptional() && files.size() == command.files.least)
        hasDestination = false;
    if (hasDestination) {
        run.destination = run.sources.back();
        run.sources.pop_back();
    }
    return run;
}

// Endings of rides that are no FIT files: what is written for such a one gets another.
constexpr std::string_view otherRides[] = {".gpx", ".tcx", ".fit"};

// "ride.gpx.gz" to "ride.fit"; the name of a FIT file stays.
std::string fitName(std::string_view name)
{
    bool packed = name.ends_with(".gz");
    name.remove_suffix(packed ? 3 : 0);
    for (std::string_view ending : otherRides)
        if (name.ends_with(ending) && (packed || ending != ".fit"))
            return std::string(name.substr(0, name.size() - ending.size())) + ".fit";
    return std::string(name);
}

// The same name in another folder, with the extension of what is written there.
std::string nameInFolder(const std::string& folder, const std::string& source, FileKind kind)
{
    std::string_view name = fileName(source);
    bool table = kind == FileKind::csv;
    std::string stem = table ? std::string(name.substr(0, name.rfind('.'))) : fitName(name);
#ifdef _WIN32
    constexpr char separator = '\\';
#else
    constexpr char separator = '/';
#endif
    bool ends = lastSeparator(folder) + 1 == folder.size();
    return folder + (ends ? "" : std::string(1, separator)) + stem + (table ? ".csv" : "");
}

bool takesFolder(const CommandFiles& files)
{
    return files.most == 2 && files.writes != FileKind::nothing;
}

// A second ride in the place of a file to write is a slip, also where its name would have got another ending.
std::string destinationFault(const CommandFiles& files, const Request& request, const RunFiles& run)
{
    bool slip =
        files.destinationIsOptional() && files.destinationIsLast() && !request.force && fileExists(run.destination);
    return slip ? run.destination + " exists; --force writes over it, and several rides go with --into FOLDER"
                : std::string();
}

std::string planFolder(const CommandFiles& files, const Request& request, std::vector<RunFiles>& runs)
{
    if (!takesFolder(files))
        return "--into is for commands that write one file for each source";
    std::string folder = absolutePath(request.into);
    if (!folderExists(folder))
        return "there is no folder " + folder;
    if (request.files.empty())
        return "no files given";
    for (const std::string& file : request.files) {
        std::string source = absolutePath(file);
        std::string destination = nameInFolder(folder, source, files.writes);
        if (std::ranges::find(runs, destination, &RunFiles::destination) != runs.end())
            return "two files would be written to " + destination;
        runs.push_back({{source}, destination});
    }
    return {};
}

} // namespace

Output outputOf(const Command& command, const std::string& path)
{
    return {path, command.files.writes, command.files.onlyNew};
}

std::string planRuns(const Command& command, const Request& request, std::vector<RunFiles>& runs)
{
    const CommandFiles& files = command.files;
    std::string name = consoleName(command);
    if (files.most == 0) {
        runs.push_back({});
        if (!request.into.empty())
            return name + " writes no file";
        return request.files.empty() ? "" : name + " takes no file; '" + request.files[0] + "' is no NAME=VALUE";
    }
    if (!request.into.empty())
        return planFolder(files, request, runs);
    if (request.files.size() < files.least || request.files.size() > files.most)
        return name + " takes " + files.pattern + (takesFolder(files) ? ", or with --into FOLDER several files" : "");
    if (std::ranges::find(request.files, std::string()) != request.files.end())
        return "a path is empty";
    runs.push_back(plainRun(command, request.files));
    if (!request.saveProfile.empty())
        runs.back().destination = profilePath(absolutePath(request.saveProfile));
    return destinationFault(files, request, runs.back());
}

} // namespace torvane
