#include "cli/answer.h"

#include "cli/json.h"
#include "core/text.h"

#include <memory>
#include <utility>

namespace torvane {

namespace {

std::string& paneOf(Answer& answer, Pane pane)
{
    return pane == Pane::upper ? answer.upper : answer.lower;
}

// The percentage stands on a line of its own, which is written over and blanked at the end.
struct PercentLine {
    Streams& streams;
    bool shown = false;

    void show(int percent)
    {
        if (!streams.terminal)
            return;
        shown = true;
        streams.err << formatText("\r%3d %%", percent) << std::flush;
    }
    void hide()
    {
        if (std::exchange(shown, false))
            streams.err << "\r     \r" << std::flush;
    }
};

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

std::string jsonGraph(const GraphSeries& graph)
{
    JsonList points('[');
    for (int point = 0; point < graph.pointCount(); ++point) {
        JsonList row('[');
        for (int series = 0; series < graph.seriesCount(); ++series)
            row.element(jsonNumber(graph.value(point, series)));
        points.element(row.close());
    }
    JsonList object('{');
    object.member("kind", std::to_string(graph.graphKind));
    object.member("series", jsonTexts(graph.seriesNames));
    object.member("points", points.close());
    return object.close();
}

} // namespace

ScreensInto::ScreensInto(Session& toSession, Answer& answer, Streams& streams)
    : session(toSession), before(session.screens)
{
    auto line = std::make_shared<PercentLine>(PercentLine{streams});
    session.screens = {
        .setText = [&](Pane pane, std::string_view text) { paneOf(answer, pane) = text; },
        .appendText = [&](Pane pane, std::string_view text) { paneOf(answer, pane) += text; },
        .setStatus = [&](std::string_view text) { answer.status = text; },
        .showProgress =
            [line](bool visible) {
                if (!visible)
                    line->hide();
            },
        .setProgress = [line](int percent) { line->show(percent); },
        .showMessage =
            [&](std::string_view title, std::string_view text) {
                tellBoxes(answer, streams, {{std::string(title), std::string(text)}});
            },
        .tellNote =
            [&](std::string_view text) {
                tellBoxes(answer, streams, {{"note", std::string(text)}});
            },
    };
}

ScreensInto::~ScreensInto()
{
    session.screens.showProgress(false);
    session.screens = before;
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
    streams.out << answer.upper << answer.lower << std::flush;
    if (!answer.status.empty())
        streams.err << answer.status << '\n';
}

std::string jsonAnswer(const Answer& answer)
{
    JsonList object('{');
    object.member("command", std::to_string(answer.command));
    if (answer.result)
        object.member("result", std::to_string(*answer.result));
    if (!answer.status.empty())
        object.member("status", jsonString(answer.status));
    if (!answer.upper.empty())
        object.member("upper", jsonString(answer.upper));
    if (!answer.lower.empty())
        object.member("lower", jsonString(answer.lower));
    if (!answer.boxes.empty())
        object.member("boxes", jsonBoxes(answer.boxes));
    if (answer.graph)
        object.member("graph", jsonGraph(*answer.graph));
    if (!answer.outputs.empty())
        object.member("outputs", jsonTexts(answer.outputs));
    if (!answer.runs.empty())
        object.member("runs", answer.runs);
    return object.close();
}

} // namespace torvane
