#include "cli/answer.h"

#include "cli/progress_line.h"
#include "core/json.h"
#include "core/shown_text.h"
#include "core/text.h"

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

namespace torvane {

namespace {

PaneText& paneOf(Answer& answer, Pane pane)
{
    return pane == Pane::upper ? answer.upper : answer.lower;
}

std::string jsonBoxes(const std::vector<Box>& boxes)
{
    JsonList list('[');
    for (const Box& box : boxes) {
        JsonList object('{');
        object.member("title", jsonString(box.title));
        object.member("text", jsonString(box.text));
        list.element(object.close());
    }
    return list.close();
}

std::string jsonTexts(const std::vector<std::string>& texts)
{
    JsonList list('[');
    for (const std::string& text : texts)
        list.element(jsonString(text));
    return list.close();
}

void addFigures(JsonList& object, const FigureList& figures)
{
    for (const Figure& figure : figures)
        object.member(figure.name, jsonExact(figure.value));
}

// Of what has a unit; the items of a group share theirs.
void addUnits(JsonList& object, const FigureList& figures, std::set<std::string>& told)
{
    for (const Figure& figure : figures)
        if (*figure.unit != '\0' && told.insert(figure.name).second)
            object.member(figure.name, jsonString(figure.unit));
}

std::string jsonUnits(const Figures& figures)
{
    JsonList object('{');
    std::set<std::string> told;
    addUnits(object, figures.values, told);
    for (const Figures::Group& group : figures.groups) {
        JsonList units('{');
        std::set<std::string> toldOfGroup;
        for (const FigureList& list : group.items)
            addUnits(units, list, toldOfGroup);
        object.member(group.name, units.close());
    }
    return object.close();
}

// The members of one object, each of them on its way as soon as it is there.
class JsonMembers {
public:
    explicit JsonMembers(std::ostream& toOut) : out(toOut << '{') {}
    // Takes the value behind the key.
    std::ostream& next(const char* key)
    {
        return out << std::exchange(before, ", ") << '"' << key << "\": ";
    }

private:
    std::ostream& out;
    const char* before = "";
};

// Whether a byte goes on within a character.
bool goesOn(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

void writeJsonPiece(std::ostream& out, std::string_view text)
{
    constexpr size_t pieceSize = 1 << 16, longestCharacter = 4;
    while (!text.empty()) {
        size_t length = std::min(pieceSize, text.size());
        for (size_t i = 0; i < longestCharacter && length < text.size() && goesOn(text[length]); ++i)
            ++length;
        std::string piece = jsonString(text.substr(0, length));
        out << std::string_view(piece).substr(1, piece.size() - 2);
        text.remove_prefix(length);
    }
}

// A report of a long ride: never as a whole, nor beside itself.
void writeJsonText(std::ostream& out, const PaneText& text)
{
    out << '"';
    text.tell([&](std::string_view piece) {
        writeJsonPiece(out, piece);
        return out.good();
    });
    out << '"';
}

void writeGraph(std::ostream& out, const GraphSeries& graph)
{
    out << "{\"kind\": " << graph.graphKind << ", \"series\": " << jsonTexts(graph.seriesNames) << ", \"points\": [";
    for (int point = 0; point < graph.pointCount(); ++point) {
        JsonList row('[');
        for (int series = 0; series < graph.seriesCount(); ++series)
            row.element(jsonNumber(graph.value(point, series)));
        out << (point == 0 ? "" : ", ") << row.close();
    }
    out << "]}";
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

void printError(Streams& streams, const std::string& text)
{
    streams.err << "torvane-cli: " << shownText(text) << '\n';
}

void keepError(Answer& answer, CallError error)
{
    if (!answer.error)
        answer.error = std::move(error);
}

} // namespace

ScreensInto::ScreensInto(Session& toSession, Answer& answer, Streams& streams)
    : session(toSession), before(session.screens)
{
    auto line = std::make_shared<ProgressLine>(streams);
    session.screens = {
        .setText = [&](Pane pane, std::string_view text) { paneOf(answer, pane).set(text); },
        .appendText = [&](Pane pane, std::string_view text) { paneOf(answer, pane).append(text); },
        .setStatus = [&](std::string_view text) { answer.status = text; },
        .showProgress =
            [line](bool visible) {
                if (!visible)
                    line->hide();
            },
        .setProgress = [line](int percent) { line->show(percent / 100.0, {}); },
        .showMessage =
            [&](std::string_view title, std::string_view text) {
                tellBoxes(answer, streams, {{std::string(title), std::string(text)}});
            },
        .tellNote = [&](std::string_view text) { tellNotes(answer, streams, {std::string(text)}); },
        .stop = before.stop,
    };
    if (streams.direct)
        session.screens.appendMade = [&](Pane pane, TextMaker maker) { paneOf(answer, pane).append(std::move(maker)); };
}

ScreensInto::~ScreensInto()
{
    session.screens.showProgress(false);
    session.screens = before;
}

void tellError(Answer& answer, Streams& streams, CallError error)
{
    printError(streams, error.text);
    keepError(answer, std::move(error));
}

void tellNotes(Answer& answer, Streams& streams, const std::vector<std::string>& notes)
{
    for (const std::string& text : notes)
        streams.err << "note: " << shownText(text) << '\n';
    answer.notes.insert(answer.notes.end(), notes.begin(), notes.end());
}

void tellNoMemory(Answer& answer, Streams& streams)
{
    constexpr const char* text = "not enough memory";
    tellBoxes(answer, streams, {{"error", text}});
    answer.error = errorOf(library::ErrorKind::outOfMemory, text);
}

void tellStopped(Answer& answer, Streams& streams)
{
    answer.status.clear();
    answer.upper.clear();
    answer.lower.clear();
    tellError(answer, streams, {"stopped", "stopped before the end; no file is written", {}});
}

void tellRefusal(Answer& answer, Streams& streams, const EntryFaults& faults, const std::vector<Box>& boxes)
{
    for (const Refusal& refusal : faults.refusals)
        printError(streams, consoleText(refusal));
    tellBoxes(answer, streams, boxes);
    if (std::string lesson = lessonOf(faults); !lesson.empty())
        printError(streams, lesson);
    CallError error = errorOf(faults, boxes);
    if (!faults.refusals.empty())
        error.text = consoleText(faults.refusals.front());
    keepError(answer, std::move(error));
}

void tellBoxes(Answer& answer, Streams& streams, const std::vector<Box>& boxes)
{
    for (const Box& box : boxes) {
        answer.boxes.push_back(box);
        streams.err << box.title << ": " << box.text << '\n';
    }
}

void printAnswer(const Answer& answer, Streams& streams)
{
    for (const PaneText* pane : {&answer.upper, &answer.lower})
        pane->tell([&](std::string_view piece) { return (streams.out << piece).good(); });
    streams.out.flush();
    if (!answer.status.empty())
        streams.err << answer.status << '\n';
}

std::string jsonFigures(const Figures& figures)
{
    JsonList object('{');
    addFigures(object, figures.values);
    for (const Figures::Group& group : figures.groups) {
        JsonList items('[');
        for (const FigureList& list : group.items) {
            JsonList item('{');
            addFigures(item, list);
            items.element(item.close());
        }
        object.member(group.name, items.close());
    }
    return object.close();
}

void writeJson(std::ostream& out, const Answer& answer)
{
    JsonMembers object(out);
    if (answer.command != 0)
        object.next("command") << std::to_string(answer.command);
    if (!answer.source.empty())
        object.next("source") << jsonString(answer.source);
    if (answer.result)
        object.next("result") << std::to_string(*answer.result);
    if (!answer.status.empty())
        object.next("status") << jsonString(answer.status);
    if (!answer.upper.isEmpty())
        writeJsonText(object.next("upper"), answer.upper);
    if (!answer.lower.isEmpty())
        writeJsonText(object.next("lower"), answer.lower);
    if (!answer.boxes.empty())
        object.next("boxes") << jsonBoxes(answer.boxes);
    if (!answer.notes.empty())
        object.next("notes") << jsonTexts(answer.notes);
    if (!answer.figures.values.empty()) {
        object.next("figures") << jsonFigures(answer.figures);
        object.next("units") << jsonUnits(answer.figures);
    }
    if (answer.error)
        object.next("error") << jsonError(*answer.error);
    if (!answer.outputs.empty())
        object.next("outputs") << jsonTexts(answer.outputs);
    if (answer.graph)
        writeGraph(object.next("graph"), *answer.graph);
    out << "}\n";
}

} // namespace torvane
