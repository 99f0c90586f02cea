// What a command came to, as the panes, the status line and the message boxes of the console hold it.
#pragma once

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
    std::string status, upper, lower;
    std::vector<Box> boxes;
    std::optional<GraphSeries> graph;
    std::vector<std::string> outputs; // absolute paths of the files written
    std::string runs;                 // of a batch: the answers to its rides, as a JSON list
};

// Where the streams of one call of the console lead.
struct Streams {
    std::ostream& out;
    std::ostream& err;
    bool terminal = false; // both are read by a person: progress may be shown
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

// "title: text" to standard error, and into the answer.
void tellBoxes(Answer& answer, Streams& streams, const std::vector<Box>& boxes);

// Pane texts to standard output, the status line to standard error.
void printAnswer(const Answer& answer, Streams& streams);
// The answer as one JSON object, without a line end; keys without content are left out.
std::string jsonAnswer(const Answer& answer);

} // namespace torvane
