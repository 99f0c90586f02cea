// Answers as pages, written by the console.
#include "console_fixture.h"

#include <filesystem>

namespace torvane {

namespace {

const std::string samples = TORVANE_CHECKOUT "/samples/rides/";

TEST_F(ConsoleTest, WritesAPageOfARideWhateverItsName)
{
    std::string ride = in + "<img src=x onerror=alert(1)>.fit", page = in + "page.html";
    std::filesystem::copy_file(samples + "meter.fit", ride);
    EXPECT_EQ(call({"ride", ride, "--page", page}).code, 0);
    EXPECT_EQ(call({"ride", ride, "--page", page}).code, 0) << "over its own kind";
    std::string html = textOf(page);
    EXPECT_TRUE(contains(html, "<title>&lt;img src=x onerror=alert(1)&gt;</title>"));
    EXPECT_FALSE(contains(html, "<img"));
    for (const char* part : {"id=\"s-measured30\"", "id=\"s-predicted\"", "id=\"s-easting\"", "data-kind=\"stack\"",
                             "data-kind=\"bars\"", ">Laps</caption>", ">Best mean powers</caption>", "vo2max"})
        EXPECT_TRUE(contains(html, part));
    Call same = call({"--force", "ride", ride, "--page", ride});
    EXPECT_TRUE(contains(same.err, "is read by this call"));
    EXPECT_NE(call({"ride", in + "none.fit", "--page", in + "none.html"}).code, 0);
    EXPECT_FALSE(std::filesystem::exists(in + "none.html"));
}

TEST_F(ConsoleTest, WritesPagesOfOtherAnswers)
{
    const std::pair<std::vector<std::string>, std::vector<std::string>> cases[] = {
        {{"plan", "pacing=plan", samples + "pass.gpx"},
         {"<h1>pass</h1>", "id=\"s-rearBrake\"", "Climbs</caption>", "neuromuscular power</th>"}},
        {{"compare", samples + "meter.fit", samples + "meter.fit"},
         {"data-diagonal", "data-fit=\"1 0\"", "data-label=\"meter (second)\""}},
        {{"pattern-braking", "rideTarget=intermittent braking", "rideEndVelocity=30", "brakingInclination=-7"},
         {"<h1>Pattern Braking</h1>", "id=\"s-frontBrake\"", "brakingInclination</th><td"}},
        {{"plan", "power=200", samples + "pass.gpx", "--against", "power=250", "--against", "pacing=three"},
         {"<h2>Against power=250, pacing=three</h2>", "id=\"s-later\""}},
        // Both in motion over the kilometre with the stop
        {{"plan", "power=200", "stops=1x10min", samples + "pass.gpx", "--against", "stops=1x20min"},
         {">With stops</th><td class=\"n\">00:53:37</td><td class=\"n\">01:03:37</td>",
          "<td class=\"n\">00:03:36</td><td class=\"n\">00:03:36</td>"}},
        {{"plan", "power=60", samples + "pass.gpx"}, {">On foot</th></tr>", " m on foot</td>"}},
        {{"801", "rideVelocity=40"},
         {"Figures of the answer</caption>", "rideVelocity</th>", ">40</text>"}}, // kph along
        {{"801", "rideTarget=velocity"}, {">40</text>", ">45</text>"}},           // the same: 500 W lead to 46
        {{"802", "rideTarget=maxi power"}, {">9</text>"}},                        // seconds of 10.8
    };
    for (auto [arguments, parts] : cases) {
        std::string page = in + arguments[0] + ".html";
        arguments.insert(arguments.end(), {"--page", page});
        Call told = call(arguments);
        SCOPED_TRACE(testing::PrintToString(arguments));
        EXPECT_EQ(told.code, 0) << told.err;
        std::string html = textOf(page);
        for (const std::string& part : parts)
            EXPECT_TRUE(contains(html, part));
    }
}

TEST_F(ConsoleTest, TellsWhyTheOtherPlanFails)
{
    Call told = call(
        {"plan", samples + "pass.gpx", "--against", "effort=time", "--against", "time=1", "--page", in + "p.html"});
    EXPECT_EQ(told.code, 1);
    EXPECT_TRUE(contains(told.err, "the plan with effort=time, time=1 fails\n"));
    EXPECT_TRUE(contains(told.err, "no power of a rider needs the time that is wanted\n"));
}

} // namespace

} // namespace torvane
