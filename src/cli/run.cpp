#include "cli/run.h"

#include "cli/batch.h"
#include "cli/chart_file.h"
#include "cli/command_files.h"
#include "cli/ending_signals.h"
#include "cli/options_hash.h"
#include "cli/piped_sources.h"
#include "cli/stage.h"
#include "cli/standard_input.h"
#include "cli/sweep.h"
#include "cli/sweep_ranges.h"
#include "command/fill.h"
#include "command/menu_rules.h"
#include "command/operate.h"
#include "command/ride_command.h"
#include "command/settings_command.h"
#include "command/settings_entries.h"
#include "core/entry_file.h"
#include "core/files.h"
#include "core/row_writer.h"
#include "core/shown_text.h"
#include "core/text.h"
#include "fit/fit_codes.h"
#include "fit/fit_tools.h"
#include "library/errors.h"
#include "page/plan_against.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <new>

namespace torvane {

namespace {

// Empty for no file.
std::string pathOf(const std::string& option)
{
    return option.empty() || option == "-" ? std::string() : absolutePath(option);
}

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

int stopped(Run& run)
{
    run.answer.result = statusStopped;
    tellStopped(run.answer, run.streams);
    return exitFailed;
}

int finish(Run& run, ResultStatus result)
{
    run.answer.result = result;
    if (succeeded(run.command, result))
        return exitDone;
    run.answer.outputs.clear();
    if (result == statusStopped)
        return stopped(run);
    run.answer.error = errorOf(library::errorOf(run.command, result, run.answer.lower.text(), run.answer.status));
    return exitFailed;
}

// The commands of a loaded ride load it first and then show their own text alone.
int loadRide(Run& run)
{
    run.session.chosenRide = run.files.sources[0];
    ResultStatus result = operate(*findCommand(commandLoadRide), run.session);
    if (result != fitOk)
        return finish(run, result);
    run.answer.status.clear();
    run.answer.lower.clear();
    const std::optional<Box> box = whyGreyed(run.command, run.session.readiness);
    if (!box)
        return exitDone;
    tellBoxes(run.answer, run.streams, {*box});
    run.answer.error = errorOf(library::ErrorKind::unsuitable, box->text);
    return exitRefused;
}

int perform(Run& run)
{
    if (run.command.commit)
        run.command.commit(run.session.saved, run.session.working);
    run.session.graph.reset();
    run.session.keepsRideCurves = !run.request.graph.empty();
    run.session.takeFigures();
    int code = finish(run, operate(run.command, run.session));
    run.answer.figures = run.session.takeFigures();
    run.answer.graph = std::exchange(run.session.graph, std::nullopt);
    return code;
}

bool mayWrite(Run& run, const Output& output)
{
    std::string fault = run.rules.fault(output);
    if (!fault.empty())
        refuse(run.answer, run.streams, errorOf(library::ErrorKind::refused, fault));
    return fault.empty();
}

bool mayWriteDestination(Run& run)
{
    bool may = std::ranges::all_of(run.answer.outputs, [&](const std::string& path) {
        Output output = outputOf(run.command, path);
        output.onlyNew = output.onlyNew && !run.request.resume; // of the earlier call
        return mayWrite(run, output);
    });
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

Filling fillingOf(const Run& run)
{
    return {run.session, run.command, run.request.entries, run.files, run.request.save};
}

// What a form of the run had to say; whether it was accepted comes back.
bool tellFilling(bool accepted, const Filling& filling, Run& run)
{
    if (accepted)
        tellBoxes(run.answer, run.streams, filling.boxes);
    else
        tellRefusal(run.answer, run.streams, filling.faults, filling.boxes);
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
    run.session.inputs.flush = run.request.into.empty() ? Flush::each : Flush::byOwner;
    tellNotes(run.answer, run.streams, run.notes);
    return perform(run);
}

int runSheet(Run& run)
{
    if (run.request.entries.empty())
        return refuse(run.answer, run.streams,
                      wrongUsage("no entries given; see torvane-cli help " + consoleName(run.command)));
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
    int code = finishProfileFile(run.session, run.command, path, run.answer, run.streams) == 0 ? exitDone : exitFailed;
    run.answer.result = code;
    if (code == exitDone && writes)
        run.answer.outputs = {path};
    return code;
}

int dispatch(Run& run)
{
    if (run.command.work == Work::worker)
        return runLong(run);
    if (run.command.work == Work::report)
        return perform(run);
    return run.command.entry == Entry::sheet ? runSheet(run) : runProfileFile(run);
}

// The entries of the other plan: those of this one, but for what it has instead.
std::vector<Assignment> entriesOfOther(const Request& request)
{
    std::vector<Assignment> entries = request.entries;
    for (const Assignment& other : request.against) {
        std::erase_if(entries, [&](const Assignment& entry) { return entry.name == other.name; });
        entries.push_back(other);
    }
    return entries;
}

std::string labelOfOther(const Request& request)
{
    std::string label;
    for (const Assignment& entry : request.against)
        label += (label.empty() ? "" : ", ") + entry.name + "=" + entry.value;
    return label;
}

// Its reason stands where that of this plan would.
void tellOtherFailed(Run& run, const Answer& other)
{
    run.answer.status = other.status;
    run.answer.lower = other.lower;
    tellBoxes(run.answer, run.streams, {{"no page", "the plan with " + labelOfOther(run.request) + " fails"}});
}

// Makes the plan that stands beside this one on its page, in a session of its own that starts from the same settings.
int planOther(Run& run)
{
    Session own;
    own.saved = run.session.saved;
    own.working = run.session.working;
    own.kept = run.session.kept;
    own.model = run.session.model;
    own.wantsPage = true;
    Request request = run.request;
    request.entries = entriesOfOther(run.request);
    request.save = false;
    Run other = {own, run.command, request, run.streams, run.rules, run.files};
    other.files.destination.clear();
    int code = exitFailed;
    {
        ScreensInto into(own, other.answer, run.streams);
        own.screens.stop = run.session.screens.stop;
        code = dispatch(other);
    }
    run.answer.error = other.answer.error;
    if (code == exitFailed && other.answer.result != statusStopped)
        tellOtherFailed(run, other.answer);
    if (code != exitDone || !own.shownPlan)
        return std::max<int>(code, exitFailed);
    own.shownPlan->label = labelOfOther(run.request);
    run.session.against = own.shownPlan;
    return exitDone;
}

int writeText(Run& run, const std::string& path, std::string_view text)
{
    std::string target = absolutePath(path);
    std::span<const uint8_t> bytes(reinterpret_cast<const uint8_t*>(text.data()), text.size());
    if (replaceFile(target, {bytes}) != FileResult::ok) {
        tellBoxes(run.answer, run.streams, {{"error", "failed to write " + shownText(target)}});
        run.answer.error = errorOf(library::ErrorKind::cannotWrite, run.answer.boxes.back().text);
        return exitFailed;
    }
    run.answer.outputs.push_back(target);
    return exitDone;
}

// A run without what an option wants to write.
int lackOf(Run& run, const char* title, const std::string& path)
{
    tellBoxes(run.answer, run.streams, {{title, formatText("'%s' is not of this run", shownText(path).c_str())}});
    if (!run.answer.error)
        run.answer.error = errorOf(library::ErrorKind::noAnswer, run.answer.boxes.back().text);
    return exitFailed;
}

int writeGraph(Run& run)
{
    const std::string& path = run.request.graph;
    if (path.empty())
        return exitDone;
    if (!run.answer.graph)
        return lackOf(run, "no graph", path);
    std::string svg;
    if (std::string fault = chartOf(run.request, *run.answer.graph, svg); !fault.empty())
        return refuse(run.answer, run.streams, wrongUsage(fault));
    return writeText(run, path, svg);
}

int writePage(Run& run)
{
    std::string page = std::exchange(run.session.page, {});
    if (run.request.page.empty() || run.answer.error)
        return exitDone;
    if (page.empty())
        return lackOf(run, "no page", run.request.page);
    return writeText(run, run.request.page, page);
}

// Runs with the table going out by `write`. False unless the command did what it is for and left a table.
bool dispatchInto(Run& run, RowFormat format, const WritePiece& write, int& code)
{
    RowWriter rows(format, write);
    struct Lent { // also where memory runs out
        RowWriter*& place;
        ~Lent()
        {
            place = nullptr;
        }
    } lent = {run.session.rows};
    lent.place = &rows;
    code = dispatch(run);
    if (code == exitDone && !rows.hasBegun()) {
        tellBoxes(run.answer, run.streams, {{"no table", "this run has none"}});
        run.answer.error = errorOf(library::ErrorKind::noAnswer, run.answer.boxes.back().text);
        code = exitFailed;
    }
    return rows.finish() && code == exitDone;
}

int dispatchIntoFile(Run& run)
{
    std::string target = absolutePath(run.request.rows);
    if (!mayWrite(run, {.path = target, .kind = FileKind::csv, .ofOption = true}))
        return exitRefused;
    int code = exitFailed;
    FileResult written = replaceFile(
        target, [&](const WritePiece& write) { return dispatchInto(run, rowFormatOf(target), write, code); });
    if (written == FileResult::ok)
        run.answer.outputs.push_back(target);
    if (written == FileResult::ok || run.answer.error)
        return code;
    tellBoxes(run.answer, run.streams, {{"error", "failed to write " + shownText(target)}});
    run.answer.error = errorOf(library::ErrorKind::cannotWrite, run.answer.boxes.back().text);
    return exitFailed;
}

// The table goes out while the command runs; a file is replaced only where it has come to its end.
int dispatchWithRows(Run& run)
{
    if (run.request.rows.empty())
        return dispatch(run);
    if (run.request.rows != "-")
        return dispatchIntoFile(run);
    int code = exitFailed;
    dispatchInto(
        run, RowFormat::csv,
        [&](std::span<const uint8_t> piece) {
            run.streams.out.write(reinterpret_cast<const char*>(piece.data()),
                                  static_cast<std::streamsize>(piece.size()));
            return run.streams.out.good();
        },
        code);
    return code;
}

// One run from filled-in dialog to written graph, into its answer.
int runThrough(Run& run)
{
    PipedSources piped;
    std::string graph = pathOf(run.request.graph);
    if (!graph.empty() && !mayWrite(run, {.path = graph, .kind = FileKind::svg, .ofOption = true}))
        return exitRefused;
    std::string page = pathOf(run.request.page);
    if (!page.empty() && !mayWrite(run, {.path = page, .kind = FileKind::html, .ofOption = true}))
        return exitRefused;
    run.session.wantsPage = !page.empty();
    if (std::string fault = piped.take(run.files, *run.session.screens.stop); !fault.empty()) {
        if (run.session.screens.stop->isAsked())
            return stopped(run);
        tellBoxes(run.answer, run.streams, {{"error", shownText(fault)}});
        run.answer.error = errorOf(library::ErrorKind::cannotRead, shownText(fault));
        return exitFailed;
    }
    if (!run.request.against.empty())
        if (int code = planOther(run); code != exitDone)
            return code;
    int code = dispatchWithRows(run);
    run.session.against.reset();
    run.session.shownPlan.reset();
    if (run.answer.result && run.answer.result != statusStopped && code != exitRefused)
        code = std::max({code, writeGraph(run), writePage(run)});
    return code;
}

// Memory that does not suffice is a failure of this run: there may be more of it for the next.
int runOnce(Run& run)
{
    if (run.session.screens.stop == nullptr)
        run.session.screens.stop = &signalStop();
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
        tellNoMemory(run.answer, run.streams);
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
    Streams aside = {streams.err, streams.err};
    if (!request.json)
        printAnswer(answer, request.rows == "-" ? aside : streams);
    return code;
}

std::string checkRows(const Command& command, const Request& request)
{
    if (request.rows.empty())
        return {};
    if (!command.hasRows && !request.sweep)
        return consoleName(command) + " has no table";
    return request.rows == "-" && request.json ? "--rows - and --json both want standard output" : "";
}

std::string checkBatchOptions(const Command& command, const Request& request)
{
    if (request.jobs != 0 && request.into.empty() && !request.sweep)
        return "--jobs is for the rides of --into, and for sweep";
    const std::pair<const char*, bool> given[] = {{"--files-from", !request.filesFrom.empty()},
                                                  {"--recursive", request.recursive},
                                                  {"--resume", request.resume},
                                                  {"--timeout", request.timeout != 0}};
    for (auto [name, isGiven] : given)
        if (isGiven && request.into.empty())
            return std::string(name) + " is for the rides of --into";
    const std::pair<const char*, bool> ofOne[] = {
        {"--rows", !request.rows.empty()}, {"--page", !request.page.empty()}, {"--graph", !request.graph.empty()}};
    for (auto [name, isGiven] : ofOne)
        if (isGiven && !request.into.empty())
            return std::string(name) + " is for one ride, not for those of --into";
    // The parts of a ride are known only once it is read.
    if (request.resume && command.files.inParts)
        return "--resume does not know what " + consoleName(command) + " has done; call it without";
    return {};
}

// A ride from standard input has a name and no place.
std::string checkStage(const Command& command, const Request& request)
{
    if (!request.fromStdin)
        return {};
    if (command.files.least != 1 || command.work != Work::worker)
        return consoleName(command) + " does not take one ride, as --stdin gives them";
    if (!request.files.empty() || !request.into.empty() || request.sweep)
        return "--stdin takes no other file, no --into and no sweep";
    if (!request.rows.empty() || !request.graph.empty() || !request.page.empty() || !request.saveProfile.empty())
        return "--stdin answers by lines alone, and writes no file";
    return request.json ? "" : "--stdin answers as JSON; give --json as well";
}

std::string checkUsage(const Command& command, const Request& request)
{
    if (command.work == Work::frontEnd)
        return consoleName(command) + " is a command of the desktop program";
    if (!request.graph.empty() && command.graph == GraphWhen::never)
        return consoleName(command) + " has no graph";
    if (!request.page.empty() && !command.hasPage)
        return consoleName(command) + " has no page";
    if (request.page == "-")
        return "--page writes a file, and not to standard output";
    if (!request.against.empty() && (command.id != commandCourse || request.page.empty()))
        return "--against is for the page of a plan";
    if (std::string fault = checkChartOptions(request); !fault.empty())
        return fault;
    if (!request.saveProfile.empty() && !command.files.byOption)
        return consoleName(command) + " saves no profile by an option";
    if (std::string fault = checkBatchOptions(command, request); !fault.empty())
        return fault;
    if (std::string fault = request.sweep ? sweepFault(command, request) : ""; !fault.empty())
        return fault;
    if (std::string fault = checkStage(command, request); !fault.empty())
        return fault;
    return checkRows(command, request);
}

// Names that the command does not have, before anything is read.
bool knowsEntries(const Command& command, const Request& request, Answer& answer, Streams& streams)
{
    if (command.entry == Entry::sheet)
        return true;
    EntryFaults faults;
    for (const std::vector<Assignment>* entries : {&request.entries, &request.against})
        if (Refusal refusal = checkNames(command, *entries); !refusal.text.empty())
            faults.refusals.push_back(refusal);
    if (!faults.refusals.empty())
        tellRefusal(answer, streams, faults, {});
    return faults.refusals.empty();
}

CallFiles callFiles(const Command& command, const Request& request, const std::vector<RunFiles>& runs)
{
    CallFiles call = {filesNamedBy(command, request.entries),
                      pathOf(request.profile),
                      {pathOf(request.rows), pathOf(request.graph), pathOf(request.page)}};
    for (const RunFiles& files : runs)
        call.sources.insert(call.sources.end(), files.sources.begin(), files.sources.end());
    std::ranges::move(filesNamedBy(command, request.against), std::back_inserter(call.sources));
    if (request.par.empty())
        return call;
    for (const std::string& defaults : {pathOf(request.par), entryFilePath(pathOf(request.par))}) {
        call.sources.push_back(defaults);
        if (request.save)
            call.outputs.push_back(defaults);
    }
    return call;
}

// A sweep reads the same files for each combination, and writes none.
std::string checkSweptFiles(const Command& command, const Request& request, const std::vector<RunFiles>& runs)
{
    if (!request.sweep)
        return {};
    if (runs[0].destination.empty())
        return rangesFault(command, request);
    return "sweep writes no file but its table; " + consoleName(command) + " writes " + runs[0].destination;
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

int refuse(Answer& answer, Streams& streams, CallError error)
{
    tellError(answer, streams, std::move(error));
    return exitRefused;
}

void tellSettings(bool applied, const EntryFaults& faults, const std::vector<Box>& boxes, Answer& answer,
                  Streams& streams)
{
    if (!applied)
        return tellRefusal(answer, streams, faults, boxes);
    tellBoxes(answer, streams, boxes);
    tellNotes(answer, streams, faults.notes);
}

ResultStatus finishProfileFile(Session& session, const Command& command, const std::string& path, Answer& answer,
                               Streams& streams)
{
    using enum library::ErrorKind;
    session.profilePath = path;
    ResultStatus result = command.operation(session);
    if (result == 0)
        return result;
    if (command.entry == Entry::saveProfile)
        tellError(answer, streams, errorOf(cannotWrite, path + " cannot be written"));
    else if (!session.profileFault.empty())
        tellError(answer, streams, errorOf(beyondLimits, path + ": " + session.profileFault));
    else if (fileExists(path))
        tellError(answer, streams, errorOf(badFile, path + " is no profile"));
    else
        tellError(answer, streams, errorOf(cannotRead, path + " cannot be opened"));
    return result;
}

int runCommand(Session& session, const Command& command, const Request& request, Answer& answer, Streams& streams)
{
    PlannedRuns planned;
    const std::vector<RunFiles>& runs = planned.runs;
    std::string fault = checkUsage(command, request);
    if (fault.empty() && !knowsEntries(command, request, answer, streams))
        return exitRefused;
    if (fault.empty() && !request.fromStdin)
        fault = planRuns(command, request, planned);
    if (fault.empty())
        fault = checkSweptFiles(command, request, runs);
    WriteRules rules(request.force, callFiles(command, request, runs));
    if (fault.empty())
        fault = rules.optionFault();
    if (fault.empty() && !request.into.empty())
        fault = checkDestinations(rules, command, runs);
    if (!fault.empty())
        return refuse(answer, streams, wrongUsage(fault));
    if (request.sweep) {
        auto point = [&](Session& own, const Request& swept, Answer& itsAnswer, Streams& itsStreams) {
            Run run = {own, command, swept, itsStreams, rules, runs[0]};
            int code = runOnce(run);
            itsAnswer = std::move(run.answer);
            return code;
        };
        return runSweep(session, command, request, rules, point, answer, streams);
    }
    if (!request.graph.empty() || !request.rows.empty() || !request.page.empty())
        wantGraph(session.working);
    auto ride = [&](Session& own, const RunFiles& files, Answer& itsAnswer, Streams& itsStreams) {
        Run run = {own, command, request, itsStreams, rules, files};
        int code = runOnce(run);
        itsAnswer = std::move(run.answer);
        return code;
    };
    if (request.fromStdin) {
        StandardInput in;
        return runStage(session, ride, in.stream, answer, streams);
    }
    int code = request.into.empty()
                   ? runSingle(session, command, request, runs[0], rules, answer, streams)
                   : runBatch(session, request, planned, optionsHash(session, command, request), ride, answer, streams);
    // What a tool ticked waits for the next commit of the recorded rides, and there will be none.
    if (request.save && command.menu == MenuAfter::toolRan)
        commitGps(session.saved, session.working);
    return code;
}

} // namespace torvane
