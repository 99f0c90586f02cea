#include "cli/sweep.h"

#include "cli/ending_signals.h"
#include "cli/in_order.h"
#include "cli/progress_line.h"
#include "cli/run.h"
#include "cli/sweep_ranges.h"
#include "command/settings_entries.h"
#include "core/row_writer.h"
#include "core/shown_text.h"
#include "core/text.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <new>
#include <sstream>
#include <thread>

namespace torvane {

namespace {

constexpr size_t pieceLength = 64;      // combinations that a thread takes at a time
constexpr size_t piecesOfRound = 16384; // results that may wait for their turn

// Figures in the order of the columns, and what became of them.
struct Row {
    std::vector<double> figures;
    std::string outcome;
    bool hasAnswer = false;
    std::vector<std::string> notes = {};
};

struct Sweep {
    const Session& session;
    const Command& command;
    const Request& request;
    const RunOfSweep& run;
    Streams& streams;
    std::vector<FigureInfo> infos = {}; // of the columns behind the ranges
    std::vector<std::string> names = {};
    ProgressLine line = ProgressLine(streams);
    size_t combinations = combinationsOf(request);
    Request single = {}; // of a combination, but for its values
    size_t taken = 0, answered = 0;
    std::string firstFault = {};
    std::vector<std::string> notes = {}; // each once
};

std::string columnName(const std::string& name, const char* unit)
{
    return *unit == '\0' ? name : name + "_" + unit;
}

// What the command answers with, once each.
void nameColumns(Sweep& sweep)
{
    for (const SweptRange& range : sweep.request.ranges)
        sweep.names.push_back(columnName(range.name, range.unit));
    for (FigureInfo& info : sweep.command.figures(sweep.command)) {
        std::string name = columnName(info.name, info.unit);
        if (!info.group.empty() || std::ranges::find(sweep.names, name) != sweep.names.end())
            continue;
        sweep.names.push_back(name);
        sweep.infos.push_back(std::move(info));
    }
    sweep.names.emplace_back("outcome");
}

// The reason of a failure, on one line.
std::string reasonOf(const Answer& answer)
{
    constexpr std::string_view mark = "alert :\n";
    std::string text = answer.error ? answer.error->text : "no answer";
    if (size_t alert = text.rfind(mark); alert != text.npos)
        text.erase(0, alert + mark.size());
    text.erase(text.find_last_not_of(" \t\n") + 1);
    std::ranges::replace(text, '\n', ' ');
    bool ofEntry = answer.error && !answer.error->entry.empty() && !text.starts_with(answer.error->entry);
    return shownText(ofEntry ? answer.error->entry + ": " + text : text);
}

Row rowOf(const Sweep& sweep, int code, const Answer& answer)
{
    Row row;
    row.hasAnswer = code == exitDone;
    row.outcome = !row.hasAnswer ? reasonOf(answer) : answer.result.value_or(0) == 0 ? "done" : "warning";
    row.notes = answer.notes;
    row.figures.assign(sweep.infos.size(), std::numeric_limits<double>::quiet_NaN());
    for (const Figure& figure : answer.figures.values) {
        auto found = std::ranges::find(sweep.infos, figure.name, &FigureInfo::name);
        if (row.hasAnswer && found != sweep.infos.end())
            row.figures[static_cast<size_t>(found - sweep.infos.begin())] = figure.value;
    }
    return row;
}

void startAlike(Session& own, const Session& session)
{
    own.saved = session.saved;
    own.working = session.working;
    own.kept = session.kept;
    own.model = session.model;
    own.lastDrive = session.lastDrive;
    own.figuresAlone = true;
    own.screens.stop = &signalStop();
}

Row runCombination(const Sweep& sweep, size_t combination)
{
    Session own;
    startAlike(own, sweep.session);
    Request request = sweep.single;
    std::ostringstream told;
    Streams aside = {told, told};
    Answer answer;
    std::vector<Assignment> values = valuesIn(sweep.request, combination), settings;
    for (size_t i = 0; i < values.size(); ++i)
        (sweep.request.ranges[i].ofPages ? settings : request.entries).push_back(values[i]);
    EntryFaults faults;
    std::vector<Box> boxes;
    if (!settings.empty() && !applySettings(own, settings, false, faults, boxes)) {
        tellSettings(false, faults, boxes, answer, aside);
        return rowOf(sweep, exitRefused, answer);
    }
    int code = sweep.run(own, request, answer, aside);
    answer.notes.insert(answer.notes.end(), faults.notes.begin(), faults.notes.end());
    return rowOf(sweep, code, answer);
}

// On any thread.
void runPiece(const Sweep& sweep, size_t first, std::vector<Row>& rows)
{
    size_t end = std::min(first + pieceLength, sweep.combinations);
    for (size_t combination = first; combination < end; ++combination) {
        try {
            rows.push_back(runCombination(sweep, combination));
        } catch (const std::bad_alloc&) {
            rows.push_back({{}, "not enough memory"});
        }
    }
}

void keepNotes(Sweep& sweep, const Row& row)
{
    constexpr size_t most = 20; // those that name a value differ from row to row
    for (const std::string& note : row.notes)
        if (sweep.notes.size() < most && std::ranges::find(sweep.notes, note) == sweep.notes.end())
            sweep.notes.push_back(note);
}

void writeRow(Sweep& sweep, RowWriter& rows, const Row& row)
{
    for (const Assignment& value : valuesIn(sweep.request, sweep.taken))
        rows.number(std::strtod(value.value.c_str(), nullptr));
    for (size_t i = 0; i < sweep.infos.size(); ++i)
        row.hasAnswer ? rows.number(row.figures[i]) : rows.empty();
    rows.text(row.outcome);
    rows.endRow();
    keepNotes(sweep, row);
    sweep.answered += row.hasAnswer;
    ++sweep.taken;
    if (!row.hasAnswer && sweep.firstFault.empty())
        sweep.firstFault = row.outcome;
}

void showCount(Sweep& sweep)
{
    sweep.line.show(static_cast<double>(sweep.taken) / static_cast<double>(sweep.combinations),
                    formatText("%zu of %zu combinations", sweep.taken, sweep.combinations));
}

size_t threadsFor(const Request& request)
{
    return request.jobs != 0 ? static_cast<size_t>(request.jobs) : std::max(std::thread::hardware_concurrency(), 1u);
}

// So many combinations from the present one on; false when the rest is given up.
bool runRound(Sweep& sweep, RowWriter& rows)
{
    size_t first = sweep.taken;
    size_t left = (sweep.combinations - first + pieceLength - 1) / pieceLength;
    std::vector<std::vector<Row>> pieces(std::min(left, piecesOfRound / pieceLength));
    OrderedWork work = {
        .run = [&](size_t piece) { runPiece(sweep, first + piece * pieceLength, pieces[piece]); },
        .take =
            [&](size_t piece) {
                for (const Row& row : std::exchange(pieces[piece], {}))
                    writeRow(sweep, rows, row);
                showCount(sweep);
            },
        .ended = [](size_t) {},
        .isGivenUp = isSignalWaiting,
    };
    runInOrder(pieces.size(), std::min(threadsFor(sweep.request), pieces.size()), work);
    return !isSignalWaiting() && rows.isTaken();
}

bool writeTable(Sweep& sweep, RowFormat format, const WritePiece& write)
{
    RowWriter rows(format, write);
    std::vector<RowColumn> columns;
    for (const std::string& name : sweep.names)
        columns.push_back({name.c_str(), exactDecimals});
    rows.begin(columns);
    while (sweep.taken < sweep.combinations && runRound(sweep, rows))
        ;
    sweep.line.hide();
    // Combinations that were asked to stop may be among the last.
    return rows.finish() && sweep.taken == sweep.combinations && !isSignalWaiting();
}

bool writeOut(Sweep& sweep)
{
    RowFormat format = sweep.request.json ? RowFormat::ndjson : RowFormat::csv;
    return writeTable(sweep, format, [&](std::span<const uint8_t> piece) {
        sweep.streams.out.write(reinterpret_cast<const char*>(piece.data()),
                                static_cast<std::streamsize>(piece.size()));
        return sweep.streams.out.good();
    });
}

int writeFile(Sweep& sweep, WriteRules& rules, Answer& answer)
{
    std::string target = absolutePath(sweep.request.rows);
    if (std::string fault = rules.fault({.path = target, .kind = FileKind::csv, .ofOption = true}); !fault.empty())
        return refuse(answer, sweep.streams, errorOf(library::ErrorKind::refused, fault));
    FileResult written =
        replaceFile(target, [&](const WritePiece& write) { return writeTable(sweep, rowFormatOf(target), write); });
    if (written != FileResult::ok && isSignalWaiting()) {
        tellStopped(answer, sweep.streams);
        return exitFailed;
    }
    if (written != FileResult::ok) {
        tellError(answer, sweep.streams,
                  errorOf(library::ErrorKind::cannotWrite, "failed to write " + shownText(target)));
        return exitFailed;
    }
    answer.outputs.push_back(target);
    double refused = static_cast<double>(sweep.combinations - sweep.answered);
    answer.figures.values = {{"combinations", "", static_cast<double>(sweep.combinations)}, {"failed", "", refused}};
    answer.lower.set(formatText("%zu combinations, %zu with an answer\n", sweep.combinations, sweep.answered));
    return exitDone;
}

int writeStandardOutput(Sweep& sweep, Answer& answer)
{
    if (writeOut(sweep))
        return exitDone;
    if (isSignalWaiting())
        tellError(
            answer, sweep.streams,
            {"stopped",
             formatText("stopped before the end; %zu of %zu combinations are written", sweep.taken, sweep.combinations),
             {}});
    return exitFailed;
}

int writeSweep(Sweep& sweep, WriteRules& rules, Answer& answer)
{
    bool toFile = !sweep.request.rows.empty() && sweep.request.rows != "-";
    int code = toFile ? writeFile(sweep, rules, answer) : writeStandardOutput(sweep, answer);
    tellNotes(answer, sweep.streams, sweep.notes);
    if (code != exitDone || sweep.answered > 0)
        return code;
    tellError(answer, sweep.streams,
              errorOf(library::ErrorKind::noAnswer, "no combination has an answer; the first: " + sweep.firstFault));
    return exitFailed;
}

} // namespace

int runSweep(const Session& session, const Command& command, const Request& request, WriteRules& rules,
             const RunOfSweep& run, Answer& answer, Streams& streams)
{
    Sweep sweep = {session, command, request, run, streams};
    sweep.single.command = request.command;
    sweep.single.entries = request.entries;
    nameColumns(sweep);
    int code = runHeld([&] { return writeSweep(sweep, rules, answer); });
    bool inAnswer = request.json && !answer.outputs.empty();
    if (!request.json)
        printAnswer(answer, streams);
    answer.isTold = !inAnswer;
    return code;
}

} // namespace torvane
