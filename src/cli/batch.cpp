#include "cli/batch.h"

#include "cli/ending_signals.h"
#include "cli/in_order.h"
#include "cli/progress_line.h"
#include "cli/run.h"
#include "core/files.h"
#include "core/json.h"
#include "core/shown_text.h"
#include "core/text.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <sstream>
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
    Answer answer = {};
    std::ostringstream told = {}; // for standard error
    Settings left = {};
};

// The reports follow one another, so each ends its line.
void endLine(Answer& answer)
{
    if (!answer.lower.empty() && answer.lower.back() != '\n')
        answer.lower += '\n';
}

struct Batch {
    const Session& session;
    const Request& request;
    const std::vector<RunFiles>& runs;
    const RideOfBatch& runRide;
    Streams& streams;
    ProgressLine line = ProgressLine(streams);
    std::vector<std::unique_ptr<RideEnd>> ends = std::vector<std::unique_ptr<RideEnd>>(runs.size());
    int code = exitDone;
    std::optional<Settings> left = {}; // by the last one in order that was done
};

// On any thread. Without memory even for its records a ride leaves no end.
void runRide(Batch& batch, size_t ride)
{
    try {
        auto end = std::make_unique<RideEnd>();
        Session own;
        own.saved = batch.session.saved;
        own.working = batch.session.working;
        own.kept = batch.session.kept;
        own.model = batch.session.model;
        own.screens.stop = &signalStop();
        Streams aside = {end->told, end->told};
        end->code = batch.runRide(own, batch.runs[ride], end->answer, aside);
        end->left = {own.saved, own.working, own.kept};
        batch.ends[ride] = std::move(end);
    } catch (const std::bad_alloc&) {
    }
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
    endLine(end.answer);
    end.answer.source = files.sources[0];
    if (batch.request.json)
        writeJson(batch.streams.out, end.answer);
    else
        printAnswer(end.answer, batch.streams);
}

void takeRide(Batch& batch, size_t ride)
{
    std::unique_ptr<RideEnd> end = std::move(batch.ends[ride]);
    RideEnd none;
    batch.line.hide();
    if (!end)
        tellNoMemory(none.answer, batch.streams);
    print(batch, batch.runs[ride], end ? *end : none);
}

void showCount(Batch& batch, size_t ended)
{
    size_t rides = batch.runs.size();
    batch.line.show(static_cast<double>(ended) / static_cast<double>(rides),
                    formatText("%zu of %zu rides", ended, rides));
}

// Destinations that may be one file, by links or because names differ in capitals alone: such rides go one after the
// other, and all but the first in order are refused.
bool mayShareDestinations(const std::vector<RunFiles>& runs)
{
    std::set<FileIdentity> files;
    std::set<std::string> names;
    auto isTaken = [&](const std::string& path) {
        std::optional<FileIdentity> identity = fileIdentity(path);
        std::string name = path;
        std::ranges::transform(name, name.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return (identity && !files.insert(*identity).second) || !names.insert(name).second;
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

int runBatch(Session& session, const Request& request, const std::vector<RunFiles>& runs, const RideOfBatch& run,
             Answer& answer, Streams& streams)
{
    Batch batch = {session, request, runs, run, streams};
    OrderedWork work = {
        .run = [&](size_t ride) { runRide(batch, ride); },
        .take = [&](size_t ride) { takeRide(batch, ride); },
        .ended = [&](size_t count) { showCount(batch, count); },
        .isGivenUp = isSignalWaiting,
    };
    int code = runHeld([&] {
        runInOrder(runs.size(), threadsFor(request, runs), work);
        return batch.code;
    });
    batch.line.hide();
    if (batch.left) {
        session.saved = batch.left->saved;
        session.working = batch.left->working;
        session.kept = batch.left->kept;
    }
    answer.isTold = request.json;
    return code;
}

} // namespace torvane
