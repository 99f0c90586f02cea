#include "torvane/calculator.h"

#include "cli/console_fixture.h"
#include "core/json.h"
#include "core/parameter_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <tuple>

namespace torvane::library {

namespace {

const Question question = {.command = "power-and-velocity", .entries = {{"rideTarget", "power"}, {"rideVelocity", 33}}};

Calculator makeCalculator()
{
    return *Calculator::make();
}

std::string textOf(const Result<Answer>& result)
{
    return result ? result->upper + result->lower : "error: " + result.error().text;
}

class LibraryTest : public ConsoleTest {
protected:
    Calculator calculator = makeCalculator();
    const torvane::Bytes ride = plainRide();
};

struct Fault {
    const char* what;
    ErrorKind kind;
    const char* entry;
    std::function<Result<Answer>(Calculator&)> call;
};

} // namespace

// And none leaves a trace.
TEST_F(LibraryTest, TellsWhatIsWrongInAValue)
{
    torvane::Bytes cut = ride, broken = ride;
    cut.resize(cut.size() / 2);
    broken[broken.size() / 2] ^= 1;
    std::string profile = in + "profile.pro", garbage = put("garbage.pro", ride), missing = in + "no.pro";
    ASSERT_TRUE(calculator.saveProfile(profile));
    torvane::Bytes beyond = bytesOf(profile);
    std::fill_n(beyond.begin() + profileHeaderSize + offsetof(ModelState, crankLength), sizeof(double), uint8_t{0});
    std::string beyondPath = put("beyond.pro", beyond);
    ASSERT_TRUE(calculator.set({{"humanWeight", 71.25}}));
    auto set = [](Entries entries) { return [=](Calculator& c) { return c.set(entries); }; };
    auto ask = [](const char* command, Entries entries = {}) {
        return [=](Calculator& c) { return c.ask({.command = command, .entries = entries}); };
    };
    const Fault faults[] = {
        {"command", ErrorKind::unknownCommand, "", ask("about")},
        {"setting", ErrorKind::unknownEntry, "humanWeigt", set({{"humanWeigt", 70}})},
        {"entry of a page", ErrorKind::unknownEntry, "humanWeight", ask("801", {{"humanWeight", 70}})},
        {"number", ErrorKind::badValue, "humanWeight", set({{"humanWeight", "heavy"}})},
        {"choice", ErrorKind::badValue, "rideTarget", ask("801", {{"rideTarget", "glory"}})},
        {"limit", ErrorKind::beyondLimits, "rideVelocity", ask("801", {{"rideVelocity", 201}})},
        {"second of two", ErrorKind::beyondLimits, "windSpeed", set({{"humanHeight", 170}, {"windSpeed", 1000}})},
        {"check", ErrorKind::refused, "theoryPower", ask("cadence-theory", {{"theoryPower", 3000}})},
        {"no answer", ErrorKind::noAnswer, "", ask("acceleration", {{"ridePower", 1}})},
        {"no profile", ErrorKind::cannotRead, "", [&](Calculator& c) { return c.loadProfile(missing); }},
        {"garbage", ErrorKind::badFile, "", [&](Calculator& c) { return c.loadProfile(garbage); }},
        {"figure of a profile", ErrorKind::beyondLimits, "", [&](Calculator& c) { return c.loadProfile(beyondPath); }},
        {"folder", ErrorKind::cannotWrite, "", [&](Calculator& c) { return c.saveProfile(in); }},
        {"no ride", ErrorKind::incomplete, "", [](Calculator& c) { return c.analyseRide(); }},
        {"nothing to prepare", ErrorKind::incomplete, "", [](Calculator& c) { return c.prepareRide(); }},
        {"ride's file", ErrorKind::cannotRead, "", [&](Calculator& c) { return c.loadRide(in + "no.fit"); }},
        {"no bytes", ErrorKind::badFile, "", [&](Calculator& c) { return c.loadRide({}, "a.fit"); }},
        {"half a ride", ErrorKind::badFile, "", [&](Calculator& c) { return c.loadRide(cut, "a.fit"); }},
        {"broken ride", ErrorKind::badFile, "", [&](Calculator& c) { return c.loadRide(broken, "a.fit"); }},
    };
    std::string before = textOf(calculator.ask(question));
    for (const Fault& fault : faults) {
        SCOPED_TRACE(fault.what);
        const Result<Answer> result = fault.call(calculator);
        ASSERT_FALSE(result);
        EXPECT_EQ(static_cast<int>(result.error().kind), static_cast<int>(fault.kind)) << result.error().text;
        EXPECT_EQ(result.error().entry, fault.entry);
        EXPECT_NE(result.error().text, "");
        EXPECT_EQ(result.error().limits.has_value(), fault.entry[0] != '\0' && fault.kind == ErrorKind::beyondLimits);
        EXPECT_EQ(textOf(calculator.ask(question)), before);
    }
    EXPECT_EQ(calculator.ask({.command = "801", .entries = {{"rideVelocity", 201}}}).error().limits->most, 200);
}

TEST_F(LibraryTest, AnswersAsTheConsoleDoes)
{
    std::string path = put("ride.fit", ride), analysed = in + "analysed.fit";
    ASSERT_TRUE(calculator.set({{"humanWeight", 71.25}, {"windSpeed", 2}}));
    std::vector<std::string> front = {"--set", "humanWeight=71.25", "--set", "windSpeed=2"};
    EXPECT_EQ(textOf(calculator.ask({.command = "acceleration"})), call(front, {"acceleration"}).out);
    EXPECT_EQ(textOf(calculator.ask(question)), call(front, {"801", "rideTarget=power", "rideVelocity=33"}).out);
    ASSERT_TRUE(calculator.loadRide(path));
    std::filesystem::remove(path);
    const Result<Answer> answer = calculator.analyseRide({{"flatCourse", 1}});
    const Result<Bytes> file = calculator.analysedFile({{"flatCourse", 1}});
    put("ride.fit", ride);
    EXPECT_EQ(textOf(answer), call(front, {"analyse", "flatCourse=1", path}).out);
    ASSERT_EQ(call(front, {"create", "flatCourse=1", path, analysed}).code, 0);
    ASSERT_TRUE(file);
    EXPECT_EQ(*file, bytesOf(analysed));
    EXPECT_EQ(*calculator.rideFile(), ride);
    ASSERT_EQ(call({"prepare", path, analysed}).code, 0);
    ASSERT_TRUE(calculator.prepareRide());
    EXPECT_EQ(*calculator.rideFile(), bytesOf(analysed));
    for (auto [preparation, entry, least, most] : {std::tuple(Preparation{.gapLimit = 0}, "gapLimit", 1, 300),
                                                   {{.gapLimit = 301}, "gapLimit", 1, 300},
                                                   {{.jumpSpeed = 9.9}, "jumpSpeed", 10, 1000},
                                                   {{.jumpSpeed = 1001}, "jumpSpeed", 10, 1000}}) {
        Error error = calculator.prepareRide(preparation).error();
        EXPECT_EQ(error.entry, entry);
        EXPECT_EQ(error.limits->least, least) << error.text;
        EXPECT_EQ(error.limits->most, most) << error.text;
    }
    EXPECT_EQ(*calculator.rideFile(), bytesOf(analysed));
    EXPECT_TRUE(calculator.prepareRide({.gapLimit = 1, .jumpSpeed = 10}));
    EXPECT_TRUE(calculator.prepareRide({.gapLimit = 300, .jumpSpeed = 1000}));
}

TEST_F(LibraryTest, LeavesOutWhatWasMeasuredAsTheConsoleDoes)
{
    std::string meter = TORVANE_CHECKOUT "/samples/rides/meter.fit", prepared = in + "prepared.fit";
    for (const char* dropped : {"dropPower", "dropCadence"}) {
        ASSERT_EQ(call({"--force", "prepare", std::string(dropped) + "=on", meter, prepared}).code, 0);
        ASSERT_TRUE(calculator.loadRide(meter));
        const Result<Answer> answer = calculator.prepareRide(
            {.dropPower = dropped == std::string("dropPower"), .dropCadence = dropped == std::string("dropCadence")});
        EXPECT_EQ(*calculator.rideFile(), bytesOf(prepared)) << dropped;
        std::string field = dropped[4] == 'P' ? "power" : "cadence";
        for (const char* told : {" without a value in all records, left out\n", " of records, left out as asked\n"})
            EXPECT_TRUE(contains(answer->lower, "\t" + field + told));
        EXPECT_FALSE(contains(answer->lower, "one behind the other"));
    }
}

// The rows of a run without a table are the points of its curves. What fails says so in the report's words.
TEST_F(LibraryTest, GivesCurvesAndReasonsAsTheConsoleDoes)
{
    ASSERT_EQ(call({"power-and-velocity", "--rows", in + "rows.csv"}).code, 0);
    const Result<Answer> answer = calculator.ask({.command = "power-and-velocity", .graph = true});
    Bytes table = bytesOf(in + "rows.csv");
    std::istringstream rows(std::string(table.begin(), table.end()));
    std::string cell;
    std::getline(rows, cell);
    for (size_t point = 0; point < answer->graph->series[0].values.size(); ++point)
        for (const Series& series : answer->graph->series) {
            std::getline(rows, cell, &series == &answer->graph->series.back() ? '\n' : ',');
            EXPECT_NEAR(series.values[point], std::stod(cell), 0.001) << series.name << " at point " << point;
        }
    EXPECT_FALSE(std::getline(rows, cell));
    std::string why = calculator.ask({.command = "acceleration", .entries = {{"ridePower", 1}}}).error().text;
    EXPECT_TRUE(contains(call({"acceleration", "ridePower=1"}).out, why)) << why;
    EXPECT_TRUE(why.starts_with("acceleration which") && why.ends_with("too low cadence")) << why;
}

TEST_F(LibraryTest, OneCalculatorKnowsNothingOfAnother)
{
    std::string before = textOf(calculator.ask(question));
    Calculator other = makeCalculator();
    ASSERT_TRUE(other.set({{"humanWeight", 120}, {"expressGraph", "off"}}));
    ASSERT_TRUE(other.loadRide(ride, "ride.fit"));
    EXPECT_NE(textOf(other.ask(question)), before);
    EXPECT_EQ(textOf(calculator.ask(question)), before);
    EXPECT_FALSE(calculator.rideFile());
    Calculator moved = std::move(other);
    EXPECT_EQ(other.ask(question).error().kind, ErrorKind::incomplete); // NOLINT(bugprone-use-after-move): its promise
    EXPECT_TRUE(moved.analyseRide());
}

// As JSON, in the words of the console's help.
std::string toldOf(const EntryInfo& info)
{
    constexpr const char* kinds[] = {"number", "whole", "choice", "switch", "text"};
    JsonList object('{');
    object.member("name", jsonString(info.name));
    object.member("kind", jsonString(kinds[static_cast<size_t>(info.kind)]));
    if (!info.unit.empty())
        object.member("unit", jsonString(info.unit));
    if (info.least)
        object.member("least", jsonNumber(*info.least));
    if (info.most)
        object.member("most", jsonNumber(*info.most));
    JsonList choices('[');
    for (const std::string& choice : info.choices)
        choices.element(jsonString(choice));
    if (info.kind == EntryKind::onOff)
        object.member("choices", "[\"off\", \"on\"]");
    if (info.kind == EntryKind::choice)
        object.member("choices", choices.close());
    if (info.kind == EntryKind::choice)
        object.member("default", jsonString(info.choices.at(static_cast<size_t>(info.value))));
    else if (info.kind == EntryKind::onOff)
        object.member("default", info.value != 0 ? "\"on\"" : "\"off\"");
    else if (info.kind != EntryKind::text || info.value != 0)
        object.member("default", jsonNumber(info.value));
    if (!info.when.empty())
        object.member("when", jsonString(info.when));
    object.member("meaning", jsonString(info.meaning));
    std::string told = object.close();
    told.pop_back();
    return told;
}

TEST_F(LibraryTest, DescribesEveryEntryAsHelpDoes)
{
    std::string help = call({"help", "--json"}).out;
    auto compare = [&](const Result<std::vector<EntryInfo>>& infos) {
        for (const EntryInfo& info : *infos)
            EXPECT_TRUE(info.name == "predictWheel" || contains(help, toldOf(info))) << toldOf(info);
        return infos->size();
    };
    size_t pages = 1; // entry: the console has no name for the button of a wheel
    for (size_t at = help.find("\"pages\""); (at = help.find("\"kind\"", at)) != help.npos; ++at)
        ++pages;
    EXPECT_EQ(compare(calculator.settings()), pages);
    for (const char* command : {"power-and-velocity", "acceleration", "cadence-theory", "prepare", "plan"})
        compare(calculator.entriesOf(command));
}

TEST_F(LibraryTest, DescribesEveryEntryThatItTakes)
{
    std::string before = textOf(calculator.ask(question));
    for (const EntryInfo& info : *calculator.settings()) {
        EXPECT_NE(info.kind == EntryKind::choice, info.choices.empty()) << info.name;
        EXPECT_TRUE(info.name == "predictWheel" || calculator.set({{info.name, info.value}})) << info.name;
    }
    EXPECT_EQ(textOf(calculator.ask(question)), before);
}

TEST_F(LibraryTest, AnswersWholeGridsAsItAnswersOneQuestion)
{
    ASSERT_TRUE(calculator.set({{"torsoAngle", 18}, {"altitude", 900}}));
    const double slopes[] = {-1, 0, 3.5}, winds[] = {2.5}, speeds[] = {30 / 3.6, 40 / 3.6}, watts[] = {180, 260};
    auto powers = calculator.powersOverGrid({slopes, winds, speeds}, Stage::pedals, 2);
    auto velocities = calculator.velocitiesOverGrid({slopes, winds, watts}, Stage::pedals, 2);
    ASSERT_TRUE(powers && velocities);
    ASSERT_TRUE(calculator.set({{"windSpeed", 2.5}}));
    auto figure = [&](const char* target, const char* entry, double value, double slope, const char* name) {
        Result<Answer> answer =
            calculator.ask({.command = "power-and-velocity",
                            .entries = {{"rideTarget", target}, {entry, value}, {"rideInclination", slope}}});
        auto found = std::ranges::find(answer->figures, name, &Figure::name);
        return found->value;
    };
    for (size_t point = 0; point < powers->size(); ++point) {
        double slope = slopes[point / 2];
        SCOPED_TRACE(point);
        EXPECT_EQ((*powers)[point], figure("power", "rideVelocity", point % 2 == 0 ? 30 : 40, slope, "power"));
        EXPECT_EQ((*velocities)[point].velocity * 3.6,
                  figure("velocity", "ridePower", watts[point % 2], slope, "velocity"));
    }
    const double broken[] = {INFINITY};
    EXPECT_EQ(calculator.powersOverGrid({slopes, winds, broken}, Stage::road, 1).error().kind, ErrorKind::badValue);
}

// What an answer holds beside its text, file by file and word by word as the console tells it.
TEST_F(LibraryTest, TellsFilesNotesAndWhetherToMind)
{
    std::string one = put("one.fit", ride), other = put("other.fit", plainRide(90)), made = in + "made.fit";
    EXPECT_EQ(calculator.ask({.command = "prepare", .sources = {one}, .destination = made})->files,
              std::vector<std::string>{made});
    Question two = {.command = "prepare", .sources = {one, other}, .destination = made};
    EXPECT_EQ(calculator.ask(two).error().kind, ErrorKind::refused);
    std::string meter = TORVANE_CHECKOUT "/samples/rides/meter.fit", second = in + "second.fit";
    ASSERT_EQ(call({"prepare", meter, second}).code, 0);
    EXPECT_EQ(textOf(calculator.ask({.command = "compare", .sources = {meter, second}})),
              call({"compare", meter, second}).out);
    EXPECT_EQ(textOf(calculator.ask({.command = "all-profile"})), call({"all-profile"}).out);
    const Result<Answer> odd =
        calculator.ask({.command = "801", .entries = {{"rideTarget", "power"}, {"ridePower", 200}}});
    ASSERT_EQ(odd->notes.size(), 1u);
    EXPECT_TRUE(contains(odd->notes[0], "ridePower")) << odd->notes[0];
    EXPECT_EQ(odd->files, std::vector<std::string>());
    EXPECT_FALSE(odd->warned);
    Entries steep = {{"rideTarget", "maxi power"}, {"ridePower", 100}, {"rideInclination", 12}, {"rideEndVelocity", 3}};
    EXPECT_TRUE(calculator.ask({.command = "deceleration", .entries = steep})->warned);
    EXPECT_TRUE(contains(calculator.ask({.command = "power-and-velocty"}).error().text, "power-and-velocity"));
    ASSERT_TRUE(calculator.loadRide(one));
    for (bool graph : {false, true})
        EXPECT_EQ(calculator.ask({.command = "analyse-and-predict", .graph = graph})->graph.has_value(), graph);
    EXPECT_FALSE(calculator.loadRide(put("cut.fit", torvane::Bytes(ride.begin(), ride.end() - 20))));
    EXPECT_EQ(*calculator.rideFile(), ride) << "the one in hand stays";
    EXPECT_TRUE(writeFile(in + "written", ride));
    EXPECT_EQ(bytesOf(in + "written"), ride);
    EXPECT_EQ(writeFile(in, ride).error().kind, ErrorKind::cannotWrite);
}

} // namespace torvane::library
