// Answers in which every field holds a number of its own, and what has to be told of them, worked out by hand.
#pragma once

#include "gps/ride_answer.h"
#include "gps/ride_comparison.h"
#include "page/plan_against.h"
#include "told.h"

namespace torvane {

inline CommonSecond bothAt(uint32_t second, double first, double second_)
{
    return {1'000'000'000 + second, 8.0 * second, {first, second_}};
}

// Three means of 30 s, five seconds that are left over, and a hole; the powers sway about their means.
inline RideComparison comparedRides()
{
    RideComparison rides;
    for (uint32_t i = 0; i < 65; ++i)
        rides.common.push_back(
            bothAt(i, (i < 30 ? 100 : 207) + (i % 2 ? 9 : -9), (i < 30 ? 112 : 190) - (i % 2 ? 4 : -4)));
    for (uint32_t i = 100; i < 130; ++i)
        rides.common.push_back(bothAt(i, 311, 333));
    rides.whole = {1'000'000'000, 95, {201, 211}, {203, 213}, 0.9375, 3};
    rides.sectors = {{1'000'000'000, 65, {202, 212}, {204, 214}, 0.8125, 3},
                     {1'000'000'100, 30, {0, 333}, {205, 215}, 0.5, 2}};
    rides.alone[0] = 11;
    rides.alone[1] = 12;
    return rides;
}

// Seconds 3 and 4 are at the same place: a stop.
inline ShownPlan numberedPlan(double more)
{
    ShownPlan plan;
    Course& course = plan.answered.course;
    course.path = "in/hill.gpx";
    course.length = 5010;
    course.points = {{.distance = 0, .slope = 1.25}, {.distance = 2000, .slope = -2.5}};
    course.findings.climbed = 101;
    course.findings.hasPlaces = true;
    plan.seconds = {{0, 0, 11, 45, 8, 0, 0, 0, 21, 31},
                    {100, 1000, 12, 45, 8.01, 4, 201 + more, 62, 22, 32},
                    {200 + static_cast<uint32_t>(more), 2000, 13, 45.01, 8.01, 10, 202 + more, 61, 23, 33},
                    {300 + static_cast<uint32_t>(more), 2000, 14, 45.01, 8.01, 0, 0, 60, 24, 34},
                    {400 + static_cast<uint32_t>(more), 4000 + 10 * more, 15, 45.01, 8, 5 + more / 10, 0, 0, 25, 35}};
    for (size_t second : {1, 2, 4})
        plan.seconds[second].ridden = 100;
    plan.seconds[2].split = {231, 232, -233, 234, 235, 236};
    CourseRide& ride = plan.answered.planned.ride;
    ride.movingSeconds = 721 + more;
    ride.seconds = 4322 + more;
    ride.meanPower = 203 - more;
    ride.normalisedPower = 204.6 + more;
    ride.kiloJoule = 205.4 + more;
    ride.lowestCadence = 46.4 + more;
    ride.walkMetres = 209;
    ride.hottest = {107, 108.4 + more};
    ride.energy = {196'100, -931'000, 820'000, 740'000, 650'000, 560'000, 609'900, -930'000};
    ride.steps = {{.time = 0, .distance = 0, .motor = 900},
                  {.time = 200, .distance = 2000, .motor = 50},
                  {.time = 300, .distance = 2000, .going = Going::standing},
                  {.time = 500 + 2 * more, .distance = 6000, .motor = 10}};
    plan.answered.planned.fastest = 701;
    plan.answered.planned.slowest = 3741;
    plan.answered.planned.even.movingSeconds = 730;
    plan.answered.planned.stretchSeconds = 725;
    CourseAnswer& answer = plan.answered.answer;
    answer.start = 1'000'000'000;
    answer.stress = 33.3;
    answer.gain = 9;
    answer.stretches = {{0, 2510, 50, 301, 302, 221, 81, 2, 17, 0, {41, 51}},
                        {2510, 5010, -50, 305, 607, 222, 0, -1, 18, 15, {42, 52}}};
    answer.climbs = {{500, 2500, 90, 303, 304, 223, 82, 3, 19, 0, {43, 53}}};
    answer.descents = {{100'000, 300'000, -8000, 30'500, 306, 224, 83, 4, 20, 0, {44, 54}}};
    answer.parts = {{2000, 4000, 10, 307, 308, 225, 84, 5, 21, 0, {45, 55}}};
    answer.partLength = 2000;
    answer.whatIf = {{{-61, 71, 0, 14}, {-2, 72, 73, 0}, {125, 0, 0, 0}, {0.4, 0, 0, 0}, {3, 74.4, 75, 30}}};
    plan.label = "pacing=plan";
    return plan;
}

// The same course with nothing to tell of but its time, as it is without a plan for the powers.
inline ShownPlan plainPlan()
{
    ShownPlan plan = numberedPlan(0);
    CourseRide& ride = plan.answered.planned.ride;
    ride.seconds = ride.movingSeconds;
    ride.lowestCadence = ride.walkMetres = 0;
    for (CourseStep& step : ride.steps)
        step.motor = 0;
    plan.answered.planned.even = {};
    plan.answered.planned.stretchSeconds = 0;
    plan.answered.course.findings = {.pointsRead = 100};
    CourseAnswer& answer = plan.answered.answer;
    answer.start.reset();
    answer.stress = 0;
    answer.climbs.clear();
    answer.stretches[1].walkSeconds = 0;
    answer.whatIf = {};
    return plan;
}

// Of a recorded ride: 36 km in motion in an hour.
inline RideAnswer numberedHour()
{
    RideAnswer a;
    a.start = 1'000'000'000;
    a.elapsed = 3900;
    a.whole = {0, 36000, 3600, 420, {201, 211}, {81, 91}};
    a.distance = 36500;
    a.highestSpeed = 15;
    a.power[predictedFigure] = {3600, 202, 203, {}, 727};
    a.power[measuredFigure] = {3500, 212, 213, {}, 737};
    a.laps = {{0, 18000, 1800, 220, {221, 231}, {}}, {18000, 18500, 1850, 200, {222, {}}, {}}};
    a.brakes = {25, {110, 120}, {130, 140}};
    a.hasAltitude = true;
    return a;
}

} // namespace torvane
