// Whole pages, read back. Their inputs hold a number of its own in each field; what the pages have to tell of these,
// the data of their charts included, stands in tests/page/pages and was worked out by hand: means and shares of a few
// numbers, degrees on a sphere of 6371 km, gears by the circumference of the wheel.
#include "core/base64.h"
#include "core/text.h"
#include "model/model.h"
#include "numbered_answers.h"
#include "page/comparison_page.h"
#include "page/course_page.h"
#include "page/energy_bar.h"
#include "page/ride_page.h"
#include "page/ride_series.h"
#include "page/run_page.h"
#include "page/thinning.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <regex>

namespace torvane {

namespace {

Model defaultModel()
{
    ParameterBlock block = defaultBlock();
    return modelOf(block);
}

std::vector<float> floatsOf(const std::string& base64)
{
    std::vector<uint8_t> bytes = base64Bytes(base64).value();
    std::vector<float> floats(bytes.size() / 4);
    std::memcpy(floats.data(), bytes.data(), floats.size() * 4);
    return floats;
}

// Of many each 250th.
std::string textOf(const std::vector<float>& floats)
{
    std::string text;
    for (size_t i = 0; i<floats.size(); i += floats.size()> 250 ? 250 : 1)
        text += std::isnan(floats[i]) ? " -" : formatText(" %.6g", floats[i] + 0.0);
    return text;
}

// What a page tells, a line for each of its parts: figures after >, texts after |, charts in [], series in {}.
std::string readable(const std::string& html)
{
    std::string text;
    size_t from = html.find("<h1>"), end = html.find("<script>");
    for (size_t at; (at = html.find(" data-f32=\"", from)) < end; from = html.find('"', at + 11) + 1)
        text += html.substr(from, at - from) + ">" +
                textOf(floatsOf(html.substr(at + 11, html.find('"', at + 11) - at - 11)));
    text += html.substr(from, end - from);
    for (size_t at; (at = text.find("<svg")) != text.npos;)
        text.erase(at, text.find("</svg>\n", at) + 7 - at);
    for (auto [part, told] : std::initializer_list<std::pair<const char*, const char*>>{
             {"</t[hd]><td class=\"n\">", " > "},
             {"</t[hd]><t[hd][^>]*>", " | "},
             {"</dt><dd>", ": "},
             {"<figure class=\"(\\w+)\"([^>]*)>", "[$1$2] "},
             {"<data class=\"series\" id=\"s-(\\w+)\"([^>]*)>([^<]*) hidden></data>", "{$1$2}$3"},
             {"data-", ""},
             {"<h2>", "## "},
             {"<[^>]*>", ""},
             {"\n\n+", "\n"}})
        text = std::regex_replace(text, std::regex(part), told);
    return text;
}

// But for where the power of a ride goes, which the model knows.
void expectPage(const std::string& html, const std::string& name)
{
    std::regex split("\\{(air|rolling|hill|acceleration|drivetrain|brakes) [^\n]*\n|predicted work[^#]*");
    std::string told = readable(html);
    expectTold(name == "ride" ? std::regex_replace(told, split, "") : told, "tests/page/pages/" + name + ".txt");
}

TEST(WholePage, ofTwoRides)
{
    RideComparison rides = comparedRides();
    expectPage(comparisonPage(rides, "in/one.fit", "two.fit.gz"), "comparison");
    for (CommonSecond& second : rides.common)
        second.metres = NAN;
    rides.whole.mean[0] = 0;
    std::string byTime = readable(comparisonPage(rides, "in/one.fit", "two.fit.gz"));
    EXPECT_NE(byTime.find("\n{time label=\"Time\" decimals=\"0\" format=\"time\"} 29 59 100 129\n"), byTime.npos)
        << byTime;
    expectUntold(byTime, {"Second to first", "distance"});
}

TEST(WholePage, ofAPlanAgainstAnother)
{
    Model model = defaultModel();
    ShownPlan other = numberedPlan(10);
    expectPage(coursePage(model, numberedPlan(0), {"a note"}, &other), "plan");
}

TEST(WholePage, tellsNothingOfWhatAPlanHasNot)
{
    expectUntold(coursePage(defaultModel(), plainPlan(), {}, nullptr),
                 {"With stops", "Stress", "owest cadence", "Against", "stretches alone", "n foot", "sprocket", "Track,",
                  "Climbs</caption>", ">At<", "Mended", "Motor", "climbs shaded"});
}

TEST(WholePage, aLongPlanKeepsItsPeaks)
{
    ShownPlan plan = plainPlan();
    plan.seconds.assign(100'000, PlannedSecond(plan.seconds[1]));
    for (uint32_t i = 0; i < plan.seconds.size(); ++i) {
        plan.seconds[i].distance = plan.seconds[i].time = i;
        plan.seconds[i].ridden = 1;
    }
    plan.seconds[12'345].power = 1500;
    std::string html = coursePage(defaultModel(), plan, {}, nullptr);
    size_t at = html.find("data-f32=\"", html.find("id=\"s-power\"")) + 10;
    std::vector<float> power = floatsOf(html.substr(at, html.find('"', at) - at));
    EXPECT_LE(power.size(), mostPagePoints);
    EXPECT_EQ(std::ranges::max(power), 1500);
}

// Six records 10 s apart, one of them excluded.
AnsweredRide numberedRide()
{
    AnsweredRide ride;
    for (uint32_t i = 0; i < 7; ++i) {
        GpsRecord r = {};
        r.sector = i == 3 ? 0 : 1;
        r.timestamp = 1'000'000'000 + 10 * i;
        r.latitude = 45 + 0.001 * i;
        r.longitude = 8 + 0.001 * (i % 2);
        r.altitude = 100 + 2 * i;
        r.inclination = 1.5 + i;
        r.distance = 80 * i;
        r.speed = 4 + i % 2 * 6;
        r.temperature = 20;
        r.heartRate = i == 2 ? 255 : 120 + i;
        r.cadence = i == 4 ? 0 : 62 - i % 2;
        r.power = 55 + 50 * i;
        BrakeRecord brakes = {};
        brakes.frontTemperature = 30 + i;
        brakes.rearTemperature = 40 + i;
        ride.analysis.brakes.push_back(brakes);
        ride.analysis.records.push_back(r);
        if (i != 5)
            ride.measured.rows.push_back(
                {r.timestamp, static_cast<uint16_t>(41 + 40 * i), static_cast<uint8_t>(r.cadence)});
    }
    ride.analysis.stats.summary.recordInterval = 10;
    ride.prepared.path = "in/numbered.fit";
    FieldPresence& holds = ride.prepared.presence;
    holds.altitudeFlags = holds.heartRateFlags = holds.positionFlags = presentInRecords;
    ride.answer = numberedHour();
    ride.answer.climbs = {{100, 200, 80, 20, {301, 311}, {}}};
    return ride;
}

TEST(WholePage, ofARide)
{
    Model model = defaultModel();
    expectPage(ridePage(model, numberedRide(), {"a note"}), "ride");
}

// Where the power goes is known by the model; the page tells it for each record and in sum.
TEST(WholePage, tellsWhereThePowerGoes)
{
    Model model = defaultModel();
    AnsweredRide ride = numberedRide();
    RideSeries series = rideSeriesOf(model, ride);
    std::vector<RowPowers> splits = powerSplitOf(model, ride.analysis, ride.prepared.summary);
    splits.erase(splits.begin() + 3);
    for (size_t sink = 0; sink < powerSinkCount; ++sink) {
        double joules = 0;
        const PageSeries& told = series.along[series.along.size() - powerSinkCount + sink];
        ASSERT_EQ(told.values.size(), splits.size()) << sink;
        for (size_t i = 0; i < splits.size(); ++i) {
            EXPECT_EQ(told.values[i], splits[i].sinks[sink]) << told.id << i;
            joules += splits[i].sinks[sink] * series.rows[i].seconds;
        }
        EXPECT_NEAR(series.kiloJoule[sink] * 1000, joules, 1e-6) << told.id;
    }
}

TEST(WholePage, ofASimulation)
{
    Figures figures;
    figures.values = {{"mean", "W", 201.5}, {"topSpeed", "", 15}};
    figures.groups = {
        {"lapTimes",
         {{{"lapTime", "s", 61}, {"power", "", 7}}, {{"lapTime", "s", 62}, {"power", "", 8}}, {{"lapTime", "s", 63}}}}};
    GraphSeries curves;
    curves.seriesNames = {"time(s)", "front brake(Cel)", "speed(kph)"};
    for (double value : {0.0, 21.0, 31.0, 2.0, 22.0, 32.0, 1.0, 23.0, 33.0, 3.0, 24.0, 34.0})
        curves.values.push_back(value);
    expectPage(runPage(Model(), "Braking", figures, &curves, {{"mass", "70 kg"}, {"slope", "3"}}), "run");
}

TEST(WholePage, barsAreAsLongAsTheirShare)
{
    HtmlPage page("Bars", "");
    EnergyPart parts[] = {{"Air", 300}, {"Brakes", 0.4}, {"Slope", 100}, {"Motor", -7}};
    addEnergy(page, "Energy", parts);
    std::string html = page.html(), told;
    std::regex what("<rect x=\"(\\d+)\" y=\"(\\d+)\" width=\"(\\d+)\"");
    for (std::sregex_iterator found(html.begin(), html.end(), what), none; found != none; ++found)
        told += found->format("$1 $2 $3;");
    EXPECT_EQ(told, "0 0 720;0 0 540;540 0 180;");
    EXPECT_EQ(html.find("italic"), html.npos);
    EXPECT_NE(html.find(">Slope 25 %<"), html.npos);
    EXPECT_NE(html.find("\"Share of the energy spent: Air 300 kJ Slope 100 kJ\""), html.npos);
}

} // namespace

} // namespace torvane
