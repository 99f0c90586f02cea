#include "cli/run.h"

#include "cli/batch.h"
#include "cli/command_files.h"
#include "cli/ending_signals.h"
#include "cli/piped_sources.h"
#include "command/fill.h"
#include "command/gps_load_command.h"
#include "command/menu_rules.h"
#include "command/ride_command.h"
#include "command/settings_command.h"
#include "command/settings_entries.h"
#include "core/files.h"
#include "core/shown_text.h"
#include "core/text.h"
#include "fit/fit_codes.h"
#include "fit/fit_tools.h"
#include "plot/draw_graph.h"
#include "plot/svg.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace torvane {

namespace {

// One run of a command.
struct Run {
    Session& session;
    const Command& command;
    const Request& request;
    Streams& streams;
    WriteRules& rules;
    RunFiles files;
    Answer answer = {};
    std::vector<std::string> notes = {}; // entries without effect
};

int finish(Run& run, ResultStatus result)
{
    run.answer.result = result;
    if (succeeded(run.command, result))
        return exitDone;
    run.answer.outputs.clear();
    return exitFailed;
}

// The commands of a loaded ride load it first and then show their own text alone.
int loadRide(Run& run)
{
    run.session.chosenRide = run.files.sources[0];
    ResultStatus result = loadGpsFile(run.session);
    if (result != fitOk)
        return finish(run, result);
    run.answer.status.clear();
    run.answer.lower.clear();
    const std::optional<Box> box = whyGreyed(run.command, run.session.readiness);
    if (!box)
        return exitDone;
    tellBoxes(run.answer, run.streams, {*box});
    return exitRefused;
}

int operate(Run& run)
{
    if (run.command.commit)
        run.command.commit(run.session.saved, run.session.working);
    run.session.graph.reset();
    int code = finish(run, run.command.operation(run.session));
    run.answer.graph = run.session.graph;
    return code;
}

bool mayWrite(Run& run, const Output& output)
{
    std::string fault = run.rules.fault(output);
    if (!fault.empty())
        refuse(run.streams, fault);
    return fault.empty();
}

bool mayWriteDestination(Run& run)
{
    bool may = std::ranges::all_of(run.answer.outputs,
                                   [&](const std::string& path) { return mayWrite(run, outputOf(run.command, path)); });
    if (!may)
        run.answer.outputs.clear();
    return may;
}

// For a command without a dialog.
void takeSources(Run& run)
{
    run.session.inputs = {};
    for (size_t i = 0; i < run.files.sources.size() && i < toolSourceCount; ++i)
        run.session.inputs.files[i].path = run.files.sources[i];
}

// With the way in which the console takes an entry that stands in the wrong place.
std::string consoleText(const Refusal& refusal)
{
    if (refusal.kind == RefusalKind::ofPage)
        return refusal.text + ": give it as --set " + refusal.entry + "=...";
    if (refusal.kind == RefusalKind::ofCommand)
        return refusal.text + ", to be given behind it without --set";
    return refusal.text;
}

Filling fillingOf(const Run& run)
{
    return {run.session, run.command, run.request.entries, run.files, run.request.save};
}

// What a form of the run had to say; whether it was accepted comes back.
bool tellFilling(bool accepted, const Filling& filling, Run& run)
{
    for (const Refusal& refusal : filling.faults.refusals)
        refuse(run.streams, consoleText(refusal));
    tellBoxes(run.answer, run.streams, filling.boxes);
    run.notes.insert(run.notes.end(), filling.faults.notes.begin(), filling.faults.notes.end());
    return accepted;
}

// The settings of the analysis behind the command, where it has any.
bool enterSettings(Run& run)
{
    const Form* form = settingsForm(run.command);
    if (!form)
        return true;
    Filling filling = fillingOf(run);
    return tellFilling(fillForm(*form, run.session.ride, filling), filling, run);
}

bool enterDialog(Run& run)
{
    Filling filling = fillingOf(run);
    bool accepted = tellFilling(fillDialog(filling), filling, run);
    if (accepted && !filling.destination.empty())
        run.answer.outputs = filesOf(filling);
    return accepted;
}

int runLong(Run& run)
{
    chooseCalculator(run.command, run.session.working);
    if (run.command.ride == RideUse::chosen)
        run.session.chosenRide = run.files.sources[0];
    if (run.command.entry == Entry::immediate)
        takeSources(run);
    if (worksOnLoadedRide(run.command)) {
        if (int code = loadRide(run))
            return code;
        if (!enterSettings(run))
            return exitRefused;
    }
    if (!enterDialog(run) || !mayWriteDestination(run))
        return exitRefused;
    for (const std::string& text : run.notes)
        note(run.streams, text);
    return operate(run);
}

int runSheet(Run& run)
{
    if (run.request.entries.empty())
        return refuse(run.streams, "no entries given; see torvane-cli help " + consoleName(run.command));
    EntryFaults faults;
    std::vector<Box> boxes;
    bool applied = applySettings(run.session, run.request.entries, run.request.save, faults, boxes);
    tellSettings(applied, faults, boxes, run.answer, run.streams);
    return applied ? finish(run, 0) : exitRefused;
}

int runProfileFile(Run& run)
{
    bool writes = run.command.entry == Entry::saveProfile;
    const std::string& path = writes ? run.files.destination : run.files.sources[0];
    if (writes && !mayWrite(run, outputOf(run.command, path)))
        return exitRefused;
    int code = finish(run, finishProfileFile(run.session, run.command, path, run.streams));
    if (code == exitDone && writes)
        run.answer.outputs = {path};
    return code;
}

int dispatch(Run& run)
{
    if (run.command.work == Work::worker)
        return runLong(run);
    if (run.command.work == Work::report)
        return operate(run);
    return run.command.entry == Entry::sheet ? runSheet(run) : runProfileFile(run);
}

int writeGraph(Run& run)
{
    const std::string& path = run.request.graph;
    if (path.empty())
        return exitDone;
    if (!run.answer.graph) {
        tellBoxes(run.answer, run.streams,
                  {{"no graph", formatText("'%s' is not of this run", shownText(path).c_str())}});
        return exitFailed;
    }
    GraphSeries series = *run.answer.graph;
    int width = series.width, height = series.height;
    std::string svg = svgText(drawGraph(storeGraph(std::move(series)), width, height));
    std::string target = absolutePath(path);
    std::span<const uint8_t> bytes(reinterpret_cast<const uint8_t*>(svg.data()), svg.size());
    if (replaceFile(target, {bytes}) != FileResult::ok) {
        tellBoxes(run.answer, run.streams, {{"error", "failed to write " + shownText(target)}});
        return exitFailed;
    }
    run.answer.outputs.push_back(target);
    return exitDone;
}

// One run from filled-in dialog to written graph, into its answer.
int runThrough(Run& run)
{
    PipedSources piped;
    std::string graph = run.request.graph.empty() ? std::string() : absolutePath(run.request.graph);
    if (!graph.empty() && !mayWrite(run, {graph, FileKind::svg}))
        return exitRefused;
    if (std::string fault = piped.take(run.files); !fault.empty()) {
        tellBoxes(run.answer, run.streams, {{"error", shownText(fault)}});
        return exitFailed;
    }
    int code = dispatch(run);
    if (run.answer.result && code != exitRefused)
        code = std::max(code, writeGraph(run));
    return code;
}

// Memory that does not suffice is a failure of this run: there may be more of it for the next.
int runOnce(Run& run)
{
    ScreensInto into(run.session, run.answer, run.streams);
    run.answer.command = run.command.id;
    int code = exitFailed;
    try {
        code = runThrough(run);
    } catch (const std::bad_alloc&) {
        Answer failed;
        failed.command = run.command.id;
        failed.boxes = std::move(run.answer.boxes);
        run.answer = std::move(failed);
        tellBoxes(run.answer, run.streams, {{"error", "not enough memory"}});
    }
    std::ranges::for_each(run.answer.outputs, [&](const std::string& path) { run.rules.wrote(path); });
    return code;
}

int runSingle(Session& session, const Command& command, const Request& request, const RunFiles& files,
              WriteRules& rules, Answer& answer, Streams& streams)
{
    Run run = {session, command, request, streams, rules, files, std::move(answer)};
    int code = runHeld([&] { return runOnce(run); });
    answer = std::move(run.answer);
    if (!request.json)
        printAnswer(answer, streams);
    return code;
}

std::string checkRequest(const Command& command, const Request& request)
{
    if (command.work == Work::frontEnd)
        return consoleName(command) + " is a command of the desktop program";
    if (!request.graph.empty() && command.graph == GraphWhen::never)
        return consoleName(command) + " has no graph";
    if (request.jobs != 0 && request.into.empty())
        return "--jobs is for the rides of --into";
    return command.entry == Entry::sheet ? std::string() : consoleText(checkNames(command, request.entries));
}

// What the call reads. A profile that it starts from may be kept under its own name.
std::vector<std::string> sourcesOf(const Command& command, const Request& request, const std::vector<RunFiles>& runs)
{
    std::vector<std::string> sources;
    for (const RunFiles& files : runs)
        sources.insert(sources.end(), files.sources.begin(), files.sources.end());
    if (command.entry != Entry::saveProfile)
        sources.push_back(request.profile);
    sources.push_back(request.par);
    return sources;
}

// Before the first ride of a batch is touched: none may be written over before its turn.
std::string checkDestinations(const WriteRules& rules, const Command& command, const std::vector<RunFiles>& runs)
{
    std::string fault;
    for (size_t i = 0; fault.empty() && i < runs.size() && !command.files.inParts; ++i)
        fault = rules.sourceFault(runs[i].destination);
    return fault;
}

} // namespace

int refuse(Streams& streams, const std::string& text)
{
    streams.err << "torvane-cli: " << shownText(text) << '\n';
    return exitRefused;
}

void note(Streams& streams, const std::string& text)
{
    streams.err << "note: " << shownText(text) << '\n';
}

void tellSettings(bool applied, const EntryFaults& faults, const std::vector<Box>& boxes, Answer& answer,
                  Streams& streams)
{
    for (const Refusal& refusal : faults.refusals)
        refuse(streams, consoleText(refusal));
    tellBoxes(answer, streams, boxes);
    for (size_t i = 0; applied && i < faults.notes.size(); ++i)
        note(streams, faults.notes[i]);
}

ResultStatus finishProfileFile(Session& session, const Command& command, const std::string& path, Streams& streams)
{
    session.profilePath = path;
    ResultStatus result = command.operation(session);
    if (command.entry == Entry::openProfile && !session.profileFault.empty())
        refuse(streams, path + ": " + session.profileFault);
    return result;
}

int runCommand(Session& session, const Command& command, const Request& request, Answer& answer, Streams& streams)
{
    std::vector<RunFiles> runs;
    std::string fault = checkRequest(command, request);
    if (fault.empty())
        fault = planRuns(command, request, runs);
    WriteRules rules(request.force, sourcesOf(command, request, runs));
    if (fault.empty() && !request.into.empty())
        fault = checkDestinations(rules, command, runs);
    if (!fault.empty())
        return refuse(streams, fault);
    if (!request.graph.empty())
        wantGraph(session.working);
    auto ride = [&](Session& own, const RunFiles& files, Answer& itsAnswer, Streams& itsStreams) {
        Run run = {own, command, request, itsStreams, rules, files};
        int code = runOnce(run);
        itsAnswer = std::move(run.answer);
        return code;
    };
    int code = request.into.empty() ? runSingle(session, command, request, runs[0], rules, answer, streams)
                                    : runBatch(session, request, runs, ride, answer, streams);
    // What a tool ticked waits for the next commit of the recorded rides, and there will be none.
    if (request.save && command.menu == MenuAfter::toolRan)
        commitGps(session.saved, session.working);
    return code;
}

} // namespace torvane
