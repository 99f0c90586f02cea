#include "library/asking.h"

#include "command/fill.h"
#include "command/gps_command.h"
#include "command/menu_rules.h"
#include "command/nearest.h"
#include "command/ride_command.h"
#include "command/settings_command.h"
#include "core/command_ids.h"
#include "core/files.h"
#include "core/parameter_block.h"
#include "fit/fit_tools.h"
#include "library/errors.h"
#include "library/state.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace torvane::library {

namespace {

// One question on its way to an answer.
struct Asking {
    Session& session;
    const Command& command;
    std::vector<Assignment> entries;
    RunFiles files = {};
    Answer answer = {};
};

Error incomplete(const Command& command, const char* needed)
{
    return {.kind = ErrorKind::incomplete, .text = consoleName(command) + " needs " + needed};
}

// Whether a form was accepted; what had no effect goes to the answer.
std::optional<Error> errorOf(bool accepted, Filling& filling, Answer& answer)
{
    if (!accepted)
        return library::errorOf(filling.faults, filling.boxes);
    for (Box& box : filling.boxes)
        answer.messages.push_back({std::move(box.title), std::move(box.text)});
    std::ranges::move(filling.faults.notes, std::back_inserter(answer.notes));
    return std::nullopt;
}

std::optional<Error> enterForm(const Form& form, Asking& asking)
{
    Filling filling = {asking.session, asking.command, asking.entries, asking.files};
    return errorOf(fillForm(form, asking.session.ride, filling), filling, asking.answer);
}

std::optional<Error> enterDialog(Asking& asking)
{
    Filling filling = {asking.session, asking.command, asking.entries, asking.files};
    std::optional<Error> error = errorOf(fillDialog(filling), filling, asking.answer);
    if (!error && !filling.destination.empty())
        asking.answer.files = torvane::filesOf(filling);
    return error;
}

std::optional<Error> enterRideSettings(Asking& asking)
{
    if (!worksOnLoadedRide(asking.command))
        return std::nullopt;
    if (asking.session.ride.path.empty())
        return incomplete(asking.command, "a ride in hand");
    if (std::optional<Box> box = whyGreyed(asking.command, asking.session.readiness))
        return Error{.kind = ErrorKind::unsuitable, .text = box->text};
    const Form* form = settingsForm(asking.command);
    return form ? enterForm(*form, asking) : std::nullopt;
}

// Of the two commands that ask in no dialog: the load of a ride, and the comparison of two.
void takeSources(const Asking& asking)
{
    asking.session.inputs = {};
    for (size_t i = 0; i < asking.files.sources.size(); ++i)
        asking.session.inputs.files[i].path = asking.files.sources[i];
    asking.session.chosenRide = asking.files.sources.empty() ? std::string() : asking.files.sources[0];
}

std::optional<Error> enter(Asking& asking)
{
    chooseCalculator(asking.command, asking.session.working);
    if (asking.command.form == 0)
        takeSources(asking);
    if (std::optional<Error> error = enterRideSettings(asking))
        return error;
    return enterDialog(asking);
}

// Settings have operations of their own in the library.
bool isAsked(const Command& command)
{
    return command.work == Work::report || command.work == Work::worker;
}

Graph graphOf(const GraphSeries& curves)
{
    Graph graph;
    for (int series = 0; series < curves.seriesCount(); ++series) {
        Series& own = graph.series.emplace_back(Series{curves.seriesNames[static_cast<size_t>(series)], {}});
        for (int point = 0; point < curves.pointCount(); ++point)
            own.values.push_back(curves.value(point, series));
    }
    return graph;
}

Result<Answer> run(Asking& asking)
{
    Session& session = asking.session;
    if (asking.command.commit)
        asking.command.commit(session.saved, session.working);
    session.graph.reset();
    ResultStatus status = asking.command.operation(session);
    takeFigures(session, asking.answer);
    if (std::optional<GraphSeries> curves = std::exchange(session.graph, std::nullopt))
        asking.answer.graph = graphOf(*curves);
    return outcome(asking.command, status, std::move(asking.answer));
}

// The commands of the ride in hand take no source.
std::optional<Error> checkFiles(const Command& command, const Question& question)
{
    size_t destinations = command.files.destinationIsLast();
    bool may = command.files.destinationIsOptional();
    bool inHand = worksOnLoadedRide(command);
    size_t least = inHand ? 0 : command.files.least - std::min(destinations, command.files.least);
    size_t most = inHand ? 0 : command.files.most - std::min(destinations, command.files.most);
    if (question.sources.size() < least || (!may && question.destination.empty() != (destinations == 0)))
        return incomplete(command, destinations ? "its sources and a destination" : "its sources, and no destination");
    if (question.sources.size() > most)
        return Error{.kind = ErrorKind::refused, .text = consoleName(command) + " takes fewer sources"};
    return std::nullopt;
}

std::optional<Error> checkQuestion(const Command& command, const Question& question)
{
    Refusal refusal = checkNames(command, assignmentsOf(question.entries));
    if (!refusal.text.empty())
        return library::errorOf(refusal);
    return checkFiles(command, question);
}

RunFiles filesOf(const Question& question)
{
    RunFiles files;
    for (const std::string& source : question.sources)
        files.sources.push_back(absolutePath(source));
    if (!question.destination.empty())
        files.destination = absolutePath(question.destination);
    return files;
}

} // namespace

std::vector<Assignment> assignmentsOf(const Entries& entries)
{
    std::vector<Assignment> assignments;
    for (const Entry& entry : entries)
        assignments.push_back({entry.name, entry.value});
    return assignments;
}

const Command* askedCommand(std::string_view name)
{
    const Command* command = findCommand(name);
    return command && isAsked(*command) ? command : nullptr;
}

Error unknownCommand(std::string_view name)
{
    std::vector<std::string> names;
    for (const Command& command : commandTable())
        if (isAsked(command))
            names.push_back(consoleName(command));
    return {.kind = ErrorKind::unknownCommand,
            .text = "there is no command " + std::string(name) + suggestion(name, names)};
}

Result<Answer> outcome(const Command& command, ResultStatus status, Answer&& answer)
{
    if (!succeeded(command, status))
        return errorOf(command, status, answer.lower, answer.statusLine);
    answer.command = consoleName(command);
    answer.status = status;
    answer.warned = command.answers == Answers::bits && status != 0;
    return std::move(answer);
}

Result<Answer> askCommand(Session& session, const Command& command, const Question& question)
{
    if (std::optional<Error> error = checkQuestion(command, question))
        return *error;
    Asking asking = {session, command, assignmentsOf(question.entries), filesOf(question)};
    Gathering gathering(session, asking.answer);
    session.keepsRideCurves = question.graph;
    if (question.graph)
        wantGraph(session.working);
    if (command.work == Work::worker)
        if (std::optional<Error> error = enter(asking))
            return *error;
    return run(asking);
}

Result<Bytes> analysedFileOf(Session& session, const Entries& entries)
{
    const Command& create = *findCommand(commandCreate);
    Asking asking = {session, create, assignmentsOf(entries)};
    if (Refusal refusal = checkNames(create, asking.entries); !refusal.text.empty())
        return errorOf(refusal);
    Gathering gathering(session, asking.answer);
    if (std::optional<Error> error = enterRideSettings(asking))
        return *error;
    Form form = *findForm(create.form);
    form.check = nullptr; // of the destination, which there is none of
    if (std::optional<Error> error = enterForm(form, asking))
        return *error;
    create.commit(session.saved, session.working);
    FitImage destination = {};
    if (const StatusCode code = createAnalysedImage(session, destination))
        return errorOf(create, code, asking.answer.lower, asking.answer.statusLine);
    return fitFileBytes(destination);
}

} // namespace torvane::library
