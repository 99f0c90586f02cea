#include "cli/console.h"

#include "cli/ending_signals.h"
#include "cli/help.h"
#include "cli/help_json.h"
#include "cli/run.h"
#include "cli/sweep_ranges.h"
#include "command/kept_entries.h"
#include "command/nearest.h"
#include "command/settings_command.h"
#include "command/settings_entries.h"
#include "core/files.h"
#include "core/parameter_file.h"
#include "core/text.h"
#include "version.h"

#include <algorithm>
#include <new>

namespace torvane {

namespace {

std::string parPathOf(const Request& request)
{
    return request.par.empty() ? std::string() : absolutePath(request.par);
}

// A file that is not there yet can only be written to.
std::string checkParameterFile(const Request& request, const std::string& path)
{
    if (request.save && path.empty())
        return "--save needs --par FILE: there is no file to keep the defaults in";
    if (path.empty() || (fileExists(path) && !folderExists(path)))
        return {};
    if (folderExists(path))
        return path + " is a folder";
    return request.save ? std::string() : "there is no file " + path;
}

bool loadProfileOf(Session& session, const Request& request, Answer& answer, Streams& streams)
{
    const Command& load = *findCommand("load-profile-data");
    return request.profile.empty() ||
           finishProfileFile(session, load, absolutePath(request.profile), answer, streams) == 0;
}

bool applyOptions(Session& session, const Request& request, Answer& answer, Streams& streams)
{
    EntryFaults faults;
    std::vector<Box> boxes;
    bool applied = applySettings(session, request.settings, request.save, faults, boxes);
    tellSettings(applied, faults, boxes, answer, streams);
    return applied;
}

// Into the session; a file that is of no use is told, and stays as it is. False where nothing may run.
bool readDefaults(Session& session, const std::string& path, Answer& answer, Streams& streams)
{
    ParameterBlock defaults;
    ParametersRead read = readParameters(path, defaults);
    startFrom(session, defaults);
    if (read == ParametersRead::refused) {
        tellBoxes(answer, streams, {{"alert", parametersFault(path, read)}});
        answer.error = errorOf(library::ErrorKind::badFile, parametersFault(path, read));
    }
    if (read == ParametersRead::unusable)
        tellBoxes(answer, streams, {{"alert", parametersFault(path, read) + ".\nthe default values are used"}});
    return read != ParametersRead::refused;
}

// The entry file beside the parameters; what is skipped of it is told. Behind a file that is none nothing is written.
void readKept(Session& session, const std::string& path, Answer& answer, Streams& streams)
{
    std::string file = entryFilePath(path);
    if (!readEntryFile(file, session.kept)) {
        tellNotes(answer, streams, {file + " is skipped: it is no text, or cannot be read"});
        return;
    }
    for (const std::string& entry : skippedEntries(session.kept))
        tellNotes(answer, streams, {"skipped in " + shownFileName(file) + ": " + entry});
}

bool writeKept(const Session& session, const std::string& path, Answer& answer, Streams& streams)
{
    std::string file = entryFilePath(path);
    EntryFile there;
    if (!session.kept.changed)
        return true;
    if (readEntryFile(file, there) && writeEntryFile(file, session.kept))
        return true;
    tellBoxes(answer, streams, {{"alert", "failed to write '" + shownFileName(file) + "'"}});
    return false;
}

// An unusable file is kept beside the new one; what the command itself has written there stays.
bool makeWay(const std::string& path, Answer& answer, Streams& streams)
{
    ParameterBlock block;
    ParametersRead read = readParameters(path, block);
    if (read == ParametersRead::ok || read == ParametersRead::missing)
        return true;
    std::string aside = read == ParametersRead::unusable ? keepParametersAside(path) : std::string();
    std::string told = aside.empty() ? parametersFault(path, read) + ".\nno default is saved"
                                     : "the unusable file is kept as '" + shownFileName(aside) + "'";
    tellBoxes(answer, streams, {{"alert", told}});
    return !aside.empty();
}

int saveDefaults(Session& session, const std::string& path, Answer& answer, Streams& streams)
{
    ScreensInto into(session, answer, streams);
    if (makeWay(path, answer, streams) && saveParameters(session.screens, path, session.saved) &&
        writeKept(session, path, answer, streams))
        return exitDone;
    tellError(answer, streams, errorOf(library::ErrorKind::cannotWrite, path + " cannot be written"));
    return exitFailed;
}

// Parameter file, model, profile, settings: what holds before the command. The exit code when that fails.
int prepare(Session& session, const Request& request, const std::string& parPath, Answer& answer, Streams& streams)
{
    ScreensInto into(session, answer, streams);
    if (!parPath.empty()) {
        if (!readDefaults(session, parPath, answer, streams))
            return exitFailed;
        readKept(session, parPath, answer, streams);
    }
    if (!loadProfileOf(session, request, answer, streams)) {
        streams.err << answer.status << '\n';
        return exitFailed;
    }
    return applyOptions(session, request, answer, streams) ? exitDone : exitRefused;
}

std::vector<std::string> commandNames()
{
    std::vector<std::string> names;
    names.emplace_back(sweepWord);
    for (const Command& command : commandTable()) {
        if (command.work == Work::frontEnd)
            continue;
        names.push_back(consoleName(command));
        std::ranges::move(aliasesOf(command), std::back_inserter(names));
    }
    return names;
}

CallError unknownCommand(const std::string& name)
{
    return errorOf(library::ErrorKind::unknownCommand, "unknown command " + name + suggestion(name, commandNames()));
}

// With the defaults that would hold: those of the parameter file, where one is given.
int tellHelpOn(const std::string& topic, const Request& request, Answer& answer, Streams& streams)
{
    std::string parPath = parPathOf(request);
    std::string fault = checkParameterFile(request, parPath);
    if (!fault.empty())
        return refuse(answer, streams,
                      parPath.empty() ? wrongUsage(fault) : errorOf(library::ErrorKind::cannotRead, fault));
    Session session;
    if (int code = prepare(session, request, parPath, answer, streams))
        return code;
    std::string text = request.json ? helpJsonOn(session, topic) : helpOn(session, topic);
    if (text.empty())
        return refuse(answer, streams, unknownCommand(topic));
    streams.out << text << (request.json ? "\n" : "");
    return exitDone;
}

int tellHelp(const Request& request, Answer& answer, Streams& streams)
{
    answer.isTold = true;
    if (request.command != "help" && !request.command.empty())
        return tellHelpOn(request.command, request, answer, streams);
    if (request.sweep)
        return tellHelpOn(std::string(sweepWord), request, answer, streams);
    if (!request.files.empty())
        return tellHelpOn(request.files[0], request, answer, streams);
    streams.out << (request.json ? helpJson(Session()) + "\n" : generalHelp());
    return exitDone;
}

int tellVersion(const Request& request, Answer& answer, Streams& streams)
{
    answer.isTold = true;
    streams.out << (request.json ? "{\"version\": \"" TORVANE_VERSION "\"}\n" : "torvane-cli " TORVANE_VERSION "\n");
    return exitDone;
}

int runWithDefaults(const Command& command, const Request& request, Answer& answer, Streams& streams)
{
    std::string parPath = parPathOf(request);
    std::string fault = checkParameterFile(request, parPath);
    if (!fault.empty())
        return refuse(answer, streams,
                      parPath.empty() ? wrongUsage(fault) : errorOf(library::ErrorKind::cannotRead, fault));
    Session session;
    if (int code = prepare(session, request, parPath, answer, streams))
        return code;
    answer.status.clear();
    answer.upper.clear();
    int code = runCommand(session, command, request, answer, streams);
    if (!request.save || code == exitRefused || code > signalExit)
        return code;
    return runHeld([&] { return std::max(code, saveDefaults(session, parPath, answer, streams)); });
}

int runRequest(const Request& request, Answer& answer, Streams& streams)
{
    const Command* command = findCommand(request.command);
    if (!command)
        return refuse(answer, streams, unknownCommand(request.command));
    answer.command = command->id;
    if (!request.sweep)
        return runWithDefaults(*command, request, answer, streams);
    Request swept = request;
    std::string fault = takeRanges(*command, swept);
    return fault.empty() ? runWithDefaults(*command, swept, answer, streams)
                         : refuse(answer, streams, wrongUsage(fault));
}

int answerRequest(const Request& request, Answer& answer, Streams& streams)
{
    if (request.version)
        return tellVersion(request, answer, streams);
    if (request.help || request.command == "help")
        return tellHelp(request, answer, streams);
    if (!request.command.empty())
        return runRequest(request, answer, streams);
    if (request.sweep)
        return refuse(answer, streams, wrongUsage("sweep needs a command behind it; see torvane-cli help sweep"));
    streams.err << usageText();
    answer.error = wrongUsage("no command given");
    return exitRefused;
}

// Memory that is gone outside of a run.
int answerCall(const std::vector<std::string>& arguments, Request& request, Answer& answer, Streams& streams)
{
    std::string fault = readRequest(arguments, request);
    if (!fault.empty())
        return refuse(answer, streams, wrongUsage(fault));
    streams.terminal = streams.terminal && !request.quiet && request.rows != "-";
    try {
        return answerRequest(request, answer, streams);
    } catch (const std::bad_alloc&) {
        answer = {};
        tellNoMemory(answer, streams);
        return exitFailed;
    }
}

} // namespace

int runConsole(const std::vector<std::string>& arguments, std::ostream& out, std::ostream& err, bool terminal)
{
    Streams streams = {out, err, terminal, true};
    Request request;
    Answer answer;
    int code = answerCall(arguments, request, answer, streams);
    if (request.json && (!answer.isTold || answer.error))
        writeJson(out, answer);
    out.flush();
    if (out)
        return code;
    err << "torvane-cli: standard output cannot be written\n";
    return std::max<int>(code, exitFailed);
}

} // namespace torvane
