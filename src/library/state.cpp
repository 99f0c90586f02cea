#include "library/state.h"

#include <utility>

namespace torvane::library {

Gathering::Gathering(Session& toSession, Answer& answer) : session(toSession)
{
    auto pane = [&answer](Pane which) -> std::string& { return which == Pane::upper ? answer.upper : answer.lower; };
    session.takeFigures();
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

void takeFigures(Session& session, Answer& answer)
{
    Figures left = session.takeFigures();
    auto own = [](const FigureList& list) {
        std::vector<Figure> figures;
        for (const torvane::Figure& figure : list)
            figures.push_back({figure.name, figure.value, figure.unit});
        return figures;
    };
    answer.figures = own(left.values);
    for (const Figures::Group& group : left.groups) {
        FigureGroup& told = answer.groups.emplace_back(FigureGroup{group.name, {}});
        for (const FigureList& item : group.items)
            told.items.push_back(own(item));
    }
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
