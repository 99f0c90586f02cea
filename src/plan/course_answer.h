// What a planned course tells its rider: the whole of it, each kilometre, each climb and descent, the stretches of the
// plan, and what a little more or less of this or that would change.
#pragma once

#include "core/progress.h"
#include "plan/plan_course.h"
#include "plan/plan_entries.h"
#include "plan/planned_seconds.h"

#include <array>
#include <optional>
#include <vector>

namespace torvane {

// A part of the course, as it is ridden.
struct CoursePart {
    double from = 0, to = 0; // m since the start
    double height = 0;       // m, from its start to its end
    double seconds = 0;      // in motion
    double clock = 0;        // s since the start, stops included, at its end
    double power = 0;        // W, mean over its time
    double cadence = 0;      // rpm, mean while pedalling; 0 who does not
    int gear = -1;           // row of the gear table that is used for longest; -1 none
    double topSpeed = 0;     // m/s
    double walkSeconds = 0;
    std::array<double, 2> hottest = {}; // Cel, brakes front and rear

    double metres() const
    {
        return to - from;
    }
    double slope() const // %
    {
        return metres() > 0 ? height / metres() * 100 : 0;
    }
    double speed() const // m/s
    {
        return seconds > 0 ? metres() / seconds : 0;
    }
};

struct CourseAnswer {
    std::optional<uint32_t> start = {}; // FIT seconds, where one was entered
    double partLength = 1000;           // m, of the parts
    double intensity = 0;               // normalised power as a share of ftp; 0 without ftp
    double stress = 0;                  // stress score by it
    double gain = 0;                    // s that the pacing takes less than even power; negative: more
    std::vector<CoursePart> parts = {}, climbs = {}, descents = {}, stretches = {};
    std::array<WhatIfAnswer, whatIfCount> whatIf = {};
};

// One course from its file to the answer.
struct AnsweredCourse {
    Course course = {};
    PlannedCourse planned = {};
    CourseAnswer answer = {};
};

// Reads, plans, rides and tells. fitOk, or a code of loadCourse or planCourse, where the course tells as far as it
// goes.
StatusCode answerCourse(const Model& model, const ParameterBlock& settings, const std::string& path,
                        const PlanEntries& entries, AnsweredCourse& answered, Progress* progress = nullptr);

// The ride second by second from its start to its arrival.
std::vector<PlannedSecond> secondsOf(const Course& course, const CourseRide& ride);

// Those seconds as a course of this name: marks at foot and top of each climb and where each stretch begins.
PlannedFile plannedFile(const AnsweredCourse& answered, std::vector<PlannedSecond> seconds, const std::string& name);

} // namespace torvane
