#include "cli/command_files.h"

#include "cli/batch_sources.h"
#include "core/files.h"
#include "core/text.h"

#include <algorithm>
#include <map>
#include <utility>

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
    std::string lower = asciiLower(name);
    bool packed = lower.ends_with(".gz");
    lower.resize(lower.size() - (packed ? 3 : 0));
    for (std::string_view ending : otherRides)
        if (lower.ends_with(ending) && (packed || ending != ".fit"))
            return std::string(name.substr(0, lower.size() - ending.size())) + ".fit";
    return std::string(name.substr(0, lower.size()));
}

// The same name in another folder, which ends in a separator, with the extension of what is written there.
std::string nameInFolder(const std::string& folder, const std::string& source, FileKind kind)
{
    std::string_view name = fileName(source);
    if (kind == FileKind::csv)
        return folder + std::string(name.substr(0, name.rfind('.'))) + ".csv";
    return folder + fitName(name);
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

std::string planFolder(const CommandFiles& files, const Request& request, PlannedRuns& planned)
{
    if (!takesFolder(files))
        return "--into is for commands that write one file for each source";
    std::string folder = absolutePath(request.into);
    if (!folderExists(folder))
        return "there is no folder " + folder;
    BatchSources sources;
    if (std::string fault = findSources(request, folder, sources); !fault.empty())
        return fault;
    planned.notes = std::move(sources.notes);
    planned.complete = sources.complete;
    std::map<std::string, std::string> sourceOf;
    for (BatchSource& source : sources.rides) {
        std::string destination = nameInFolder(asFolder(folder) + source.folder, source.path, files.writes);
        auto [taken, isNew] = sourceOf.try_emplace(destination, source.path);
        if (!isNew)
            return "two files would be written to " + destination + ": of " + taken->second + " and of " + source.path;
        planned.runs.push_back({{std::move(source.path)}, std::move(destination)});
    }
    return {};
}

} // namespace

Output outputOf(const Command& command, const std::string& path)
{
    return {path, command.files.writes, command.files.onlyNew};
}

std::string planRuns(const Command& command, const Request& request, PlannedRuns& planned)
{
    std::vector<RunFiles>& runs = planned.runs;
    const CommandFiles& files = command.files;
    planned.resumable = !files.inParts; // the parts of a ride are known only once it is read
    std::string name = consoleName(command);
    if (files.most == 0) {
        runs.push_back({});
        if (!request.into.empty())
            return name + " writes no file";
        return request.files.empty() ? "" : name + " takes no file; '" + request.files[0] + "' is no NAME=VALUE";
    }
    if (!request.into.empty())
        return planFolder(files, request, planned);
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
