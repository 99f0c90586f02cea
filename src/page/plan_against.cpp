#include "page/plan_against.h"

#include "core/text.h"
#include "core/units.h"
#include "page/page_texts.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

// Where in the seconds of a plan a place lies: the second before, and the share of the way to the next one. Of a stop
// its end.
struct Between {
    size_t before;
    double share;
};

Between placeIn(const std::vector<PlannedSecond>& seconds, double metres)
{
    auto next = std::ranges::upper_bound(seconds, metres, {}, &PlannedSecond::distance);
    if (next == seconds.begin() || next == seconds.end())
        return {next == seconds.begin() ? 0 : seconds.size() - 1, 0};
    auto before = next - 1;
    return {static_cast<size_t>(before - seconds.begin()),
            (metres - before->distance) / (next->distance - before->distance)};
}

template <class Take>
double valueAt(const std::vector<PlannedSecond>& seconds, double metres, Take take)
{
    Between place = placeIn(seconds, metres);
    double value = take(seconds[place.before]);
    return place.share > 0 ? value + place.share * (take(seconds[place.before + 1]) - value) : value;
}

double timeOf(const PlannedSecond& second)
{
    return second.time;
}

// Places evenly along the course that both plans have.
std::vector<double> placesOf(const ShownPlan& plan, const ShownPlan& against)
{
    constexpr size_t count = 2000;
    double end = std::min(plan.seconds.back().distance, against.seconds.back().distance);
    std::vector<double> places;
    for (size_t i = 0; i <= count; ++i)
        places.push_back(end * static_cast<double>(i) / count);
    return places;
}

struct Column {
    const char *id, *label, *unit;
    double (*value)(const PlannedSecond&);
};

constexpr Column columns[] = {
    {"Power", "power", "W", [](const PlannedSecond& s) { return s.power; }},
    {"Speed", "speed", "kph", [](const PlannedSecond& s) { return s.speed * kphPerMps; }},
};

void addBoth(HtmlPage& page, const Column& column, const std::vector<double>& places, const ShownPlan& plan,
             const ShownPlan& against)
{
    std::vector<std::string> ids;
    for (const ShownPlan* each : {&plan, &against}) {
        bool first = each == &plan;
        PageSeries series = {std::string(first ? "one" : "other") + column.id,
                             std::string(first ? "This plan's " : "The other's ") + column.label,
                             column.unit,
                             1,
                             {}};
        for (double place : places)
            series.values.push_back(valueAt(each->seconds, place, column.value));
        ids.push_back(series.id);
        page.add(std::move(series));
    }
    page.chart({.title = std::string("Both plans: ") + column.label, .x = "along", .series = ids, .fromZero = true});
}

void addCharts(HtmlPage& page, const ShownPlan& plan, const ShownPlan& against)
{
    std::vector<double> places = placesOf(plan, against);
    PageSeries along = {"along", "Distance", "km", 3, {}}, later = {"later", "The other is later by", "min", 2, {}};
    for (double place : places) {
        along.values.push_back(place / 1000);
        later.values.push_back((valueAt(against.seconds, place, timeOf) - valueAt(plan.seconds, place, timeOf)) / 60);
    }
    page.add(std::move(along));
    page.add(std::move(later));
    page.beginCharts();
    page.chart({.title = "Where the minutes are; below zero the other is ahead",
                .kind = ChartKind::area,
                .x = "along",
                .series = {"later"}});
    for (const Column& column : columns)
        addBoth(page, column, places, plan, against);
    page.endCharts();
}

PageTable wholeTable(const ShownPlan& plan, const ShownPlan& against)
{
    PageTable table = {"Both plans", {"", "This plan", "The other", "Difference"}, {}};
    const CourseRide &one = plan.answered.planned.ride, &other = against.answered.planned.ride;
    table.rows.push_back({"Moving", timeText(one.movingSeconds), timeText(other.movingSeconds),
                          changeText(other.movingSeconds - one.movingSeconds)});
    if (one.seconds > one.movingSeconds || other.seconds > other.movingSeconds)
        table.rows.push_back(
            {"With stops", timeText(one.seconds), timeText(other.seconds), changeText(other.seconds - one.seconds)});
    auto add = [&](const char* name, double a, double b, const char* unit) {
        table.rows.push_back(
            {formatText("%s, %s", name, unit), formatText("%.0f", a), formatText("%.0f", b),
             std::round(b) == std::round(a) ? "0" : formatText("%+.0f", std::round(b) - std::round(a))});
    };
    add("Mean power", one.meanPower, other.meanPower, "W");
    add("Normalised power", one.normalisedPower, other.normalisedPower, "W");
    add("Work", one.kiloJoule, other.kiloJoule, "kJ");
    add("Lowest cadence", one.lowestCadence, other.lowestCadence, "rpm");
    add("Hottest brake", std::max(one.hottest[0], one.hottest[1]), std::max(other.hottest[0], other.hottest[1]),
        "\u00B0C");
    return table;
}

// In motion from one place to another: who stops at other places rides no slower for it.
double secondsBetween(const ShownPlan& plan, const CoursePart& part)
{
    const std::vector<CourseStep>& steps = plan.answered.planned.ride.steps;
    double seconds = 0;
    for (size_t i = 1; i < steps.size(); ++i) {
        const CourseStep &begin = steps[i - 1], &end = steps[i];
        if (end.going == Going::standing || end.distance <= part.from || begin.distance >= part.to)
            continue;
        double metres = end.distance - begin.distance;
        double within = std::min(end.distance, part.to) - std::max(begin.distance, part.from);
        seconds += (metres > 0 ? within / metres : 1) * (end.time - begin.time);
    }
    return seconds;
}

PageTable partTable(const char* title, const std::vector<CoursePart>& parts, const ShownPlan& plan,
                    const ShownPlan& against)
{
    PageTable table = {title, {"From km", "km", "Slope %", "This plan", "The other", "Difference"}, {}};
    for (const CoursePart& part : parts) {
        double one = secondsBetween(plan, part), other = secondsBetween(against, part);
        table.rows.push_back({formatText("%.2f", part.from / 1000), formatText("%.2f", part.metres() / 1000),
                              formatText("%.1f", part.slope()), timeText(one), timeText(other),
                              changeText(other - one)});
    }
    return table;
}

} // namespace

void addAgainst(HtmlPage& page, const ShownPlan& plan, const ShownPlan& against)
{
    if (plan.seconds.empty() || against.seconds.empty())
        return;
    page.section("Against " + against.label);
    page.table(wholeTable(plan, against));
    addCharts(page, plan, against);
    page.table(partTable("Climbs and their times", plan.answered.answer.climbs, plan, against));
    page.table(partTable("Parts and their times", plan.answered.answer.parts, plan, against));
}

} // namespace torvane
