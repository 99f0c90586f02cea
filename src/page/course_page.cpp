#include "page/course_page.h"

#include "core/text.h"
#include "core/units.h"
#include "model/gear_table.h"
#include "page/page_texts.h"
#include "page/power_section.h"
#include "page/thinning.h"
#include "report/course_report.h"
#include "report/fit_report.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace torvane {

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

std::string leadOf(const Model& model, const CourseAnswer& answer)
{
    std::string start = answer.start ? "Start " + dateText(*answer.start) + ". " : std::string();
    return "A course ahead. " + start + riderText(model);
}

PageFigures summaryOf(const AnsweredCourse& a)
{
    const CourseRide& ride = a.planned.ride;
    PageFigures figures = {
        {"Moving", timeText(ride.movingSeconds)},
        {"Moving, at least", timeText(a.planned.fastest)},
        {"Moving, at most", timeText(a.planned.slowest)},
        {"Distance", formatText("%.2f km", a.course.length / 1000)},
        {"Climbed", formatText("%.0f m", a.course.findings.climbed)},
        {"Average speed",
         formatText("%.1f kph", ride.movingSeconds > 0 ? a.course.length / ride.movingSeconds * kphPerMps : 0)},
        {"Mean power", formatText("%.0f W", ride.meanPower)},
        {"Normalised", formatText("%.0f W", ride.normalisedPower)},
        {"Work", formatText("%.0f kJ", ride.kiloJoule)},
    };
    if (ride.seconds > ride.movingSeconds)
        figures.emplace_back("With stops", timeText(ride.seconds));
    if (a.answer.stress > 0)
        figures.emplace_back("Stress score", formatText("%.0f", a.answer.stress));
    if (ride.lowestCadence > 0)
        figures.emplace_back("Lowest cadence", formatText("%.0f rpm", ride.lowestCadence));
    figures.emplace_back("Hottest brakes, front, rear",
                         formatText("%.0f, %.0f \u00B0C", ride.hottest[0], ride.hottest[1]));
    if (a.planned.even.movingSeconds > 0)
        figures.emplace_back("Against even power", changeText(-a.answer.gain));
    if (a.planned.even.movingSeconds > 0 && a.planned.stretchSeconds > 0)
        figures.emplace_back("By the stretches alone", timeText(a.planned.stretchSeconds));
    if (ride.walkMetres > 0)
        figures.emplace_back("On foot", formatText("%.0f m", ride.walkMetres));
    return figures;
}

struct Column {
    const char *id, *label, *unit;
    int decimals;
    double (*value)(const PlannedSecond&);
    bool isTime = false;
    bool peaked = false;
};

constexpr Column columns[] = {
    {"distance", "Distance", "km", 3, [](const PlannedSecond& s) { return s.distance / 1000; }},
    {"time", "Time", "", 0, [](const PlannedSecond& s) { return static_cast<double>(s.time); }, true},
    {"altitude", "Altitude", "m", 1, [](const PlannedSecond& s) { return s.altitude; }, false, true},
    {"speed", "Speed", "kph", 1, [](const PlannedSecond& s) { return s.speed * kphPerMps; }, false, true},
    {"power", "Power", "W", 0, [](const PlannedSecond& s) { return s.power; }, false, true},
    {"cadence", "Cadence", "rpm", 0, [](const PlannedSecond& s) { return s.cadence; }, false, true},
    {"frontBrake", "Front brake", "Cel", 0, [](const PlannedSecond& s) { return s.frontBrake; }, false, true},
    {"rearBrake", "Rear brake", "Cel", 0, [](const PlannedSecond& s) { return s.rearBrake; }, false, true},
};

std::vector<double> valuesOf(const std::vector<PlannedSecond>& seconds, double (*value)(const PlannedSecond&))
{
    std::vector<double> values;
    values.reserve(seconds.size());
    for (const PlannedSecond& second : seconds)
        values.push_back(value(second));
    return values;
}

// The slope of the road, and the gear in which the rider turns the pedals so.
void addDerived(HtmlPage& page, const Model& model, const Course& course, const std::vector<PlannedSecond>& seconds,
                std::span<const size_t> places)
{
    PageSeries slope = {"slope", "Slope", "%", 1, {}};
    PageSeries front = {"frontTooth", "Chainring", "t", 0, {}}, rear = {"rearTooth", "Sprocket", "t", 0, {}};
    for (size_t place : places) {
        const PlannedSecond& s = seconds[place];
        slope.values.push_back(course.points[pointAt(course, s.distance)].slope);
        bool pedals = s.cadence > 0 && s.speed > 0;
        int gear = pedals ? nearestGear(model, ratioAtCadence(model, s.speed, s.cadence)) : 0;
        front.values.push_back(pedals ? frontToothOf(model, gear) : none);
        rear.values.push_back(pedals ? rearToothOf(model, gear) : none);
    }
    for (PageSeries* series : {&slope, &front, &rear})
        page.add(std::move(*series));
}

void addSplit(HtmlPage& page, const std::vector<PlannedSecond>& seconds, std::span<const size_t> places)
{
    for (size_t sink = 0; sink < powerSinkCount; ++sink) {
        PageSeries part = {powerSinkIds[sink], powerSinkLabels[sink], "W", 0, {}};
        for (size_t place : places)
            part.values.push_back(seconds[place].split[sink]);
        page.add(std::move(part));
    }
}

void addSeries(HtmlPage& page, const Model& model, const Course& course, const std::vector<PlannedSecond>& seconds,
               PageMap& map)
{
    std::vector<std::vector<double>> values;
    std::vector<const std::vector<double>*> peaks;
    for (const Column& column : columns)
        values.push_back(valuesOf(seconds, column.value));
    for (size_t i = 0; i < values.size(); ++i)
        if (columns[i].peaked)
            peaks.push_back(&values[i]);
    std::vector<size_t> places = thinnedPoints(seconds.size(), peaks);
    for (size_t i = 0; i < values.size(); ++i) {
        const Column& column = columns[i];
        page.add({column.id, column.label, column.unit, column.decimals, valuesAt(values[i], places), column.isTime});
    }
    addDerived(page, model, course, seconds, places);
    addSplit(page, seconds, places);
    map.latitude = valuesAt(valuesOf(seconds, [](const PlannedSecond& s) { return s.latitude; }), places);
    map.longitude = valuesAt(valuesOf(seconds, [](const PlannedSecond& s) { return s.longitude; }), places);
}

void addCharts(HtmlPage& page, const CourseAnswer& answer)
{
    std::vector<std::pair<double, double>> climbs;
    for (const CoursePart& climb : answer.climbs)
        climbs.emplace_back(climb.from / 1000, climb.to / 1000);
    page.section("Along the way");
    page.beginCharts();
    page.chart({.title = answer.climbs.empty() ? "Altitude" : "Altitude, climbs shaded",
                .kind = ChartKind::area,
                .x = "distance",
                .series = {"altitude"},
                .shades = climbs});
    page.chart({.title = "Speed and time",
                .x = "distance",
                .series = {"speed", "time"},
                .shown = {"speed"},
                .fromZero = true});
    page.chart({.title = "Power", .x = "distance", .series = {"power"}, .fromZero = true});
    page.chart({.title = "Cadence and gears",
                .x = "distance",
                .series = {"cadence", "frontTooth", "rearTooth"},
                .shown = {"cadence", "frontTooth", "rearTooth"}});
    page.chart({.title = "Brake temperatures", .x = "distance", .series = {"frontBrake", "rearBrake"}});
    page.endCharts();
}

std::string clockText(const CourseAnswer& answer, double clock)
{
    return answer.start ? formatTimeOfDay(*answer.start + static_cast<uint32_t>(std::lround(clock))) : timeText(clock);
}

std::string gearText(const Model& model, int gear)
{
    return gear < 0 ? "-" : formatText("%d x %d", frontToothOf(model, gear), rearToothOf(model, gear));
}

PageTable tableOf(const Model& model, const CourseAnswer& answer, const std::string& title,
                  const std::vector<CoursePart>& parts, bool downhill)
{
    PageTable table = {title, {"From km", "km", "Slope %", "Time", answer.start ? "At" : "After", "kph", "W"}, {}};
    std::vector<std::string> own = {"Gear", "rpm"};
    if (downhill)
        own = {"Top kph", "Front \u00B0C", "Rear \u00B0C"};
    table.heads.insert(table.heads.end(), own.begin(), own.end());
    bool walks = std::ranges::any_of(parts, [](const CoursePart& part) { return part.walkSeconds > 0; });
    if (walks)
        table.heads.emplace_back("On foot");
    for (const CoursePart& part : parts) {
        std::vector<std::string>& row = table.rows.emplace_back(std::vector<std::string>{
            formatText("%.2f", part.from / 1000), formatText("%.2f", part.metres() / 1000),
            formatText("%.1f", part.slope()), timeText(part.seconds), clockText(answer, part.clock),
            formatText("%.1f", part.speed() * kphPerMps), formatText("%.0f", part.power)});
        std::vector<std::string> last = {gearText(model, part.gear), formatText("%.0f", part.cadence)};
        if (downhill)
            last = {formatText("%.1f", part.topSpeed * kphPerMps), formatText("%.0f", part.hottest[0]),
                    formatText("%.0f", part.hottest[1])};
        row.insert(row.end(), last.begin(), last.end());
        if (walks)
            row.push_back(part.walkSeconds > 0 ? timeText(part.walkSeconds) : "-");
    }
    return table;
}

void addTables(HtmlPage& page, const Model& model, const CourseAnswer& answer)
{
    page.section("Parts of the way");
    page.table(tableOf(model, answer, "Stretches of the plan", answer.stretches, false));
    page.table(tableOf(model, answer, "Climbs", answer.climbs, false));
    page.table(tableOf(model, answer, "Descents", answer.descents, true));
    page.table(tableOf(model, answer, formatText("Every %.0f km", answer.partLength / 1000), answer.parts, false));
}

double motorWork(const std::vector<CourseStep>& steps) // J
{
    double work = 0;
    for (size_t i = 1; i < steps.size(); ++i)
        work += steps[i].motor * (steps[i].time - steps[i - 1].time);
    return work;
}

// The parts come to the rider's work; who helps stands below zero.
void addEnergies(HtmlPage& page, const CourseRide& ride)
{
    const EnergyBalance& e = ride.energy;
    double motor = motorWork(ride.steps) / 1000;
    std::vector<EnergyPart> besides;
    if (motor > 0)
        besides.push_back({"Motor", -motor});
    if (ride.walkMetres > 0)
        besides.push_back({"On foot", -e.walked / 1000});
    addSplitSection(page, formatText("Energy of the whole ride: of the work, %.0f kJ", ride.kiloJoule),
                    {e.air / 1000, e.rolling / 1000, e.slope / 1000, e.kinetic / 1000,
                     ride.kiloJoule + motor - e.thrust / 1000, e.brakes / 1000},
                    besides);
}

// The seconds of a plan as those of a ride; who stands or walks does not ride.
std::vector<RiddenRow> rowsOf(const std::vector<PlannedSecond>& seconds)
{
    std::vector<RiddenRow> rows;
    for (size_t i = 1; i < seconds.size(); ++i) {
        RiddenRow& row = rows.emplace_back();
        row.timestamp = seconds[i].time;
        row.seconds = static_cast<uint32_t>(std::lround(seconds[i].ridden));
        row.power[predictedFigure] = seconds[i].power;
    }
    return rows;
}

std::string besidesText(const WhatIfAnswer& what, bool lowerGear)
{
    std::vector<std::string> told;
    if (lowerGear && what.teeth > 0)
        told.push_back(formatText("a sprocket of %d", what.teeth));
    if (lowerGear && what.lowestCadence > 0)
        told.push_back(formatText("lowest cadence %.0f rpm", what.lowestCadence));
    if (what.walkMetres > 0)
        told.push_back(formatText("%.0f m on foot", what.walkMetres));
    std::string text;
    for (const std::string& each : told)
        text += (text.empty() ? "" : ", ") + each;
    return text;
}

void addWhatIfs(HtmlPage& page, const CourseAnswer& answer)
{
    PageTable table = {"What if", {"With", "Time", "Besides"}, {}};
    for (size_t i = 0; i < answer.whatIf.size(); ++i) {
        const WhatIfAnswer& what = answer.whatIf[i];
        table.rows.push_back({whatIfNames[i], changeText(what.seconds), besidesText(what, i == ifLowerGear)});
    }
    page.section("What if");
    page.table(table);
}

} // namespace

std::string coursePage(const Model& model, const ShownPlan& plan, const std::vector<std::string>& notes,
                       const ShownPlan* against)
{
    const AnsweredCourse& answered = plan.answered;
    const CourseAnswer& answer = answered.answer;
    HtmlPage page(nameWithoutEnding(answered.course.path), leadOf(model, answer));
    page.section("Summary");
    page.figures(summaryOf(answered));
    if (!notes.empty()) {
        page.section("Mended or doubtful");
        page.notes(notes);
    }
    if (against)
        addAgainst(page, plan, *against);
    PageMap map = {"Track, north above", {}, {}, {"power", "speed", "slope"}};
    addSeries(page, model, answered.course, plan.seconds, map);
    if (answered.course.findings.hasPlaces) {
        page.section("Map");
        page.map(map);
    }
    addCharts(page, answer);
    addTables(page, model, answer);
    addEnergies(page, answered.planned.ride);
    addPowerSection(page, model, rowsOf(plan.seconds), RideAnswer());
    addWhatIfs(page, answer);
    return page.html();
}

} // namespace torvane
