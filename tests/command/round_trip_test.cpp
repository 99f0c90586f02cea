// What a user enters stands there after the next start: typed or chosen at random, confirmed, saved as default, written
// to the files of the program, read again and opened.
#include "command/fill.h"
#include "command/kept_entries.h"
#include "command/settings_command.h"
#include "core/parameter_file.h"
#include "core/text.h"
#include "model/model_fixture.h"

#include "fit/fit_builder.h"

#include <cmath>
#include <map>

namespace torvane {
namespace {

// Those that follow something else: the rider, the other factors, the ride, the occasion.
bool isNeverDefault(const Row& row)
{
    constexpr std::string_view names[] = {"theoryCadence", "theoryCadenceMax", "rideAccele", "averageTemperature",
                                          "fileType",      "asAngle",          "prepare"};
    return std::ranges::find(names, std::string_view(row.name)) != std::end(names);
}

class RoundTrip {
public:
    RoundTrip(const Command& ofForm, const Form& filled, unsigned seed)
        : command(ofForm), form(filled), random(seed), lasts(seed == 0)
    {
        ride.presence.altitudeFlags = 1;
        ride.presence.positionFlags = 0x11;
    }
    void run()
    {
        chooseCalculator(command, session.working);
        for (int tries = 0; !enterAndConfirm(); ++tries, lasts = false)
            ASSERT_LT(tries, 500) << form.title;
        EXPECT_EQ(opened().saveAsDefault, form.saveFlag != noField) << form.title;
        if (command.entry == Entry::sheet)
            command.operation(session);
        else
            (command.commit ? command.commit : commitGps)(session.saved, session.working);
        FormState next = openedAgain();
        for (const auto& [row, value] : entered)
            if (isPresent(next, *row) && !isNeverDefault(*row)) {
                double found =
                    isNumber(*row) ? std::strtod(rowText(next, *row).c_str(), nullptr) : chosenValue(next, *row);
                EXPECT_NEAR(found, value, 1e-6) << form.title << ": " << row->name;
            }
    }

private:
    size_t below(size_t count)
    {
        return random() % count;
    }
    // A value that its box shows to the last digit.
    void enter(FormState& state, const Row& row)
    {
        if (isChosen(row)) {
            size_t count = row.kind == RowKind::check ? 2 : rowLabels(state, row).size();
            int chosen = static_cast<int>(lasts ? count - 1 : below(count));
            choose(state, row, chosen);
            EXPECT_TRUE(chosenValue(state, row) == chosen || row.offset != noField) << form.title << ": " << row.name;
        } else if (isNumber(row)) {
            double value = row.least + row.step * static_cast<double>(
                                                      below(static_cast<size_t>((row.most - row.least) / row.step)));
            typeText(state, row, formatText("%.10g", value));
        }
    }
    std::string fileFor(const Row& row)
    {
        constexpr const char* rides[] = {"half-1.fit", "half-2.fit", "hills.fit", "no-laps.fit"};
        return row.index == destinationPath ? folder.path + "out.fit"
                                            : std::string(TORVANE_CHECKOUT "/samples/rides/") + rides[below(4)];
    }
    FormState opened()
    {
        FormState state;
        openForm(state, form, session.saved, session.working, session.model, true, ride);
        return state;
    }
    // False where the form refuses what came about.
    bool enterAndConfirm()
    {
        FormState state = opened();
        EXPECT_FALSE(state.saveAsDefault) << form.title;
        for (const Row& row : form.rows)
            if (row.kind == RowKind::path)
                setPath(state, row, fileFor(row));
        for (bool choices : {true, false})
            for (const Row& row : form.rows)
                if (row.name && isEnabled(state, row) && isChosen(row) == choices)
                    enter(state, row);
        state.saveAsDefault = true;
        entered.clear();
        for (const Row& row : form.rows)
            if (row.name && (isNumber(row) || isChosen(row)) && isEnabled(state, row))
                entered[&row] = isNumber(row) ? shownValue(state, row) : chosenValue(state, row);
        return (form.confirm ? confirmDialog(session, state) : confirmPage(session, state)).passed;
    }
    FormState openedAgain()
    {
        std::string path = folder.path + "a.par";
        EXPECT_TRUE(writeParameters(path, session.saved) && writeEntryFile(entryFilePath(path), session.kept));
        ParameterBlock block;
        EXPECT_EQ(readParameters(path, block), ParametersRead::ok);
        startFrom(session, block);
        session.kept = {};
        EXPECT_TRUE(readEntryFile(entryFilePath(path), session.kept));
        if (form.id != 2006)
            session.working.initialValueMode = 1; // what lists propose would stand before what was saved
        FormState state = opened();
        takeKept(state, session.kept);
        return state;
    }

    const Command& command;
    const Form& form;
    Random random;
    bool lasts; // of every list at first, until the form takes what came about
    TestFolder folder;
    Session session;
    LoadedRide ride;
    std::map<const Row*, double> entered;
};

TEST(Entries, ComeBackAfterTheNextStart)
{
    for (const Command& command : commandTable()) {
        std::vector<const Form*> forms(sheetPages(command.sheet).begin(), sheetPages(command.sheet).end());
        if (const Form* dialog = findForm(command.form); dialog && dialog->saveBox != 0 && dialog->id != 2091)
            forms.push_back(dialog); // but for one whose box has no effect
        for (const Form* form : forms)
            for (unsigned seed = 0; seed < 5; ++seed)
                RoundTrip(command, *form, seed).run();
    }
}

} // namespace
} // namespace torvane
