// What a command came to, as the panes, the status line and the message boxes of the console hold it.
#pragma once

#include "cli/error.h"
#include "cli/pane_text.h"
#include "command/session.h"
#include "core/result_status.h"
#include "core/screens.h"
#include "core/verdict.h"
#include "ride/graph_series.h"

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace torvane {

struct Answer {
    int command = 0;
    std::optional<ResultStatus> result; // none: nothing ran
    std::string status;
    PaneText upper, lower;
    std::vector<Box> boxes;
    Figures figures;
    std::optional<GraphSeries> graph;
    std::vector<std::string> outputs; // absolute paths of the files written
    std::vector<std::string> notes;
    std::optional<CallError> error; // the first one; none where the call did what it was asked
    std::string source;             // of a batch: the ride that this is the answer to
    bool isTold = false;            // of a batch: the answers to its rides are printed
};

// Where the streams of one call of the console lead.
struct Streams {
    std::ostream& out;
    std::ostream& err;
    bool terminal = false; // standard error is read by a person: progress may be shown
    bool direct = false;   // the answer is printed as soon as it is there: long texts are made on their way out
};

// While it lives, the screens of the session write into `answer`; message boxes also go to standard error as they come.
class ScreensInto {
public:
    ScreensInto(Session& session, Answer& answer, Streams& streams);
    ~ScreensInto();
    ScreensInto(const ScreensInto&) = delete;
    ScreensInto& operator=(const ScreensInto&) = delete;

private:
    Session& session;
    Screens before;
};

// "torvane-cli: text" to standard error, and into the answer.
void tellError(Answer& answer, Streams& streams, CallError error);
// "note: text": an entry without effect, and what is worth to know of an answer.
void tellNotes(Answer& answer, Streams& streams, const std::vector<std::string>& notes);
// Memory that does not suffice, in a box.
void tellNoMemory(Answer& answer, Streams& streams);
// A run that was asked to stop: in the place of what it had begun to say.
void tellStopped(Answer& answer, Streams& streams);
// What a form that was not accepted had to say: boxes, and below them which entry takes what.
void tellRefusal(Answer& answer, Streams& streams, const EntryFaults& faults, const std::vector<Box>& boxes);
// "title: text" to standard error, and into the answer.
void tellBoxes(Answer& answer, Streams& streams, const std::vector<Box>& boxes);

// Pane texts to standard output, the status line to standard error.
void printAnswer(const Answer& answer, Streams& streams);
// All figures as one JSON object.
std::string jsonFigures(const Figures& figures);
// The answer as one JSON object on a line; keys without content are left out. A graph goes out point by point.
void writeJson(std::ostream& out, const Answer& answer);

} // namespace torvane
