// What stays of one call of the console for the next: entries, parameter files, profile files.
#include "console_fixture.h"

#include "command/command_table.h"
#include "core/parameter_file.h"
#include "core/text.h"
#include "fit/fit_builder.h"
#include "forms/form.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <utility>

namespace torvane {

TEST(ConsoleSettings, AnEntrySetToItsValueChangesNothing)
{
    Call plain = call({"801"});
    const ParameterBlock defaults = savedBlock;
    Model model;
    for (const Form* form : allForms()) {
        FormState state;
        openForm(state, *form, defaults, defaults, model, true);
        for (size_t i = 0; form->opensWith == OpensWith::working && i < form->rows.size(); ++i) {
            const Row& row = form->rows[i];
            if (row.offset == noField || !isPresent(state, row))
                continue;
            std::string entry = row.name + formatText("=%.17g", shownValue(state, row));
            EXPECT_EQ(call({"--set", entry, "801"}).out, plain.out) << entry;
        }
    }
    EXPECT_TRUE(contains(call({"321", "spokeCount[1]=30"}).out, "-- rear spoke count\t:   30\n"));
}

// No file holds which simulation or calculator a target belongs to.
TEST(ConsoleSettings, KeepsEveryTargetThatIsSaved)
{
    TestFolder folder;
    ParameterBlock block;
    for (const Command& command : commandTable()) {
        if (command.family == Family::none)
            continue;
        const Row& target = findForm(command.form)->rows[0];
        for (size_t i = 0; i < target.labels.size(); ++i) {
            std::string entry = formatText("%s=%zu", target.name, i), par = folder.path + consoleName(command) + entry;
            EXPECT_NE(call({"--par", par, "--save", "--set", "humanWeight=77", consoleName(command), entry}).code, 2);
            Call again = call({"--par", par, "human"});
            EXPECT_EQ(again.err, "") << entry;
            EXPECT_TRUE(contains(again.out, "77.0 kg"));
            ASSERT_EQ(readParameters(par, block), ParametersRead::ok);
            EXPECT_EQ(command.family == Family::ride ? block.rideTarget : block.theoryTarget, static_cast<int>(i));
        }
    }
}

TEST(ConsoleSettings, NamesWhatNoPageWouldTakeOfAProfile)
{
    TestFolder folder;
    std::string rider = folder.path + "rider.pro";
    EXPECT_EQ(call({"save-profile", rider}).code, 0);
    Bytes bytes = bytesOf(rider);
    std::fill_n(bytes.begin() + profileHeaderSize + offsetof(ModelState, crankLength), sizeof(double), uint8_t{0});
    writeBytes(rider, bytes);
    std::string told = "torvane-cli: " + rider +
                       ": crankLength is 0, its limits are 100 to 200 mm\n"
                       "status : failed to read a file 'rider.pro'\n";
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--profile", rider, "801"}, std::vector<std::string>{"load-profile", rider}}) {
        Call refused = call(arguments);
        EXPECT_EQ(refused.code, 1);
        EXPECT_EQ(refused.out, "");
        EXPECT_EQ(refused.err, told);
    }
}

TEST(ConsoleSettings, LeavesAParameterFileThatItCannotUse)
{
    TestFolder folder;
    std::string par = folder.path + "a.par", rider = folder.path + "b.pro", pipe = folder.path + "pipe";
    call({"--par", par, "--save", "--set", "humanWeight=77", "human"});
    Bytes broken = bytesOf(par);
    broken[offsetof(ParameterBlock, sprocketCount)] = 99;
    writeBytes(par, broken);
    Call read = call({"--json", "--par", par, "human"});
    EXPECT_EQ(read.code, 0);
    EXPECT_EQ(read.err, "alert: found unusable contents in 'a.par'.\nthe default values are used\n");
    EXPECT_TRUE(contains(read.out, "\"boxes\": [{\"title\": \"alert\", \"text\": \"found unusable contents in"));
    EXPECT_EQ(call({"--par", par, "--save", "801", "rideVelocity=900"}).code, 2);
    EXPECT_EQ(bytesOf(par), broken);
    Call saved = call({"--json", "--par", par, "--save", "801"});
    EXPECT_EQ(saved.code, 0);
    EXPECT_TRUE(contains(saved.out, "the unusable file is kept as 'a.par.unusable1'"));
    EXPECT_EQ(bytesOf(par + ".unusable1"), broken);
    EXPECT_EQ(call({"--par", par, "human"}).err, "");

    call({"save-profile", rider});
    Bytes profile = bytesOf(rider);
    std::string ride = folder.path + "c.fit";
    writeBytes(ride, FitBuilder().file());
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::pair<std::string, const char*> cases[] = {
        {rider, "found a profile file in place of parameters as 'b.pro'"},
        {ride, "found a FIT file in place of parameters as 'c.fit'"},
        {pipe, "found a pipe in place of parameters as 'pipe'"},
        {"/dev/zero", "found a device in place of parameters as 'zero'"},
        {"/proc/self/mem", "failed to read 'mem'"},
    };
    for (const auto& [path, text] : cases)
        for (const std::vector<std::string>& arguments :
             {std::vector<std::string>{"--json", "--par", path, "human"},
              std::vector<std::string>{"--json", "--par", path, "--save", "human"}}) {
            Call refused = call(arguments);
            EXPECT_EQ(refused.code, 1);
            EXPECT_EQ(refused.err, "alert: " + std::string(text) + "\n");
            EXPECT_EQ(refused.out, "{\"command\": 501, \"boxes\": [{\"title\": \"alert\", \"text\": \"" +
                                       std::string(text) + "\"}]}\n");
        }
    EXPECT_EQ(bytesOf(rider), profile);
    EXPECT_EQ(bytesOf(ride), FitBuilder().file());
    EXPECT_EQ(folder.count(), 5u);
    // What the command wrote there is no place for the defaults.
    std::string shared = folder.path + "d.pro";
    EXPECT_EQ(call({"--par", shared, "--save", "save-profile", shared}).code, 1);
    EXPECT_EQ(bytesOf(shared), profile);
    // Nor does refused input leave a file.
    EXPECT_EQ(call({"--par", folder.path + "e.par", "--save", "801", "rideVelocity=900"}).code, 2);
    EXPECT_EQ(folder.count(), 6u);
}

} // namespace torvane
