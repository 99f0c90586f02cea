// A sweep against the single calls that it stands for, and what it refuses.
#include "console_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>

namespace torvane {

namespace {

using Words = std::vector<std::string>;

std::vector<std::string> linesOf(const std::string& text)
{
    std::istringstream lines(text);
    std::vector<std::string> all;
    for (std::string line; std::getline(lines, line);)
        all.push_back(line);
    return all;
}

// Figures by name without their units, as they are written; "null" for none.
std::string valueOf(const std::string& json, const std::string& name)
{
    std::smatch found;
    std::regex member("\"" + name + "(_[^\"]*)?\": ([^,}]+)");
    return std::regex_search(json, found, member) ? found[2].str() : "null";
}

} // namespace

struct SweepTest : ConsoleTest {};

TEST_F(SweepTest, everyRowIsTheSingleCallToTheLastDigit)
{
    struct Case {
        Words fixed, swept;               // entries that stand, and those of each row
        std::vector<std::string> figures; // some of the command's
        std::vector<Words> values;        // of some rows, in the order of the sweep
    };
    call({"--par", in + "a.par", "--save", "801", "rideInclination=3"});
    const Case cases[] = {
        {{"power-and-velocity", "--par=" + in + "a.par"}, {"rideVelocity=20:30:10"}, {"power"}, {{"rideVelocity=30"}}},
        {{"power-and-velocity"},
         {"rideVelocity=20:60:0.1", "rideInclination=-8:8:4"},
         {"power", "airDragPower", "cadence", "kiloJoule"},
         {{"rideVelocity=28.2", "rideInclination=4"}, {"rideVelocity=60", "rideInclination=8"}}},
        {{"power-and-velocity", "rideTarget=velocity"},
         {"ridePower=100:400:150", "--set=torsoAngle=40:10:-15"},
         {"velocity", "humanDrag", "requiredPower"},
         {{"ridePower=100", "--set=torsoAngle=40"}, {"ridePower=400", "--set=torsoAngle=25"}}},
        {{"acceleration"}, {"rideEndVelocity=42:50:4"}, {"sectorTime", "distance"}, {{"rideEndVelocity=46"}}},
        {{"gear-combination", "theoryTarget=velocity"},
         {"theoryCadence=80:100:10"},
         {"velocity", "roadPower"},
         {{"theoryCadence=90"}}},
    };
    for (const Case& one : cases) {
        Words sweep = {"--json", "--jobs=3", "sweep"};
        sweep.insert(sweep.end(), one.fixed.begin(), one.fixed.end());
        std::vector<std::string> rows = linesOf(call(sweep, one.swept).out);
        for (const Words& values : one.values) {
            Words single = one.fixed;
            single.insert(single.end(), values.begin(), values.end());
            std::string answer = call({"--json"}, single).out;
            auto matches = [&](const std::string& row) {
                return std::ranges::all_of(values, [&](const std::string& value) {
                    size_t sign = value.rfind('=');
                    std::string name = value.substr(0, sign).substr(value.starts_with("--set=") ? 6 : 0);
                    return valueOf(row, name) == value.substr(sign + 1);
                });
            };
            auto row = std::ranges::find_if(rows, matches);
            ASSERT_NE(row, rows.end()) << single.back();
            EXPECT_TRUE(contains(*row, "\"outcome\": \"done\"")) << *row;
            for (const std::string& figure : one.figures)
                EXPECT_EQ(valueOf(*row, figure), valueOf(answer, figure)) << figure << " of " << single.back();
        }
    }
}

TEST_F(SweepTest, aCombinationWithoutAnAnswerIsARowAndTheRestGoesOn)
{
    Call made = call({"sweep", "power-and-velocity", "rideVelocity=210:190:-10", "--rows", in + "grid.csv"});
    std::vector<std::string> rows = linesOf(textOf(in + "grid.csv"));
    ASSERT_EQ(rows.size(), 4u) << made.err;
    EXPECT_EQ(made.code, 0);
    EXPECT_EQ(rows[0].find("rideVelocity_kph,velocity_kph,inclination_%,"), 0u);
    EXPECT_TRUE(rows[3].starts_with("190,190,0,") && rows[3].ends_with(",warning")) << rows[3];
    EXPECT_TRUE(rows[1].starts_with("210,,,") &&
                rows[1].ends_with(",rideVelocity: found too large value of a velocity"))
        << rows[1];
    EXPECT_EQ(std::ranges::count(rows[1], ','), std::ranges::count(rows[0], ','));
    Call pages = call({"sweep", "801", "--set=humanWeight=200:201:1"});
    EXPECT_TRUE(contains(pages.out, ",humanWeight: found too large value of a human weight\n"));
    Call none = call({"sweep", "deceleration", "rideStartVelocity=40", "rideEndVelocity=41:42:1"});
    EXPECT_EQ(none.code, 1);
    EXPECT_TRUE(contains(none.err, "no combination has an answer; the first: illegal initial variate value"));
}

TEST_F(SweepTest, tellsOnceWhichEntriesHaveNoEffect)
{
    Call told = call({"sweep", "801", "rideVelocity=20:40:10", "ridePower=90", "--set=bikeWeight=7:9:1"});
    std::vector<std::string> lines = linesOf(told.err);
    for (const char* name : {"ridePower", "bikeWeight"})
        EXPECT_EQ(std::ranges::count(lines, "note: " + std::string(name) + " has no effect with these choices"), 1)
            << told.err;
}

TEST_F(SweepTest, refusalsTeach)
{
    std::string ride = put("a.fit", plainRide());
    std::string steady = "power-and-velocity";
    const struct {
        Words words;
        const char* text;
    } cases[] = {
        {{steady, "rideVelocity=20:60"}, "rideVelocity takes a range FROM:TO:STEP, as 20:60:0.5, not '20:60'"},
        {{steady, "rideVelocity=20:60:1:2"}, "takes a range FROM:TO:STEP"},
        {{steady, "rideVelocity=20:inf:1"}, "takes a range FROM:TO:STEP"},
        {{steady, "rideVelocity=20:60:0"}, "a step of 0 leads nowhere"},
        {{steady, "rideVelocity=60:20:1"}, "from 60 to 20 leads a step below 0, not 1"},
        {{steady, "rideVelocity=0:100:1e-9"}, "a sweep has 10000000 combinations at most"},
        {{steady, "rideVelocity=0:100:0.01", "ridePower=0:100:0.1"}, "10001 x 1001 are 10011001 combinations"},
        {{steady, "rideVelocity=1:2:1", "rideVelocity=1:2:1"}, "rideVelocity has two ranges"},
        {{steady, "rideVelocity=20:40:10", "rideVelocity=30"}, "rideVelocity has a range and a value"},
        {{steady, "rideVelocity=20:40:10", "--set=torsoAngle=30", "--set=torsoAngle=10:20:5"},
         "torsoAngle has a range and a value"},
        {{steady, "rideVelocity=1:2:1", "ridePower=1:2:1", "--set=torsoAngle=10:20:5", "--set=humanWeight=60:70:5"},
         "sweep goes through 3 entries at most, not 4"},
        {{steady, "inclination=1:2:1"}, "no entry inclination; did you mean rideInclination?"},
        {{steady, "rideVelocity=20:60:1", "--set=torsAngle=10:20:5"}, "did you mean torsoAngle"},
        {{steady, "rideVelocity=40"}, "needs a range to go through: ENTRY=FROM:TO:STEP"},
        {{steady, "rideVelocity=20:60:1", "--graph", in + "a.svg"}, "sweep leaves a table alone"},
        {{"dump", ride, in + "b.csv", "x=1:2:1"}, "field-dump answers without figures"},
        {{"stroke", ride, in + "b.fit", "headWind=1:2:1"}, "no entry headWind"},
        {{"stroke", ride, in + "b.fit", "--set=windSpeed=1:2:1"}, "sweep writes no file but its table"},
        {{}, "sweep needs a command behind it"},
    };
    for (const auto& [words, text] : cases) {
        Call refused = call({"sweep"}, words);
        EXPECT_EQ(refused.code, 2) << text;
        EXPECT_TRUE(contains(refused.err, text));
        EXPECT_EQ(refused.out, "") << text;
    }
    EXPECT_FALSE(std::filesystem::exists(in + "b.fit"));
}

} // namespace torvane
