// A predicted ride second by second, as files, rows and graphs of it want it, and what stands along its way.
#pragma once

#include "model/power_sinks.h"

#include <cstdint>
#include <string>
#include <vector>

namespace torvane {

struct PlannedSecond {
    uint32_t time = 0;     // s since the start
    double distance = 0;   // m
    double altitude = 0;   // m; no number where the course has none
    double latitude = 0;   // deg; no number where the course has no positions
    double longitude = 0;  // deg
    double speed = 0;      // m/s
    double power = 0;      // W, mean of the second before
    double cadence = 0;    // rpm
    double frontBrake = 0; // Cel
    double rearBrake = 0;  // Cel
    PowerSplit split = {}; // W, mean of the second before
    double ridden = 0;     // s of the second before, neither standing nor on foot
};

enum class MarkKind : uint8_t { summit, foot, stretch };

// A place that the rider is told of.
struct CourseMark {
    MarkKind kind;
    double distance = 0; // m
    std::string name;
};

struct PlannedFile {
    std::string name;   // of the course
    uint32_t start = 0; // FIT seconds
    std::vector<PlannedSecond> seconds = {};
    std::vector<CourseMark> marks = {}; // rising by distance
};

// The first second at a distance in m or beyond; the last one where there is none. Needs at least one.
const PlannedSecond& secondAt(const PlannedFile& planned, double distance);

} // namespace torvane
