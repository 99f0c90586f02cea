// The console as its user meets it: what it takes, what it refuses and in which words, exit codes, output.
#include "console_fixture.h"

#include "cli/entry_help.h"
#include "command/command_table.h"
#include "command/session.h"
#include "core/parameter_file.h"
#include "core/text.h"
#include "figures.h"
#include "forms/form.h"
#include "version.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <utility>

namespace torvane {

using Console = ConsoleTest;

// And leaves no file, where it was to keep the defaults.
TEST_F(Console, RefusesAndTeaches)
{
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"801", "ridePower=3001"},
         "warning: found too large value of a power\n"
         "torvane-cli: ridePower takes 0 to 3000 W, not 3001\n"},
        {{"--set", "bpn=39", "801"},
         "warning: found too small value of the BPN\ntorvane-cli: bpn takes 40 to 100, not 39\n"},
        {{"--set", "thresholdSpeed=-1", "801"},
         "warning: found too small value of the speed\ntorvane-cli: thresholdSpeed takes 0 or more kph, not -1\n"},
        {{"701", "theoryTarget=cadence", "theoryPower=901"},
         "warning: found power tried to input over the maximal power\ntorvane-cli: theoryPower is 901 W\n"},
        {{"802", "rideTarget=0", "rideLegTime=garbage"}, "torvane-cli: rideLegTime takes a number, not 'garbage'\n"},
        {{"--set", "brakeMaterial[1][0]=wood", "801"},
         "torvane-cli: brakeMaterial[1][0] has no choice 'wood'; it takes: carbon | aluminum | stainless\n"},
        {{"convert", "/no/a.fit", "b.fit"}, "error: not existing a source file\ntorvane-cli: source is /no/a.fit\n"},
        {{"--", "--help"}, "torvane-cli: unknown command --help\n"},
        {{"801", "ridePowr=3"}, "torvane-cli: power-and-velocity has no entry ridePowr; did you mean ridePower?\n"},
        {{"timestamp", "days=50000", "a.fit", "b.fit"},
         "warning: found too large value of a timestamp offset\n"
         "torvane-cli: timestampOffset takes -2147483648 to 4294967295 sec, not 4320000000\n"},
        {{"801", "humanWeight=70"},
         "torvane-cli: humanWeight is an entry of a page: give it as --set humanWeight=...\n"},
        {{"--set", "ridePower=3", "801"},
         "torvane-cli: ridePower is an entry of a command, to be given behind it without --set\n"},
        {{"--set", "humanWeigth=70", "801"},
         "torvane-cli: no page has an entry humanWeigth; did you mean humanWeight or humanHeight?\n"},
        {{"--set", "bpn=70.5", "801"}, "torvane-cli: bpn takes a whole number, not '70.5'\n"},
        {{"--set", "predictWheel=both", "801"}, "torvane-cli: predictWheel takes front or rear, not 'both'\n"},
        {{"powr-and-velocity"}, "torvane-cli: unknown command powr-and-velocity; did you mean power-and-velocity?\n"},
        {{"302"}, "torvane-cli: about is a command of the desktop program\n"},
        {{"--jsn", "801"}, "torvane-cli: unknown option --jsn; did you mean --json?\n"},
        {{"--set", "72", "801"}, "torvane-cli: --set needs NAME=VALUE, not '72'\n"},
        {{"--save=1", "801"}, "torvane-cli: --save takes no value\n"},
        {{"--page", "a.html", "801", "--page", "b.html"}, "torvane-cli: --page is given twice\n"},
        {{"--jobs=2", "sweep", "801", "--jobs=2"}, "torvane-cli: --jobs is given twice\n"},
        {{"--graph", "g.svg", "701"}, "torvane-cli: cadence-theory has no graph\n"},
        {{"801", "--page", "-"}, "torvane-cli: --page writes a file, and not to standard output\n"},
        {{"--page", "p.html", "701"}, "torvane-cli: cadence-theory has no page\n"},
        {{"--graph", "g.svg", "--into", ".", "stroke", "a.fit"},
         "torvane-cli: --graph is for one ride, not for those of --into\n"},
        {{"801", "ride.fit"}, "torvane-cli: power-and-velocity takes no file; 'ride.fit' is no NAME=VALUE\n"},
        {{"801", "ride-power=3"}, "torvane-cli: power-and-velocity takes no file; 'ride-power=3' is no NAME=VALUE\n"},
        {{"combine", "a.fit"}, "torvane-cli: combine-fit-files takes A.fit B.fit [C.fit [D.fit [E.fit]]] OUT.fit\n"},
        {{"--into", "/no/such/folder", "stroke", "a.fit"}, "torvane-cli: there is no folder /no/such/folder\n"},
        {{"--jobs", "2", "stroke", "a.fit", "b.fit"},
         "torvane-cli: --jobs is for the rides of --into, and for sweep\n"},
        {{"--jobs=2x", "--into", ".", "stroke", "a.fit"},
         "torvane-cli: --jobs needs a number from 1 to 256, not '2x'\n"},
        {{"--resume", "stroke", "a.fit", "b.fit"}, "torvane-cli: --resume is for the rides of --into\n"},
        {{"--timeout", "0", "--into", ".", "ride"},
         "torvane-cli: --timeout needs a number of seconds above 0, 1000000 at most, not '0'\n"},
        {{"--into", ".", "--recursive", "ride"}, "torvane-cli: no files given\n"},
        {{"--stdin", "ride"}, "torvane-cli: --stdin answers as JSON; give --json as well\n"},
        {{"--stdin", "ride", "a.fit"}, "torvane-cli: --stdin takes no other file, no --into and no sweep\n"},
        {{"--graph", "g.svg", "--size", "159x480", "801"},
         "torvane-cli: --size needs WIDTHxHEIGHT from 160 to 10000 pixels, not '159x480'\n"},
        {{"add", "in.fit", "out.fit"}, "torvane-cli: add-messages needs one of addLap, addSession, addActivity\n"},
        {{"timestamp", "in.fit", "out.fit"},
         "torvane-cli: increase-timestamp needs days, hours, minutes or timestampOffset\n"},
        {{"setup-profile"}, "torvane-cli: no entries given; see torvane-cli help setup-profile\n"},
    };
    for (const auto& [arguments, err] : cases) {
        Call answer = call(arguments);
        SCOPED_TRACE(testing::PrintToString(arguments));
        EXPECT_EQ(answer.err, err);
        EXPECT_EQ(answer.out, "");
        EXPECT_EQ(answer.code, 2);
        EXPECT_EQ(call({"--par", in + "new.par", "--save"}, arguments).code, 2);
        EXPECT_EQ(folder.count(), 0u);
    }
    EXPECT_EQ(call({"--save", "801"}).err,
              "torvane-cli: --save needs --par FILE: there is no file to keep the defaults in\n");
}

// Of each command's and page's numbers, in view or hidden by a choice.
TEST_F(Console, WhateverNumberIsRefusedTheLimitsAreTold)
{
    std::string ride = put("a.fit", plainRide());
    int refused = 0;
    for (const Command& command : commandTable()) {
        std::vector<std::string> files(std::string_view(command.files.pattern).starts_with("A.fit") ? 3 : 2, ride);
        files.back() = in + "out.fit";
        for (const Form* form : command.entry == Entry::sheet ? formsOf(command.sheet) : formsOf(command)) {
            for (const Row& row : form->rows) {
                if (!row.name || (row.kind != RowKind::real && row.kind != RowKind::whole))
                    continue;
                for (double value : {row.least - 1, row.most + 1, -1e17, 1e17}) {
                    std::string entry = row.name + formatText("=%.0f", value);
                    std::vector<std::string> rest = {"--force", consoleName(command), entry};
                    Call made = call(rest, command.files.pattern[0] != '\0' ? files : std::vector<std::string>());
                    refused += made.code == 2;
                    EXPECT_TRUE(made.code != 2 || contains(made.err, " take")) << entry << ": " << made.err;
                }
            }
        }
    }
    EXPECT_GT(refused, 700);
}

TEST_F(Console, PrintsPaneAndStatusApart)
{
    Call answer = call({"power-and-velocity", "rideTarget=power", "rideVelocity=40"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.out.substr(0, 57), "\n power and velocity which calculation target is 'power'\n");
    EXPECT_EQ(answer.err, "status : power and velocity which calculation target is 'power'\n");
    for (const char* name : {"801", "power-and-velocity"})
        EXPECT_EQ(call({name, "rideTarget=0"}).out, answer.out) << name;
    call({"--set", "humanWeight=90", "--set", "windSpeed=5", "801", "rideInclination=5"});
    EXPECT_EQ(call({"801", "rideVelocity=40"}).out, answer.out) << "each call starts afresh";
}

TEST_F(Console, TakesChoicesByLabelPartAndIndex)
{
    std::string third = call({"803", "rideTarget=3"}).err;
    for (const char* typed : {"rideTarget=sector time", "rideTarget=Sector-Time"})
        EXPECT_EQ(call({"803", typed}).err, third) << typed;
    EXPECT_TRUE(contains(third, "sector time"));
    EXPECT_EQ(call({"802", "rideTarget=power"}).code, 2); // three factors have a power
    EXPECT_TRUE(contains(call({"--set", "exceptWheels=no", "--set", "bikeWeight=9.5", "502"}).out, "9.5 kg"));
}

TEST_F(Console, ToldThatAnEntryHasNoEffect)
{
    Call answer = call({"801", "ridePower=250"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.err.substr(0, answer.err.find('\n')), "note: ridePower has no effect with these choices");
    EXPECT_TRUE(contains(call({"--set", "brakeWeight[1][0]=90", "506"}).err, "brakeWeight[1][0] has no effect"));
    EXPECT_EQ(call({"--set", "brakeType[0]=1", "--set", "brakeWeight[1][0]=90", "506"}).err, "");
    EXPECT_TRUE(contains(call({"--set", "torsoAngle=50", "501"}).out, "torso angle\t\t\t:   30.0 deg"));
    EXPECT_TRUE(contains(call({"--set", "torsoAngle=50", "--set", "position=0", "501"}).out, ":   50.0 deg"));
    // Disabled, and yet their last entry counts.
    const std::vector<std::string> counting[] = {
        {"805", "rideStartVelocity=20"},
        {"501", "--set=ftp=300"},
        {"702", "torqueOrForce=force", "theoryTorque=0"},
        {"804", "--set=airPressureSource=1", "--set=temperature=-20"},
        {"801", "rideTarget=velocity", "ridePower=3000", "--set=motorLocation=1", "--set=assistRangeSpeed[1]=90"},
    };
    for (std::vector<std::string> arguments : counting) {
        SCOPED_TRACE(arguments.back());
        Call counted = call(arguments);
        EXPECT_FALSE(contains(counted.err, "note"));
        arguments.pop_back();
        EXPECT_NE(counted.out, call(arguments).out);
    }
    answer = call({"--par", in + "a.par", "--save", "801", "ridePower=250"});
    EXPECT_EQ(answer.err.find("note"), answer.err.npos) << "it becomes the default";
}

TEST_F(Console, KeepsWhatWasNotTypedToTheLastBit)
{
    std::string par = in + "my.par";
    Session session;
    ParameterBlock block = session.saved, after;
    block.humanHeight = 171.23456789;
    block.rideInclination[0] = 1.0 / 3;
    block.initialValueMode = 1;
    ASSERT_TRUE(saveParameters(session.screens, par, block));
    EXPECT_EQ(call({"--par", par, "--save", "--set", "humanWeight=72", "801", "rideVelocity=30"}).code, 0);
    ASSERT_EQ(readParameters(par, after), ParametersRead::ok);
    expectFigures({after.humanHeight, after.humanWeight, after.rideInclination[0], after.rideVelocity[0]},
                  {171.23456789, 72, 1.0 / 3, 30 / 3.6});
    // Neither a call without --save nor a refusal changes the file.
    Bytes before = bytesOf(par);
    EXPECT_EQ(call({"--par", par, "--set", "humanWeight=90", "801", "rideVelocity=20"}).code, 0);
    EXPECT_EQ(bytesOf(par), before);
    EXPECT_EQ(call({"--par", par, "--save", "--set", "humanWeight=80", "801", "rideVelocity=900"}).code, 2);
    EXPECT_EQ(bytesOf(par), before);
}

// A call after the other with one parameter file: what the first saves is what the next opens with.
TEST_F(Console, OpensWithWhatWasSaved)
{
    std::string ride = put("a.fit", plainRide());
    const std::tuple<std::vector<std::string>, std::vector<std::string>, const char*> cases[] = {
        {{"801", "rideTarget=velocity"}, {"801"}, "calculation target is 'velocity'"},
        {{"702", "theoryTarget=power"}, {"702"}, "calculation target is 'power'"},
        {{"802", "rideStartVelocity=36"}, {"802", "rideStartVelocity=0"}, "acceleration"}, // from a kick of 0
        {{"--set", "ftp=50", "human"}, {"--set", "humanWeight=70", "human"}, "70.0 kg"},   // not in use
        {{"703", "frontTooth=52", "useMissionProfile=off"}, {"703", "useMissionProfile=on"}, ":   51\n"},
        {{"906", "convertEnabled=off", "convertSpeedUnit=on", ride, in + "b.fit"},
         {"help", "906"},
         "convertSpeedUnit          off | on (default on)\n"},
    };
    for (const auto& [saved, next, shown] : cases) {
        SCOPED_TRACE(testing::PrintToString(saved));
        std::string par = in + saved[0] + ".par";
        EXPECT_EQ(call({"--par", par, "--save"}, saved).code, 0);
        Call answer = call({"--par", par}, next);
        EXPECT_EQ(answer.code, 0) << answer.err;
        EXPECT_TRUE(contains(answer.out, shown));
    }
}

TEST_F(Console, PrintsOneJsonObject)
{
    Call answer = call({"--json", "--set", "bandGraphPowerVelocity=1", "801", "rideVelocity=40"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.err, "");
    EXPECT_EQ(answer.out.substr(0, 75),
              "{\"command\": 801, \"result\": 0, \"status\": \"status : power and velocity which ");
    EXPECT_TRUE(contains(answer.out, "\"lower\": \"\\n power and velocity which calculation target is 'power'\\n\\t"));
    EXPECT_TRUE(contains(answer.out, "\"graph\": {\"kind\": 3, \"series\": [\""));
    EXPECT_EQ(answer.out.substr(answer.out.size() - 3), "}}\n");
}

// Whatever goes wrong, under --json there is one object, and it says what.
TEST_F(Console, TellsErrorsAsData)
{
    std::string none = in + "none.fit", bad = put("bad.fit", {1, 2, 3});
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"--set", "bpn=39", "801"},
         "\"kind\": \"beyondLimits\", \"entry\": \"bpn\", \"limits\": {\"least\": 40, \"most\": 100}, "
         "\"given\": \"39\", \"text\": \"found too small value of the BPN\""},
        {{"802", "rideLegTime=2e3"},
         "\"kind\": \"beyondLimits\", \"entry\": \"rideLegTime\", \"limits\": {\"least\": 0, \"most\": 1000, \"unit\": "
         "\"sec\"}, \"given\": \"2e3\""},
        {{"801", "rideVelocity=fa\"st"},
         "\"kind\": \"badValue\", \"entry\": \"rideVelocity\", \"given\": \"fa\\\"st\""},
        {{"801", "humanWeight=70"}, "\"kind\": \"unknownEntry\", \"entry\": \"humanWeight\""},
        {{"nothing"}, "{\"error\": {\"kind\": \"unknownCommand\""},
        {{"--jsn", "801"}, "{\"error\": {\"kind\": \"wrongUsage\""},
        {{"load"}, "\"kind\": \"wrongUsage\""},
        {{}, "{\"error\": {\"kind\": \"wrongUsage\", \"text\": \"no command given\"}}"},
        {{"help", "nothing"}, "\"kind\": \"unknownCommand\""},
        {{"load", none}, "\"kind\": \"cannotRead\", \"text\": \"failed to open the file 'none.fit'\""},
        {{"load", bad}, "\"kind\": \"badFile\""},
        {{"convert", none, in + "b"}, "\"kind\": \"refused\", \"entry\": \"source\", \"given\": \"" + none + "\""},
        {{"--profile", none, "801"}, "\"kind\": \"cannotRead\", \"text\": \"" + none + " cannot be opened\""},
        {{"--par", none, "801"}, "\"kind\": \"cannotRead\", \"text\": \"there is no file " + none + "\""},
        {{"--par", in, "801"}, "\"kind\": \"cannotRead\", \"text\": \"" + in + " is a folder\""},
        {{"add", bad, in + "b.fit"}, "\"kind\": \"incomplete\""},
        {{"803", "rideStartVelocity=10", "rideEndVelocity=10"}, "\"kind\": \"noAnswer\""},
        {{"save-profile", in + "no/such/p.pro"}, "\"kind\": \"cannotWrite\""},
    };
    for (const auto& [arguments, told] : cases) {
        Call answer = call({"--json"}, arguments);
        EXPECT_NE(answer.code, 0) << told;
        EXPECT_TRUE(contains(answer.out, told));
        EXPECT_EQ(std::ranges::count(answer.out, '\n'), 1) << answer.out;
    }
}

TEST_F(Console, DrawsTheGraphThatIsAskedFor)
{
    EXPECT_EQ(call({"--graph", in + "g.svg", "801", "rideVelocity=40"}).code, 0);
    std::string drawn = textOf(in + "g.svg");
    EXPECT_TRUE(contains(drawn, "<svg"));
    EXPECT_EQ(call({"--graph", in + "no/such/g.svg", "801"}).code, 1);
    Call without = call({"--json", "--graph", in + "g.svg", "803", "rideStartVelocity=10", "rideEndVelocity=10"});
    EXPECT_EQ(without.code, 1);
    EXPECT_TRUE(contains(without.err, "no graph: '" + in + "g.svg' is not of this run\n"));
    EXPECT_TRUE(contains(without.out, "g.svg' is not of this run\"}"));
    EXPECT_EQ(textOf(in + "g.svg"), drawn);
}

TEST_F(Console, WritesTheTableAsRows)
{
    std::string ride = put("a.fit", plainRide(90)), table = in + "t.csv";
    auto rowsOf = [&](const std::vector<std::string>& arguments) {
        EXPECT_EQ(call({"--rows", table}, arguments).code, 0) << arguments[0];
        return textOf(table);
    };
    std::string plain = rowsOf({"express", ride}), predicted = rowsOf({"analyse", ride});
    std::string head = "time,sector,latitude_deg,longitude_deg,heading_deg,altitude_m,inclination_%,speed_kph,";
    EXPECT_EQ(plain.substr(0, head.size()), head);
    EXPECT_EQ(plain.substr(0, plain.find('\n')), predicted.substr(0, predicted.find('\n')));
    EXPECT_TRUE(contains(plain, "\n2021-09-08T01:46:40Z,1,"));
    EXPECT_EQ(plain.substr(plain.size() - 9), ",,,,,,,,\n") << "from the temperature on it has nothing";
    EXPECT_EQ(predicted.substr(predicted.size() - 18), ",,,,cadence power\n");
    Call piped = call({"--rows", "-", "analyse", ride});
    EXPECT_EQ(piped.out, predicted);
    EXPECT_TRUE(contains(call({"--json", "--rows", table, "802"}).out, "\"outputs\": [\"" + table + "\"]"));
    EXPECT_TRUE(contains(piped.err, "analysed the fit file"));
    for (const char* run : {"801", "802", "804", "806"}) {
        SCOPED_TRACE(run);
        std::string rows = rowsOf({run});
        EXPECT_GT(std::ranges::count(rows, '\n'), 50);
        for (size_t end = rows.find('\n'), commas = static_cast<size_t>(std::ranges::count(rows.substr(0, end), ','));
             end + 1 < rows.size();) {
            size_t next = rows.find('\n', end + 1);
            EXPECT_EQ(std::ranges::count(rows.substr(end, next - end), ','), commas) << rows.substr(end, next - end);
            end = next;
        }
    }
    EXPECT_TRUE(contains(rowsOf({"804", "rideTarget=3"}), "\n1,"));
    const std::vector<std::string> refused[] = {
        {"--json", "--rows=-", "802"}, {"--rows", table, "701"}, {"--rows", table, "--into", in, "stroke", ride}};
    for (const std::vector<std::string>& arguments : refused)
        EXPECT_EQ(call(arguments).code, 2) << testing::PrintToString(arguments);
    Bytes before = bytesOf(table);
    EXPECT_EQ(call({"--rows", table, "803", "rideStartVelocity=10", "rideEndVelocity=10"}).code, 1);
    EXPECT_EQ(bytesOf(table), before);
    EXPECT_EQ(call({"--rows", ride, "analyse", ride}).code, 2);
    EXPECT_EQ(call({"--rows", in + "no/such/t.csv", "802"}).code, 1);
}

TEST_F(Console, WorksOnRides)
{
    std::string ride = put("Fahrt \xC3\xBC.fit", plainRide());
    Call loaded = call({"load", ride});
    EXPECT_EQ(loaded.code, 0);
    EXPECT_TRUE(contains(loaded.out, "record data counted 60"));
    EXPECT_EQ(loaded.err, "status : success to load GPS data from 'Fahrt \xC3\xBC.fit'\n");
    Call created = call({"--json", "create", ride, in + "out", "analysePowerBase=hub"});
    EXPECT_EQ(created.code, 0);
    EXPECT_TRUE(contains(created.out, "\"outputs\": [\"" + in + "out.fit\"]"));
    // The file now holds both, so there is nothing left to predict.
    Call again = call({"analyse", in + "out.fit"});
    EXPECT_EQ(again.code, 2);
    EXPECT_EQ(again.err, "warning: no need to analyse and predict cause power and cadence are already existing\n");
}

TEST_F(Console, WorksThroughManyRides)
{
    std::string out = in + "out";
    std::filesystem::create_directories(out);
    std::string a = put("a.fit", plainRide()), b = put("b.fit", {}), c = put("c.fit", plainRide(80));
    std::string longest = put("l.fit", plainRide(9000)); // the first one that ends is not the first one given
    std::vector<std::string> rides = {"--into", out, "at-one-stroke", longest, a, b, c};
    Call answer = call({"--jobs", "1"}, rides), many = call({"--jobs", "3"}, rides);
    EXPECT_EQ(many.out, answer.out);
    EXPECT_EQ(many.err, answer.err);
    EXPECT_EQ(answer.code, 1);
    EXPECT_TRUE(contains(answer.err, "failed: " + b + "\n"));
    for (const char* name : {"/a.fit", "/b.fit", "/c.fit"})
        EXPECT_EQ(std::filesystem::exists(out + name), name[1] != 'b') << name;
    std::string oneByOne;
    for (const std::string& ride : {longest, a, b, c})
        oneByOne += call({"at-one-stroke", ride, in + "single"}).out;
    EXPECT_EQ(answer.out, oneByOne);
    Call json = call({"--json", "--into", out, "at-one-stroke", "predictCadence=0", a, b, c});
    EXPECT_EQ(json.code, 1);
    EXPECT_EQ(std::ranges::count(json.out, '\n'), 3);
    EXPECT_EQ(json.out.find("{\"command\": 910, \"source\": \"" + a + "\", \"result\": "), 0u) << json.out;
    EXPECT_TRUE(contains(json.out, "\n{\"command\": 910, \"source\": \"" + b + "\", "));
    EXPECT_TRUE(contains(json.out, "\"error\": {\"kind\": "));
    for (std::string itself : {in, out + "/../"})
        EXPECT_EQ(call({"--into", itself, "at-one-stroke", a}).err,
                  "torvane-cli: " + itself + "a.fit is read by this call, and not written over\n");
    std::filesystem::create_symlink(c, out + "/d.fit"); // a ride whose turn has not come
    Call over = call({"--force", "--into", out, "timestamp", "days=1", put("d.fit", plainRide()), c});
    EXPECT_EQ(over.err, "torvane-cli: " + out + "/d.fit is read by this call, and not written over\n");
    EXPECT_EQ(over.code, 2);
    std::filesystem::remove(out + "/d.fit");
    std::filesystem::create_symlink("a.fit", out + "/d.fit"); // two names of one file
    Call twice = call({"--force", "--into", out, "timestamp", "days=1", a, in + "d.fit"});
    EXPECT_TRUE(contains(twice.err, "two files would be written to " + out + "/d.fit"));
    EXPECT_EQ(twice.code, 1);
    EXPECT_EQ(call({"--into", out, "at-one-stroke", a, a}).code, 2);
    EXPECT_EQ(call({"--into", out, "combine", a, c}).code, 2);
}

TEST_F(Console, RunsTheToolsAndTellsWhatTheyDid)
{
    std::string a = put("a.fit", plainRide()), b = put("b.fit", plainRide(60, 1'000'001'000));
    std::filesystem::create_directories(in + "taken.fit");
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{"combine", a, b, in + "both.fit"}, "success to combine source fit files to 'both.fit'"},
        {{"divide", in + "both.fit", in + "part.fit"}, "success to divide a fit file to 'part_000.fit, part_001.fit'"},
        {{"add", "addLap=1", a, in + "lap.fit"}, "success to add messages to 'lap.fit'"},
        {{"exclude", "excludeSession=1", a, in + "bare.fit"}, "success to add messages to 'bare.fit'"},
        {{"convert", "fitFormat=legacy", a, in + "old.fit"}, "success to convert a fit file to 'old.fit'"},
        {{"convert", "fitFormat=legacy", a, in + "自転車 🚲 b\\c"},
         "success to convert a fit file to '自転車 🚲 b\\c.fit'"},
        {{"combine", a, b, in + "taken.fit"}, "failed to combine fit files to 'taken.fit'"},
        {{"add", "addLap=1", a, in + "taken.fit"}, "failed to add messages to a fit file 'a.fit'"},
        {{"convert", "fitFormat=legacy", a, in + "taken.fit"}, "failed to convert a fit file 'a.fit'"},
        {{"convert", "fitFormat=legacy", a, in + std::string(300, 'n') + ".fit"},
         "failed to convert a fit file 'a.fit'"},
    };
    for (const auto& [arguments, text] : cases) {
        Call answer = call(arguments);
        EXPECT_EQ(answer.err, std::string("status : ") + text + "\n");
        EXPECT_EQ(answer.code, text[0] == 's' ? 0 : 1) << text;
    }
    EXPECT_EQ(bytesOf(in + "old.fit").size(), bytesOf(a).size() - 2);
    Call refused = call({"--json", "convert", "fitFormat=modern", a, in + "b.fit"});
    EXPECT_EQ(refused.code, 2);
    EXPECT_EQ(refused.err, "warning: no need to convert cause the source file is formated as modern format\n"
                           "torvane-cli: source is " +
                               a + "\n");
    FitBuilder halves;
    halves.define(0, 0, {{0, 1, 0}}).message(0, {4}).define(1, 20, {{253, 4}});
    halves.message(1, {9}).define(1, 20, {{253, 4}});
    EXPECT_EQ(call({"divide", put("halves.fit", halves.file()), in + "half.fit"}).err,
              "warning: 1 of 2 divided files have no record message: 001\n"
              "status : success to divide a fit file to 'half_000.fit, half_001.fit'\n");
    // A time may be told in parts; the complement leads back.
    call({"timestamp", "days=1", "minutes=1", a, in + "c.fit"});
    call({"timestamp", "timestampOffset=86460", a, in + "d.fit"});
    call({"timestamp", "timestampOffset=-86460", in + "d.fit", in + "e.fit"});
    call({"timestamp", "timestampOffset=4294880836", in + "d.fit", in + "f.fit"});
    EXPECT_EQ(bytesOf(in + "c.fit"), bytesOf(in + "d.fit"));
    EXPECT_EQ(bytesOf(in + "e.fit"), bytesOf(in + "f.fit"));
    EXPECT_NE(bytesOf(in + "e.fit"), bytesOf(in + "d.fit"));
    EXPECT_EQ(call({"dump", a, in + "a"}).code, 0);
    EXPECT_TRUE(std::filesystem::exists(in + "a.csv"));
}

TEST_F(Console, HelpCoversEveryEntry)
{
    std::string all;
    for (const char* topic :
         {"profile", "condition", "preference", "701", "702", "703", "801", "802", "803", "804", "805", "806", "902",
          "903",     "904",       "905",        "906", "907", "908", "909", "910", "991", "992", "996", "997"}) {
        Call help = call({"help", topic});
        EXPECT_EQ(help.code, 0) << topic;
        all += help.out;
    }
    for (const Form* form : allForms())
        for (const Row& row : form->rows) {
            if (row.name && row.kind != RowKind::path) {
                EXPECT_TRUE(contains(all, "  " + std::string(row.name) + " ")) << form->id << " " << row.name;
            }
        }
    for (const char* line : {"  humanWeight               30 to 200 kg (default 60)\n",
                             "  ridePowerBase             pedaling | crank | hub | thrust (default pedaling)\n",
                             "  flatCourse                off | on (default off)\n",
                             "  frontTooth                28 to 70 (default 52) - with useMissionProfile off\n",
                             "  brakingInclination        -100 to 100 % (default 0 or -7)\n",
                             "also: analyse, predict\n", "torvane-cli field-dump IN.fit OUT.csv\n"})
        EXPECT_TRUE(contains(all, line));
    EXPECT_TRUE(contains(call({"--help"}).out, "801  power-and-velocity"));
    EXPECT_TRUE(contains(call({"help", "pattern-braking"}).out,
                         "  intervalDistance          0 to 100000 m (default 300)\n"
                         "                            the brakes are used once in every such way\n"
                         "                            counts with rideTarget = intermittent braking\n"));
    EXPECT_TRUE(contains(call({"help", "--json", "pattern-braking"}).out,
                         "\"default\": 300, \"meaning\": \"the brakes are used once in every such way\", "
                         "\"countsWithAny\": [{\"entry\": \"rideTarget\", \"values\": [\"intermittent braking\"]}]}"));
    std::string json = call({"help", "--json", "801"}).out;
    EXPECT_TRUE(contains(json, R"({"name": "rollingPower", "unit": "W"}, )"));
    EXPECT_EQ(std::ranges::count(json, '\n'), 1);
    EXPECT_TRUE(contains(call({"help", "--json"}).out, R"({"name": "--version", "meaning": "tell the version"}])"));
    EXPECT_EQ(call({"--version"}).out, "torvane-cli " TORVANE_VERSION "\n");
}

} // namespace torvane
