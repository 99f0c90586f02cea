#include "cli/batch.h"

#include "cli/ending_signals.h"
#include "cli/in_order.h"
#include "cli/manifest.h"
#include "cli/progress_line.h"
#include "cli/run.h"
#include "cli/time_limit.h"
#include "core/files.h"
#include "core/json.h"
#include "core/shown_text.h"
#include "core/text.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <sstream>
#include <system_error>
#include <thread>

namespace torvane {

namespace {

// The settings that a ride has left.
struct Settings {
    ParameterBlock saved, working;
    EntryFile kept;
};

// What became of a ride, until its turn.
struct RideEnd {
    int code = exitFailed;
    bool skipped = false; // it was done before
    FileStamp stamp = {}; // of its source
    Answer answer = {};
    std::ostringstream told = {}; // for standard error
    Settings left = {};
};

// About what an end holds until its turn, in bytes.
size_t sizeOf(const RideEnd& end)
{
    return sizeof end + end.answer.upper.size() + end.answer.lower.size() + end.told.view().size();
}

struct Batch {
    const Session& session;
    const Request& request;
    const PlannedRuns& planned;
    const RideOfBatch& runRide;
    Streams& streams;
    Manifest& manifest;
    const std::vector<RunFiles>& runs = planned.runs;
    ProgressLine line = ProgressLine(streams);
    TimeLimit limit = TimeLimit(request.timeout);
    std::vector<std::unique_ptr<RideEnd>> ends = std::vector<std::unique_ptr<RideEnd>>(runs.size());
    std::atomic<size_t> held = 0;     // bytes of these
    std::atomic<bool> isLost = false; // what is done can no longer be noted
    size_t taken = 0, skipped = 0;
    int code = planned.complete ? exitDone : exitFailed;
    std::optional<Settings> left = {}; // by the last one in order that was done
};

void tellTimeOver(const Batch& batch, RideEnd& end)
{
    end.answer.error->text = formatText("stopped: it took more than the %g s of --timeout", batch.request.timeout);
    end.told << "torvane-cli: " << end.answer.error->text << '\n';
}

void noteChange(const std::string& source, RideEnd& end, Streams& aside)
{
    if (end.code == exitDone && fileStamp(source).value_or(FileStamp()) != end.stamp)
        tellNotes(end.answer, aside, {source + " has changed while it was read"});
}

void makeFolderOf(const std::string& path)
{
    std::error_code fault; // it is told when the file cannot be written
    std::string folder = path.substr(0, lastSeparator(path));
    if (!folderExists(folder))
        std::filesystem::create_directories(std::u8string(folder.begin(), folder.end()), fault);
}

void runRide(Batch& batch, const RunFiles& files, RideEnd& end)
{
    StopRequest stop(&signalStop());
    Session own;
    copySettings(batch.session, own);
    own.screens.stop = &stop;
    Streams aside = {end.told, end.told};
    end.stamp = fileStamp(files.sources[0]).value_or(FileStamp());
    makeFolderOf(files.destination);
    bool late = batch.limit.hold(stop, [&] { end.code = batch.runRide(own, files, end.answer, aside); });
    if (late && end.answer.result == statusStopped)
        tellTimeOver(batch, end);
    noteChange(files.sources[0], end, aside);
    end.left = {own.saved, own.working, own.kept};
}

// On any thread. Without memory even for its records a ride leaves no end.
void runOrSkip(Batch& batch, size_t ride)
{
    try {
        const RunFiles& files = batch.runs[ride];
        auto end = std::make_unique<RideEnd>();
        end->skipped = batch.request.resume && batch.manifest.isDone(files.sources[0], files.destination);
        if (!end->skipped)
            runRide(batch, files, *end);
        batch.held += sizeOf(*end);
        batch.ends[ride] = std::move(end);
    } catch (const std::bad_alloc&) {
    }
}

std::string outcomeOf(const RideEnd& end)
{
    if (end.code == exitDone)
        return "done";
    return end.answer.result == statusStopped ? "stopped" : "failed";
}

// Once, where what is done can no longer be noted.
void tellLoss(Batch& batch)
{
    if (batch.manifest.fault().empty() || batch.isLost.exchange(true))
        return;
    batch.code = exitFailed;
    batch.streams.err << "torvane-cli: " << shownText(batch.manifest.fault()) << '\n';
}

void note(Batch& batch, const RunFiles& files, const RideEnd& end)
{
    const Figures& figures = end.answer.figures;
    batch.manifest.add({.source = files.sources[0],
                        .stamp = end.stamp,
                        .outcome = outcomeOf(end),
                        .output = end.code == exitDone ? files.destination : std::string(),
                        .figures = figures.values.empty() ? std::string() : jsonFigures(figures)});
    tellLoss(batch);
}

void printSkipped(Batch& batch, const RunFiles& files)
{
    ++batch.skipped;
    if (!batch.request.json)
        return;
    JsonList object('{');
    object.member("source", jsonString(files.sources[0]));
    object.member("status", jsonString("status : done before"));
    if (std::string figures = batch.manifest.figuresOf(files.destination); !figures.empty())
        object.member("figures", figures);
    JsonList outputs('[');
    outputs.element(jsonString(files.destination));
    object.member("outputs", outputs.close());
    batch.streams.out << object.close() << '\n';
}

void print(Batch& batch, const RunFiles& files, RideEnd& end)
{
    batch.streams.err << end.told.view();
    if (end.code == exitDone) {
        batch.left = end.left;
    } else {
        batch.code = exitFailed;
        batch.streams.err << "failed: " << shownText(files.sources[0]) << '\n';
    }
    end.answer.lower.endLine(); // the reports follow one another
    end.answer.source = files.sources[0];
    if (batch.request.json)
        writeJson(batch.streams.out, end.answer);
    else
        printAnswer(end.answer, batch.streams);
}

void takeRide(Batch& batch, size_t ride)
{
    std::unique_ptr<RideEnd> end = std::move(batch.ends[ride]);
    ++batch.taken;
    batch.line.hide();
    if (!end) {
        end = std::make_unique<RideEnd>();
        tellNoMemory(end->answer, batch.streams);
    } else {
        batch.held -= sizeOf(*end);
    }
    if (end->skipped)
        return printSkipped(batch, batch.runs[ride]);
    note(batch, batch.runs[ride], *end);
    print(batch, batch.runs[ride], *end);
}

void showCount(Batch& batch, size_t ended)
{
    size_t rides = batch.runs.size();
    batch.line.show(static_cast<double>(ended) / static_cast<double>(rides),
                    formatText("%zu of %zu rides", ended, rides));
}

// What the answers do not say.
void tellRest(const Batch& batch)
{
    std::ostream& err = batch.streams.err;
    if (batch.skipped != 0)
        err << formatText("note: %zu of %zu rides were done before\n", batch.skipped, batch.runs.size());
    if (batch.taken != batch.runs.size())
        err << formatText("note: %zu of %zu rides were not begun", batch.runs.size() - batch.taken, batch.runs.size())
            << (batch.planned.resumable ? "; the same call with --resume goes on\n" : "\n");
}

// Destinations that may be one file, by links or because names differ in capitals alone: such rides go one after the
// other, and all but the first in order are refused.
bool mayShareDestinations(const std::vector<RunFiles>& runs)
{
    std::set<FileIdentity> files;
    std::set<std::string> names;
    auto isTaken = [&](const std::string& path) {
        std::optional<FileIdentity> identity = fileIdentity(path);
        return (identity && !files.insert(*identity).second) || !names.insert(asciiLower(path)).second;
    };
    return std::ranges::any_of(runs, isTaken, &RunFiles::destination);
}

size_t threadsFor(const Request& request, const std::vector<RunFiles>& runs)
{
    if (mayShareDestinations(runs))
        return 1;
    size_t cores = std::max(std::thread::hardware_concurrency(), 1u);
    return std::min(request.jobs != 0 ? static_cast<size_t>(request.jobs) : cores, runs.size());
}

} // namespace

void copySettings(const Session& settings, Session& own)
{
    own.saved = settings.saved;
    own.working = settings.working;
    own.kept = settings.kept;
    own.model = settings.model;
}

int runBatch(Session& session, const Request& request, const PlannedRuns& planned, const std::string& options,
             const RideOfBatch& run, Answer& answer, Streams& streams)
{
    Manifest manifest(absolutePath(request.into), options);
    if (std::string fault = manifest.open(request.resume); !fault.empty())
        return refuse(answer, streams, errorOf(library::ErrorKind::cannotWrite, fault));
    tellNotes(answer, streams, planned.notes);
    Batch batch = {session, request, planned, run, streams, manifest};
    constexpr size_t mostHeld = size_t{64} << 20; // bytes of answers whose turn has not come
    OrderedWork work = {
        .run = [&](size_t ride) { runOrSkip(batch, ride); },
        .take = [&](size_t ride) { takeRide(batch, ride); },
        .ended = [&](size_t count) { showCount(batch, count); },
        .isGivenUp = [&] { return isSignalWaiting() || batch.isLost; },
        .isFull = [&] { return batch.held > mostHeld; },
    };
    int code = runHeld([&] {
        runInOrder(batch.runs.size(), threadsFor(request, batch.runs), work);
        manifest.flush();
        tellLoss(batch);
        return batch.code;
    });
    batch.line.hide();
    tellRest(batch);
    if (batch.left) {
        session.saved = batch.left->saved;
        session.working = batch.left->working;
        session.kept = batch.left->kept;
    }
    answer.isTold = request.json;
    return code;
}

} // namespace torvane
