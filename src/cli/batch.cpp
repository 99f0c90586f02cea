#include "cli/batch.h"

#include "cli/ending_signals.h"
#include "cli/in_order.h"
#include "cli/json.h"
#include "cli/run.h"
#include "core/files.h"
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

// How many rides have ended: a line of its own where a person reads it, blanked before anything else is written.
class CountLine {
public:
    CountLine(Streams& toStreams, size_t rides) : streams(toStreams), count(rides) {}

    void show(size_t ended)
    {
        if (!streams.terminal)
            return;
        text = formatText("%zu of %zu rides", ended, count);
        streams.err << '\r' << text << std::flush;
    }
    void hide()
    {
        if (!text.empty())
            streams.err << '\r' << std::string(text.size(), ' ') << '\r' << std::flush;
        text.clear();
    }

private:
    Streams& streams;
    size_t count;
    std::string text = {};
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
    CountLine line = {streams, runs.size()};
    std::vector<std::unique_ptr<RideEnd>> ends = std::vector<std::unique_ptr<RideEnd>>(runs.size());
    int code = exitDone;
    JsonList list = JsonList('[');
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
    if (batch.request.json)
        batch.list.element(jsonAnswer(end.answer));
    else
        printAnswer(end.answer, batch.streams);
}

void takeRide(Batch& batch, size_t ride)
{
    std::unique_ptr<RideEnd> end = std::move(batch.ends[ride]);
    RideEnd none;
    batch.line.hide();
    if (!end)
        tellBoxes(none.answer, batch.streams, {{"error", "not enough memory"}});
    print(batch, batch.runs[ride], end ? *end : none);
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
        .ended = [&](size_t count) { batch.line.show(count); },
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
    if (request.json)
        answer.runs = batch.list.close();
    return code;
}

} // namespace torvane
