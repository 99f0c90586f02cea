// What stays of one call of the console for the next: entries, parameter files, profile files.
#include "console_fixture.h"

#include "command/command_table.h"
#include "core/parameter_file.h"
#include "core/text.h"
#include "forms/form.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <utility>

namespace torvane {

using ConsoleSettings = ConsoleTest;

TEST_F(ConsoleSettings, AnEntrySetToItsValueChangesNothing)
{
    Call plain = call({"801"});
    ParameterBlock defaults = defaultBlock();
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

TEST_F(ConsoleSettings, ADragFactorCountsWhereItIsWanted)
{
    std::string rider = in + "rider.pro", par = in + "Torvane.par";
    EXPECT_EQ(call({"--set", "dragFactor=1.25", "801"}).out, call({"801"}).out);
    EXPECT_EQ(call({"--set", "dragFactor=1.25", "save-profile", rider}).code, 0);
    EXPECT_TRUE(contains(call({"--profile", rider, "human"}).out, "\tair drag factor\t\t:    1.250\n"));
    Call used = call({"--profile", rider, "--set", "useCalibration=on", "801"});
    EXPECT_TRUE(contains(used.out, "2.676 kgf")); // 1.25 times the 2.141 of the defaults
    EXPECT_EQ(call({"--set", "dragFactor=1.61", "801"}).code, 2);
    EXPECT_EQ(call({"--par", par, "--save", "--set", "dragFactor=0.8", "801"}).code, 0);
    EXPECT_TRUE(contains(call({"--par", par, "human"}).out, ":    0.800\n"));
}

TEST_F(ConsoleSettings, NamesWhatNoPageWouldTakeOfAProfile)
{
    std::string rider = in + "rider.pro";
    EXPECT_EQ(call({"save-profile", rider}).code, 0);
    Bytes bytes = bytesOf(rider);
    std::fill_n(bytes.begin() + profileHeaderSize + offsetof(ModelState, crankLength), sizeof(double), uint8_t{0});
    writeBytes(rider, bytes);
    for (const Call& refused : {call({"--profile", rider, "801"}), call({"load-profile", rider})}) {
        EXPECT_EQ(refused.code, 1);
        EXPECT_EQ(refused.out, "");
        EXPECT_EQ(refused.err, "torvane-cli: " + rider +
                                   ": crankLength is 0, its limits are 100 to 200 mm\n"
                                   "status : failed to read a file 'rider.pro'\n");
    }
}

TEST_F(ConsoleSettings, LeavesAParameterFileThatItCannotUse)
{
    std::string par = in + "a.par";
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
}

// With and without --save. Devices by a link of the test's own: a fault must not cost the machine its device.
TEST_F(ConsoleSettings, WritesOverNothingInPlaceOfAParameterFile)
{
    std::string rider = in + "b.pro", ride = put("c.fit", FitBuilder().file()), pipe = in + "pipe";
    call({"save-profile", rider});
    Bytes profile = bytesOf(rider);
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink("/dev/zero", in + "zero");
    std::filesystem::create_symlink("/proc/self/mem", in + "mem");
    const std::pair<std::string, std::string> cases[] = {
        {rider, "found a profile file in place of parameters as 'b.pro'"},
        {ride, "found a FIT file in place of parameters as 'c.fit'"},
        {pipe, "found a pipe in place of parameters as 'pipe'"},
        {in + "zero", "found a device in place of parameters as 'zero'"},
        {in + "mem", "failed to read 'mem'"},
    };
    for (const auto& [path, text] : cases)
        for (const char* option : {"--json", "--save"}) {
            Call refused = call({"--json", option, "--par", path, "human"});
            EXPECT_EQ(refused.code, 1) << option << ' ' << path;
            EXPECT_EQ(refused.err, "alert: " + text + "\n");
            EXPECT_EQ(refused.out, R"({"command": 501, "boxes": [{"title": "alert", "text": ")" + text +
                                       R"("}], "error": {"kind": "badFile", "text": ")" + text + "\"}}\n");
        }
    EXPECT_EQ(bytesOf(rider), profile);
    EXPECT_EQ(bytesOf(ride), FitBuilder().file());
    EXPECT_EQ(folder.count(), 5u);
    // What the command is to write there is no place for the defaults.
    std::string shared = in + "d.pro";
    EXPECT_EQ(call({"--par", shared, "--save", "save-profile", shared}).code, 2);
    EXPECT_TRUE(bytesOf(shared).empty());
}

} // namespace torvane
