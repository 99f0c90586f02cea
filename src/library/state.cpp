#include "library/state.h"

namespace torvane::library {

Gathering::Gathering(Session& toSession, Answer& answer) : session(toSession)
{
    auto pane = [&answer](Pane which) -> std::string& { return which == Pane::upper ? answer.upper : answer.lower; };
    session.screens.setText = [pane](Pane which, std::string_view text) { pane(which) = text; };
    session.screens.appendText = [pane](Pane which, std::string_view text) { pane(which) += text; };
    session.screens.setStatus = [&answer](std::string_view text) { answer.statusLine = text; };
    session.screens.showMessage = [&answer](std::string_view title, std::string_view text) {
        answer.messages.push_back({std::string(title), std::string(text)});
    };
}

Gathering::~Gathering()
{
    session.screens = {};
}

Held::Held(Session& ofSession)
    : session(ofSession), saved(session.saved), working(session.working), formMarks(session.formMarks),
      model(session.model), lastDrive(session.lastDrive), ride(session.ride)
{
}

Held::~Held()
{
    if (!held)
        return;
    session.saved = saved;
    session.working = working;
    session.formMarks = formMarks;
    session.model = model;
    session.lastDrive = lastDrive;
    session.take(std::move(ride));
}

} // namespace torvane::library
