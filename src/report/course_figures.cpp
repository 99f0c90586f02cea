#include "report/course_figures.h"

#include "core/units.h"
#include "fit/fit_time.h"
#include "model/gear_table.h"

#include <cmath>

namespace torvane {

namespace {

using Row = FigureRow<AnsweredCourse>;

double percentOf(double seconds, const AnsweredCourse& a)
{
    return seconds / a.planned.ride.movingSeconds * 100;
}

bool hasFtp(const AnsweredCourse& a)
{
    return a.answer.stress > 0;
}

bool isPaced(const AnsweredCourse& a)
{
    return a.planned.even.movingSeconds > 0;
}

bool hasStretches(const AnsweredCourse& a)
{
    return a.planned.stretchSeconds > 0;
}

bool hasStart(const AnsweredCourse& a)
{
    return a.answer.start.has_value();
}

bool hasThree(const AnsweredCourse& a)
{
    return a.planned.threePowers[0] > 0;
}

constexpr Row courseRows[] = {
    {"start", "sec since 1970", [](const AnsweredCourse& a) { return unixTime(*a.answer.start); }, hasStart},
    {"distance", "km", [](const AnsweredCourse& a) { return a.course.length / 1000; }},
    {"climbedRaw", "m", [](const AnsweredCourse& a) { return a.course.findings.climbedRaw; }},
    {"climbed", "m", [](const AnsweredCourse& a) { return a.course.findings.climbed; }},
    {"smoothing", "m", [](const AnsweredCourse& a) { return a.course.findings.smoothing; }},
    {"seconds", "sec", [](const AnsweredCourse& a) { return a.planned.ride.seconds; }},
    {"movingSeconds", "sec", [](const AnsweredCourse& a) { return a.planned.ride.movingSeconds; }},
    {"fastest", "sec", [](const AnsweredCourse& a) { return a.planned.fastest; }},
    {"slowest", "sec", [](const AnsweredCourse& a) { return a.planned.slowest; }},
    {"speed", "kph",
     [](const AnsweredCourse& a) { return a.course.length / a.planned.ride.movingSeconds * kphPerMps; }},
    {"highestSpeed", "kph", [](const AnsweredCourse& a) { return a.planned.ride.topSpeed * kphPerMps; }},
    {"mean", "W", [](const AnsweredCourse& a) { return a.planned.ride.meanPower; }},
    {"normalised", "W", [](const AnsweredCourse& a) { return a.planned.ride.normalisedPower; }},
    {"steepPower", "W", [](const AnsweredCourse& a) { return a.planned.threePowers[0]; }, hasThree},
    {"flatPower", "W", [](const AnsweredCourse& a) { return a.planned.threePowers[1]; }, hasThree},
    {"downPower", "W", [](const AnsweredCourse& a) { return a.planned.threePowers[2]; }, hasThree},
    {"kiloJoule", "kJ", [](const AnsweredCourse& a) { return a.planned.ride.kiloJoule; }},
    {"intensity", "", [](const AnsweredCourse& a) { return a.answer.intensity; }, hasFtp},
    {"stressScore", "", [](const AnsweredCourse& a) { return a.answer.stress; }, hasFtp},
    {"coasting", "%", [](const AnsweredCourse& a) { return percentOf(a.planned.ride.coastSeconds, a); }},
    {"braking", "%", [](const AnsweredCourse& a) { return percentOf(a.planned.ride.brakeSeconds, a); }},
    {"lowestCadence", "rpm", [](const AnsweredCourse& a) { return a.planned.ride.lowestCadence; },
     [](const AnsweredCourse& a) { return a.planned.ride.lowestCadence > 0; }},
    {"walked", "m", [](const AnsweredCourse& a) { return a.planned.ride.walkMetres; }},
    {"frontBrakeHighest", "Cel", [](const AnsweredCourse& a) { return a.planned.ride.hottest[0]; }},
    {"rearBrakeHighest", "Cel", [](const AnsweredCourse& a) { return a.planned.ride.hottest[1]; }},
    {"evenPower", "W", [](const AnsweredCourse& a) { return a.planned.evenPower; }, isPaced},
    {"gain", "sec", [](const AnsweredCourse& a) { return a.answer.gain; }, isPaced},
    {"stretchSeconds", "sec", [](const AnsweredCourse& a) { return a.planned.stretchSeconds; }, hasStretches},
};

struct PartRecord {
    const Model& model;
    const CoursePart& part;
};

using PartRow = FigureRow<PartRecord>;

bool hasGear(const PartRecord& p)
{
    return p.part.gear >= 0;
}

constexpr PartRow partRows[] = {
    {"from", "km", [](const PartRecord& p) { return p.part.from / 1000; }},
    {"distance", "km", [](const PartRecord& p) { return p.part.metres() / 1000; }},
    {"slope", "%", [](const PartRecord& p) { return p.part.slope(); }},
    {"seconds", "sec", [](const PartRecord& p) { return p.part.seconds; }},
    {"clock", "sec", [](const PartRecord& p) { return p.part.clock; }},
    {"speed", "kph", [](const PartRecord& p) { return p.part.speed() * kphPerMps; }},
    {"power", "W", [](const PartRecord& p) { return p.part.power; }},
    {"frontTooth", "t", [](const PartRecord& p) { return double(frontToothOf(p.model, p.part.gear)); }, hasGear},
    {"rearTooth", "t", [](const PartRecord& p) { return double(rearToothOf(p.model, p.part.gear)); }, hasGear},
    {"cadence", "rpm", [](const PartRecord& p) { return p.part.cadence; }},
    {"topSpeed", "kph", [](const PartRecord& p) { return p.part.topSpeed * kphPerMps; }},
    {"frontBrake", "Cel", [](const PartRecord& p) { return p.part.hottest[0]; }},
    {"rearBrake", "Cel", [](const PartRecord& p) { return p.part.hottest[1]; }},
    {"walkSeconds", "sec", [](const PartRecord& p) { return p.part.walkSeconds; }},
};

constexpr FigureRow<WhatIfAnswer> whatIfRows[] = {
    {"seconds", "sec", [](const WhatIfAnswer& w) { return w.seconds; }},
    {"lowestCadence", "rpm", [](const WhatIfAnswer& w) { return w.lowestCadence; },
     [](const WhatIfAnswer& w) { return w.lowestCadence > 0; }},
    {"walked", "m", [](const WhatIfAnswer& w) { return w.walkMetres; }},
    {"rearTooth", "t", [](const WhatIfAnswer& w) { return double(w.teeth); },
     [](const WhatIfAnswer& w) { return w.teeth > 0; }},
};

constexpr const char* whatIfNames[whatIfCount] = {"morePower", "lessWeight", "headWind", "lessDrag", "lowerGear"};
constexpr const char* partGroups[] = {"stretches", "climbs", "descents", "parts"};

void addParts(Figures& figures, const Model& model, const char* name, const std::vector<CoursePart>& parts)
{
    if (parts.empty())
        return;
    Figures::Group& group = figures.groups.emplace_back(Figures::Group{name, {}});
    for (const CoursePart& part : parts)
        addFigures(group.items.emplace_back(), partRows, PartRecord{model, part});
}

constexpr RowColumn secondColumns[] = {
    {"time_sec", 0},  {"distance_m", 3}, {"latitude_deg", 7}, {"longitude_deg", 7},  {"altitude_m", 3},
    {"speed_kph", 3}, {"power_W", 3},    {"cadence_rpm", 3},  {"frontBrake_Cel", 3}, {"rearBrake_Cel", 3},
};

} // namespace

Figures courseFigures(const Model& model, const AnsweredCourse& answered)
{
    Figures figures;
    const CourseAnswer& answer = answered.answer;
    const std::vector<CoursePart>* parts[] = {&answer.stretches, &answer.climbs, &answer.descents, &answer.parts};
    addFigures(figures.values, courseRows, answered);
    for (size_t i = 0; i < std::size(parts); ++i)
        addParts(figures, model, partGroups[i], *parts[i]);
    for (size_t i = 0; i < whatIfCount; ++i)
        addFigures(figures.groups.emplace_back(Figures::Group{whatIfNames[i], {}}).items.emplace_back(), whatIfRows,
                   answer.whatIf[i]);
    return figures;
}

std::vector<FigureInfo> courseFigureInfos()
{
    std::vector<FigureInfo> infos;
    addInfos(infos, courseRows);
    for (const char* group : partGroups)
        addInfos(infos, partRows, group);
    for (const char* group : whatIfNames)
        addInfos(infos, whatIfRows, group);
    return infos;
}

void writeCourseRows(RowWriter& rows, const std::vector<PlannedSecond>& seconds)
{
    rows.begin(secondColumns);
    for (const PlannedSecond& s : seconds) {
        for (double value : {double(s.time), s.distance, s.latitude, s.longitude, s.altitude, s.speed * kphPerMps,
                             s.power, s.cadence, s.frontBrake, s.rearBrake})
            rows.number(value);
        rows.endRow();
    }
}

GraphSeries courseCurves(const std::vector<PlannedSecond>& seconds)
{
    GraphSeries graph;
    beginGraphSeries(graph, GraphLayout::course, static_cast<int>(seconds.size()));
    for (const PlannedSecond& s : seconds)
        addGraphPoint(graph, {s.distance / 1000, s.altitude, s.speed * kphPerMps, s.power, s.frontBrake, s.rearBrake,
                              double(s.time) / 60});
    return graph;
}

} // namespace torvane
