// Two sessions in two threads, as users who know nothing of each other: random simulations, analyses and tools, each
// behind its dialog with random entries. What either sees and writes is what it does alone. What the threads share
// without order shows under the thread sanitizer.
#include "command/fill.h"
#include "command/gps_load_command.h"
#include "command/settings_command.h"
#include "command/settings_entries.h"
#include "core/command_ids.h"
#include "core/text.h"

#include "captured_screens.h"
#include "fit/fit_builder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <random>
#include <thread>

namespace torvane {

namespace {

constexpr int commandsOfUser = 1000;

class User {
public:
    User(unsigned seed, const std::string& ownFolder) : folder(ownFolder), random(seed)
    {
        std::filesystem::create_directory(folder);
        session.screens = shown.screens;
    }
    // What each command has come to: its name, and a number made of all that was shown and written.
    std::vector<std::string> work()
    {
        std::vector<const Command*> commands;
        for (const Command& command : commandTable())
            if (command.work == Work::worker)
                commands.push_back(&command);
        std::vector<std::string> told;
        while (told.size() < commandsOfUser) {
            const Command& command = *commands[below(commands.size())];
            changeRider();
            run(command);
            told.push_back(command.label + formatText(" %zx", std::hash<std::string>()(takeSeen())));
        }
        return told;
    }

private:
    static constexpr const char* rides[] = {"cut.fit", "smart.fit", "no-laps.fit", "half-1.fit", "meter.fit"};

    size_t below(size_t count)
    {
        return random() % count;
    }
    static std::string pathOf(const char* ride)
    {
        return std::string(TORVANE_CHECKOUT "/samples/rides/") + ride;
    }
    std::string entryFor(const FormState& state, const Row& row)
    {
        if (row.kind == RowKind::check)
            return std::to_string(below(2));
        if (isNumber(row)) {
            double shownNow = shownValue(state, row);
            double near = shownNow == 0 ? 1 : shownNow * (0.9 + 0.02 * static_cast<double>(below(11)));
            return formatText(row.kind == RowKind::real ? "%.3f" : "%.0f", std::clamp(near, row.least, row.most));
        }
        std::vector<std::string> labels = rowLabels(state, row);
        return labels.empty() ? "" : labels[below(labels.size())];
    }
    std::vector<Assignment> entriesFor(const Form* form)
    {
        std::vector<Assignment> entries;
        FormState state;
        if (form)
            openForm(state, *form, session.saved, session.working, session.model, true, session.ride);
        for (const Row& row : form ? form->rows : std::span<const Row>())
            if (row.name && row.kind != RowKind::path && isEnabled(state, row) && below(3) == 0)
                entries.push_back({row.name, entryFor(state, row)});
        return entries;
    }
    void changeRider()
    {
        EntryFaults faults;
        std::vector<Box> boxes;
        if (below(5) == 0)
            applySettings(session,
                          {{"humanWeight", std::to_string(55 + below(40))}, {"windSpeed", std::to_string(below(4))}},
                          below(2) == 0, faults, boxes);
    }
    void run(const Command& command)
    {
        RunFiles files = {{pathOf(rides[below(std::size(rides))]), pathOf(rides[below(std::size(rides))])},
                          folder + (command.id == commandFieldDump ? "out.csv" : "out.fit")};
        session.chosenRide = files.sources[0];
        if (command.id == commandCompare)
            session.inputs.files[0].path = session.inputs.files[1].path = pathOf("meter.fit");
        if (command.id >= commandExpress && command.id <= commandCreate)
            loadGpsFile(session);
        chooseCalculator(command, session.working);
        const std::vector<Assignment> entries = entriesFor(findForm(command.form));
        Filling filling = {session, command, entries, files};
        if (!fillDialog(filling)) {
            for (const Box& box : filling.boxes)
                shown.lower += box.text;
            return;
        }
        if (command.commit)
            command.commit(session.saved, session.working);
        shown.lower += std::to_string(command.operation(session));
        if (session.graph)
            shown.lower += std::to_string(session.graph->pointCount());
    }
    std::string takeSeen()
    {
        std::string seen = shown.upper + shown.lower + shown.status;
        for (const auto& [title, text] : shown.messages)
            seen += title + text;
        shown.upper = shown.lower = shown.status = "";
        shown.messages.clear();
        std::map<std::string, Bytes> written;
        for (const auto& file : std::filesystem::directory_iterator(folder))
            written[file.path().filename().string()] = bytesOf(file.path());
        for (const auto& [name, bytes] : written) {
            seen.append(name).append(bytes.begin(), bytes.end());
            std::filesystem::remove(folder + name);
        }
        return seen;
    }

    std::string folder;
    std::mt19937 random;
    CapturedScreens shown;
    Session session;
};

} // namespace

TEST(Sessions, TwoInTwoThreadsAnswerAsEachAlone)
{
    TestFolder folder;
    std::string first = folder.path + "first/", second = folder.path + "second/";
    const std::vector<std::string> alone[] = {User(1, first).work(), User(2, second).work()};
    std::vector<std::string> together[2];
    {
        std::jthread other([&] { together[1] = User(2, second).work(); });
        together[0] = User(1, first).work();
    }
    for (int user : {0, 1})
        for (size_t i = 0; i < commandsOfUser; ++i)
            ASSERT_EQ(together[user].at(i), alone[user].at(i)) << "user " << user << ", command " << i;
}

} // namespace torvane
