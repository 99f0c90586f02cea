#include "torvane/calculator.h"

#include "command/fill.h"
#include "command/settings_command.h"
#include "command/settings_entries.h"
#include "core/command_ids.h"
#include "core/files.h"
#include "core/parameter_file.h"
#include "library/asking.h"
#include "library/entry_info.h"
#include "library/errors.h"
#include "library/rides.h"
#include "library/state.h"
#include "version.h"

#include <optional>
#include <string>
#include <utility>

namespace torvane::library {

namespace {

// What a file that could not be taken is.
ErrorKind faultOf(const std::string& path)
{
    std::vector<std::uint8_t> start;
    return readFileStart(path, 1, start) == FileResult::ok ? ErrorKind::badFile : ErrorKind::cannotRead;
}

// Reads or writes a profile by its command.
std::optional<Error> finishProfile(Session& session, int command, std::string_view path, Answer& answer)
{
    Gathering gathering(session, answer);
    session.profilePath = absolutePath(std::string(path));
    const Command& own = *findCommand(command);
    answer.command = consoleName(own);
    if (own.operation(session) == 0)
        return std::nullopt;
    if (own.id == commandSaveProfile)
        return Error{.kind = ErrorKind::cannotWrite, .text = answer.statusLine};
    if (!session.profileFault.empty())
        return Error{.kind = ErrorKind::beyondLimits, .text = session.profileFault};
    return Error{.kind = faultOf(session.profilePath), .text = answer.statusLine};
}

// The work of an operation on its calculator's session.
template <class T, class State, class Work>
Result<T> operate(const std::unique_ptr<State>& state, Work&& work) noexcept
{
    return guarded<T>([&]() -> Result<T> {
        if (!state)
            return Error{.kind = ErrorKind::incomplete, .text = "moved from"};
        return work(state->session);
    });
}

// Work that changes what the calculator holds, or on an error does not.
template <class State, class Work>
Result<Answer> change(const std::unique_ptr<State>& state, Work&& work) noexcept
{
    return operate<Answer>(state, [&](Session& session) -> Result<Answer> {
        Held held(session);
        Answer answer;
        if (std::optional<Error> error = work(session, answer))
            return *error;
        held.letGo();
        return answer;
    });
}

// Work that leaves it as it was in any case.
template <class T, class State, class Work>
Result<T> look(const std::unique_ptr<State>& state, Work&& work) noexcept
{
    return operate<T>(state, [&](Session& session) -> Result<T> {
        Held held(session);
        return work(session);
    });
}

} // namespace

Calculator::Calculator(std::unique_ptr<State> made) noexcept : state(std::move(made)) {}
Calculator::Calculator(Calculator&&) noexcept = default;
Calculator& Calculator::operator=(Calculator&&) noexcept = default;
Calculator::~Calculator() = default;

Result<Calculator> Calculator::make() noexcept
{
    return guarded<Calculator>([]() -> Result<Calculator> { return Calculator(std::make_unique<State>()); });
}

Result<Answer> Calculator::loadProfile(std::string_view path) noexcept
{
    return change(state, [&](Session& session, Answer& answer) {
        return finishProfile(session, commandLoadProfile, path, answer);
    });
}

Result<Answer> Calculator::saveProfile(std::string_view path) noexcept
{
    return change(state, [&](Session& session, Answer& answer) {
        std::optional<Error> error = finishProfile(session, commandSaveProfile, path, answer);
        answer.files = {session.profilePath};
        return error;
    });
}

Result<Answer> Calculator::set(const Entries& entries) noexcept
{
    return change(state, [&](Session& session, Answer& answer) -> std::optional<Error> {
        Gathering gathering(session, answer);
        EntryFaults faults;
        std::vector<Box> boxes;
        if (!applySettings(session, assignmentsOf(entries), false, faults, boxes))
            return errorOf(faults, boxes);
        answer.notes = std::move(faults.notes);
        return std::nullopt;
    });
}

Result<std::vector<EntryInfo>> Calculator::settings() const noexcept
{
    return operate<std::vector<EntryInfo>>(
        state, [](const Session& session) -> Result<std::vector<EntryInfo>> { return describedSettings(session); });
}

Result<Answer> Calculator::ask(const Question& question) noexcept
{
    return look<Answer>(state, [&](Session& session) -> Result<Answer> {
        const Command* command = askedCommand(question.command);
        return command ? askCommand(session, *command, question) : unknownCommand(question.command);
    });
}

Result<std::vector<EntryInfo>> Calculator::entriesOf(std::string_view name) const noexcept
{
    return operate<std::vector<EntryInfo>>(state, [&](const Session& session) -> Result<std::vector<EntryInfo>> {
        const Command* command = askedCommand(name);
        if (!command)
            return unknownCommand(name);
        return describedEntries(session, *command);
    });
}

Result<Answer> Calculator::loadRide(std::string_view path) noexcept
{
    return change(state, [&](Session& session, Answer& answer) -> std::optional<Error> {
        FitImage image = {};
        std::string file = absolutePath(std::string(path));
        return takeRide(session, loadFitImage(image, file), std::move(image), file, answer);
    });
}

Result<Answer> Calculator::loadRide(std::span<const std::uint8_t> bytes, std::string_view name) noexcept
{
    return change(state, [&](Session& session, Answer& answer) -> std::optional<Error> {
        FitImage image = {};
        StatusCode code = takeFitImage(image, {bytes.begin(), bytes.end()});
        return takeRide(session, code, std::move(image), std::string(name), answer);
    });
}

Result<Answer> Calculator::prepareRide(const Preparation& preparation) noexcept
{
    return change(state, [&](Session& session, Answer& answer) { return prepareInHand(session, preparation, answer); });
}

Result<Answer> Calculator::analyseRide(const Entries& entries) noexcept
{
    return ask({.command = "analyse-and-predict", .entries = entries});
}

Result<Bytes> Calculator::rideFile() const noexcept
{
    return operate<Bytes>(state, [](const Session& session) -> Result<Bytes> {
        if (!session.ride.inMemory)
            return noRide();
        return fitFileBytes(*session.ride.inMemory);
    });
}

Result<Bytes> Calculator::analysedFile(const Entries& entries) noexcept
{
    return look<Bytes>(state, [&](Session& session) { return analysedFileOf(session, entries); });
}

Result<Done> writeFile(std::string_view path, std::span<const std::uint8_t> bytes) noexcept
{
    return guarded<Done>([&]() -> Result<Done> {
        std::string file(path);
        if (replaceFile(file, {bytes}) == FileResult::ok)
            return Done{};
        return Error{.kind = ErrorKind::cannotWrite, .text = "failed to write " + file};
    });
}

const char* version() noexcept
{
    return TORVANE_VERSION;
}

} // namespace torvane::library
