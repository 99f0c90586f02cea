// The figures of an answer: whatever number a report prints outside of its tables is among them.
#include "console_fixture.h"

#include "core/units.h"
#include "model/constants.h"
#include "rides/made_ride.h"
#include "rides/made_ride_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <regex>

namespace torvane {

namespace {

// What stands between the keys `figures` and `units`.
std::vector<double> figuresOf(const std::string& json)
{
    std::vector<double> figures;
    size_t start = json.find("\"figures\": {"), end = json.find("\"units\": {");
    if (start == json.npos || end == json.npos)
        return figures;
    std::string own = json.substr(start, end - start);
    std::regex member("\": (-?[0-9][-+.e0-9]*)");
    for (std::sregex_iterator found(own.begin(), own.end(), member), none; found != none; ++found)
        figures.push_back(std::stod((*found)[1]));
    return figures;
}

// The report without its tables, names, times of day and durations.
std::string figuresTextOf(const std::string& report)
{
    std::string text = report;
    for (const char* table : {"process of", "cumulative data", "remarkable fields data", "sectors of a minute",
                              " gears, by", " climbs\n", " every "})
        text.resize(std::min(text.find(table), text.size()));
    for (const char* other :
         {"'[^']*'", "[0-9:]+h", "highest of [0-9]+ (s|min)", "[0-9]+,[A-Z][a-z]+,.*UTC", "\t(first|second)\t+:.*"})
        text = std::regex_replace(text, std::regex(other), "");
    return std::regex_replace(text, std::regex("#|Lv"), "");
}

// As it is, in kph, in G, in thousands.
bool isAmong(const std::vector<double>& figures, const std::string& number)
{
    size_t point = number.find('.');
    double step = point == number.npos ? 1 : std::pow(0.1, static_cast<double>(number.size() - point - 1));
    double shown = std::stod(number);
    constexpr double scales[] = {1, kphPerMps, 1 / standardGravity, 0.001};
    return std::ranges::any_of(figures, [&](double figure) {
        return std::ranges::any_of(scales,
                                   [&](double scale) { return std::abs(figure * scale - shown) <= 0.500001 * step; });
    });
}

} // namespace

TEST_F(ConsoleTest, FiguresHoldEveryNumberOfAReport)
{
    std::string ride = put("a.fit", plainRide(90)), rated = in + "rated.fit";
    ParameterBlock block = defaultBlock();
    call({"create", ride, rated});
    const std::vector<std::string> calls[] = {
        {"--set=useFtp=on", "801", "rideVelocity=90"},
        {"--set=motorLocation=hub", "--set=assistRangeMode[0]=1", "801", "rideTarget=1", "intensionCase=1"},
        {"802", "rideEndVelocity=80"},
        {"802", "rideTarget=gravity"},
        {"803", "rideTarget=distance", "rideDistance=60", "rideStartVelocity=50", "rideEndVelocity=10"},
        {"804"},
        {"804", "rideTarget=2"},
        {"804", "rideTarget=3"},
        {"805"},
        {"805", "inclinationLimit=time"},
        {"806", "rideTarget=2", "rideVelocity=60"},
        {"701"},
        {"702", "theoryTarget=1"},
        {"703", "theoryTarget=2"},
        {"509"},
        {"--set=motorLocation=hub", "--set=assistRangeMode[0]=1", "508"},
        {"--set=pelotonRatio=0.7", "512"},
        {"load", rated},
        {"--set=detectBraking=1", "analyse", ride},
        {"express", rated},
        {"prepare", ride, in + "b.fit"},
        {"compare", rated, rated},
        {"ride", put("long.fit", plainRide(400))},
        {"calibrate", put("metered.fit", fileOf(makeMeteredRide(modelOf(block), {}, {.seconds = 1800})))},
        {"plan", "start=8:30", "stops=2x5min", std::string(TORVANE_CHECKOUT "/samples/rides/pass.gpx")},
    };
    for (const std::vector<std::string>& arguments : calls) {
        std::string text = figuresTextOf(call(arguments).out), json = call({"--json"}, arguments).out;
        std::vector<double> figures = figuresOf(json);
        EXPECT_FALSE(figures.empty()) << arguments.back();
        EXPECT_EQ(json.find("null"), json.npos) << arguments.back();
        // Help tells of each of them.
        size_t word = 0;
        while (arguments[word].starts_with("--"))
            ++word;
        std::string help = call({"help", arguments[word]}).out, own = json.substr(0, json.find("\"units\": {"));
        std::regex key("\"(\\w+)\": ");
        own.erase(0, own.find("\"figures\": {") + 12);
        for (std::sregex_iterator found(own.begin(), own.end(), key), none; found != none; ++found)
            EXPECT_TRUE(std::regex_search(help, std::regex("\\b" + found->str(1) + "\\b")))
                << found->str(1) << " of " << help;
        std::regex number("(^|[^.A-Za-z0-9])(-?[0-9]+([.][0-9]+)?)");
        for (std::sregex_iterator found(text.begin(), text.end(), number), none; found != none; ++found)
            EXPECT_TRUE(isAmong(figures, (*found)[2])) << (*found)[2] << " of " << arguments.back() << text;
    }
    std::string json = call({"--json", "801"}).out;
    EXPECT_TRUE(contains(json, "\"units\": {\"velocity\": \"kph\", "));
    EXPECT_FALSE(contains(json, ": \"\""));
    std::string loaded = call({"--json", "load", rated}).out;
    EXPECT_TRUE(contains(loaded, R"("sessions": [{"sport": 2, "recordCount": 90, "startTime": 1631065600, )"));
    EXPECT_TRUE(contains(call({"help", "801"}).out, "  answers:                  velocity kph,"));
    EXPECT_FALSE(contains(call({"--json", "803", "rideStartVelocity=10", "rideEndVelocity=10"}).out, "figures"));
}

} // namespace torvane
