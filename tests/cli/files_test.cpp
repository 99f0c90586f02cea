// Paths that tools are given: the source itself, folders, long names, names in other scripts.
#include "console_fixture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sys/stat.h>
#include <thread>

namespace torvane {
namespace {

using ConsoleFiles = ConsoleTest;

// By whatever name the source goes, in the words of the dialogs.
TEST_F(ConsoleFiles, WritesOverNoSource)
{
    std::string source = in + "ride.fit", two = in + "two.fit", both = in + "both_000.fit";
    Bytes ride = plainRide();
    const std::string names[] = {source, in + "./ride.fit", in + "link.fit", in + "hard.fit"};
    const std::vector<std::string> tools[] = {
        {"convert", "fitFormat=legacy", source},
        {"add", "addLap=1", source},
        {"exclude", "excludeSession=1", source},
        {"timestamp", "days=1", source},
        {"prepare", source},
        {"stroke", source},
        {"create", source},
        {"combine", two, source},
    };
    writeBytes(source, ride);
    writeBytes(two, plainRide(60, 1'000'001'000));
    std::filesystem::create_symlink("ride.fit", in + "link.fit");
    std::filesystem::create_symlink("ride.fit", in + "link.csv");
    std::filesystem::create_hard_link(source, in + "hard.fit");
    auto refused = [&](std::vector<std::string> arguments, const std::string& destination) {
        arguments.push_back(destination);
        Call answer = call(arguments);
        EXPECT_EQ(answer.err, "error: found a destination file which is a source file\n"
                              "torvane-cli: destination is " +
                                  destination + "\n")
            << arguments[0];
        EXPECT_EQ(answer.code, 2) << arguments[0] << " to " << destination;
        EXPECT_TRUE(sameBytes(bytesOf(source), ride)) << arguments[0] << " to " << destination;
    };
    for (const std::vector<std::string>& tool : tools)
        for (const std::string& name : names)
            refused(tool, name);
    refused({"dump", source}, in + "link.csv");
    EXPECT_EQ(call({"combine", source, two, both}).code, 0);
    refused({"divide", both}, in + "both.fit");
    EXPECT_EQ(call({"divide", both, both}).code, 0) << "its parts have names of their own";
}

// What stands where a command would write, and what is told of it; empty: it is written over.
TEST_F(ConsoleFiles, WritesOverItsOwnKindAlone)
{
    std::string ride = in + "ride.fit", two = in + "two.fit", target = in + "target";
    writeBytes(ride, plainRide());
    writeBytes(two, plainRide(60, 1'000'001'000));
    ASSERT_EQ(call({"combine", ride, two, in + "both.fit"}).code, 0);
    ASSERT_EQ(call({"save-profile", in + "rider.pro"}).code, 0);
    ASSERT_EQ(call({"--graph", in + "g.svg", "801"}).code, 0);
    Bytes fit = plainRide(), none, words = {'w'};
    std::string meter = TORVANE_CHECKOUT "/samples/rides/meter.fit";
    Bytes profile = bytesOf(in + "rider.pro"), svg = bytesOf(in + "g.svg");
    profile[4] = 1; // a reserved byte
    svg.push_back(' ');
    const std::tuple<std::vector<std::string>, std::string, Bytes, std::string> cases[] = {
        {{"combine", ride, two}, ".fit", fit, " exists"},
        {{"combine", ride, two}, ".fit", none, " exists"},
        {{"convert", "fitFormat=legacy", ride}, ".fit", fit, ""},
        {{"convert", "fitFormat=legacy", ride}, ".fit", none, ""},
        {{"convert", "fitFormat=legacy", ride}, ".fit", words, " is a file of another kind, not a FIT file"},
        {{"stroke", ride}, ".fit", svg, " is an SVG picture, not a FIT file"},
        {{"create", ride}, ".fit", profile, " is a profile file, not a FIT file"},
        {{"divide", in + "both.fit"}, "_001.fit", words, " is a file of another kind, not a FIT file"},
        {{"divide", in + "both.fit"}, "_001.fit", fit, ""},
        {{"dump", ride}, ".csv", words, ""},
        {{"dump", ride}, ".csv", fit, " is a FIT file, not a CSV table"},
        {{"save-profile"}, ".pro", profile, ""},
        {{"save-profile"}, ".pro", fit, " is a FIT file, not a profile file"},
        {{"801", "--graph"}, ".svg", svg, ""},
        {{"801", "--graph"}, ".svg", fit, " is a FIT file, not an SVG picture"},
        {{"ride", meter, "--page"}, ".svg", svg, " is an SVG picture, not an HTML page"},
        {{"801", "--graph"}, ".csv", words, " is a CSV table, not an SVG picture"},
    };
    for (auto [arguments, ending, present, told] : cases) {
        std::string path = target + ending;
        writeBytes(path, present);
        bool divides = arguments[0] == "divide";
        arguments.push_back(divides ? target + ".fit" : path);
        SCOPED_TRACE(testing::PrintToString(arguments) + told);
        Call first = call(arguments);
        EXPECT_EQ(first.code, told.empty() ? 0 : 2) << first.err;
        EXPECT_TRUE(told.empty() || first.err == "torvane-cli: " + path + told + "; --force writes over it\n")
            << first.err;
        EXPECT_EQ(bytesOf(path) == present, !told.empty());
        EXPECT_EQ(divides && std::filesystem::exists(target + "_000.fit"), divides && told.empty());
        arguments.insert(arguments.begin(), "--force");
        EXPECT_EQ(call(arguments).code, 0);
        for (const char* each : {".fit", ".csv", ".pro", ".svg", "_000.fit", "_001.fit"})
            std::filesystem::remove(target + each);
    }
    for (const char* option : {"--force", "--json"}) {
        EXPECT_EQ(call({"--profile", in + "rider.pro", option, "--graph", in + "rider.pro", "801"}).code, 2);
        EXPECT_EQ(call({"--profile", in + "rider.pro", option, "save-profile", in + "rider.pro"}).code, 0);
    }
    EXPECT_EQ(bytesOf(in + "rider.pro").size(), profile.size());
}

// As <(gunzip -c ride.fit.gz) gives it: read once, though the command reads more often.
TEST_F(ConsoleFiles, ReadsARideThroughAPipeAndWritesToNone)
{
    std::string pipe = in + "63", out = in + "out.fit";
    Bytes ride = plainRide();
    writeBytes(in + "ride.fit", ride);
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    auto piped = [&](const std::vector<std::string>& arguments) {
        std::thread writer([&] { writeBytes(pipe, ride); });
        Call answer = call(arguments);
        writer.join();
        return answer;
    };
    EXPECT_TRUE(contains(piped({"load", pipe}).out, "loaded the fit file named '63.fit'"));
    EXPECT_EQ(piped({"at-one-stroke", pipe, out}).code, 0);
    EXPECT_EQ(call({"at-one-stroke", in + "ride.fit", in + "same.fit"}).code, 0);
    EXPECT_EQ(bytesOf(out), bytesOf(in + "same.fit"));
    std::filesystem::rename(pipe, in + "63.fit");
    const std::vector<std::string> refused[] = {{"convert", "fitFormat=legacy", in + "ride.fit", in + "63.fit"},
                                                {"--force", "--graph", in + "63.fit", "801"}};
    for (const std::vector<std::string>& arguments : refused)
        EXPECT_EQ(call(arguments).err, "torvane-cli: " + in + "63.fit is a pipe, which no file can be written to\n");
    EXPECT_EQ(call({"--profile", in + "63.fit", "human"}).code, 1);
}

TEST_F(ConsoleFiles, TellsThatStandardOutputCannotBeWritten)
{
    std::ostringstream err;
    std::ofstream full("/dev/full");
    EXPECT_EQ(runConsole({"801"}, full, err), 1);
    EXPECT_TRUE(contains(err.str(), "torvane-cli: standard output cannot be written\n"));
}

// Whatever is printed of a name, by all that prints one.
TEST_F(ConsoleFiles, ShowsNothingOfANameThatSteersATerminal)
{
    std::string name = in + "\x1B[7m\n\xE2\x80\xAE", ride = name + ".fit", profile = name + ".pro";
    writeBytes(ride, plainRide());
    const std::vector<std::string> calls[] = {
        {"load", ride},
        {"load", name},
        {"compare", ride, ride},
        {"save-profile", profile},
        {"--profile", profile, "all-profile"},
        {"--profile", ride, "human"},
        {"--par", name, "human"},
        {"--graph", name + "/none", "801"},
        {"--into", name, "stroke", ride},
        {"--into", in, "stroke", ride},
        {"convert", "fitFormat=legacy", ride, name + "2"},
        {name},
    };
    for (const std::vector<std::string>& arguments : calls) {
        Call shown = call(arguments);
        std::string text = shown.out + shown.err;
        EXPECT_TRUE(contains(text, "?[7m??")) << arguments[0];
        EXPECT_FALSE(contains(text, "\x1B")) << arguments[0];
        EXPECT_FALSE(contains(text, "\xE2\x80\xAE")) << arguments[0];
    }
    EXPECT_TRUE(contains(call({"--json", "save-profile", profile}).out, "\\u001b[7m\\n\\u202e.pro"));
}

} // namespace
} // namespace torvane
