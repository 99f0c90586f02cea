// A course ahead: a track of any file as a road in even steps, its heights smoothed, its bends measured.
#pragma once

#include "core/progress.h"
#include "fit/fit_codes.h"
#include "plan/plan_codes.h"
#include "plan/plan_options.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace torvane {

constexpr double leastCourse = 100;      // m
constexpr double mostCourse = 2'000'000; // m

constexpr double noPlace = std::numeric_limits<double>::quiet_NaN();

struct CoursePoint {
    double distance = 0;                            // m since the start
    double height = 0;                              // m above the sea, smoothed
    double rawHeight = 0;                           // m, as the file has it
    double slope = 0;                               // %, from here to the next point
    double heading = 0;                             // deg, 0 north, 90 east
    double latitude = noPlace, longitude = noPlace; // deg; both or none
    double bend = 0;                                // 1/m, 1 / radius
};

// The course goes on elsewhere: what lies between is not ridden.
struct CourseGap {
    double distance; // m since the start
    double metres;   // between the two places
};

struct CourseFindings {
    size_t pointsRead = 0;
    size_t pointsWithoutPlace = 0;    // left out
    size_t pointsWithoutAltitude = 0; // between their neighbours
    bool hasPlaces = false;           // positions; else there are no headings, so no wind by heading, and no bends
    bool hasTimes = false;            // ridden
    bool ownDistance = false;         // the distances are those of the file
    size_t segments = 1;
    std::vector<CourseGap> gaps = {};      // between segments that do not touch
    std::vector<CourseGap> straights = {}; // steps within a segment of more than longStep, taken as a straight road
    double smoothing = 0;                  // m, of the heights
    bool smoothedMore = false;             // than was asked, since the heights are noisy
    double climbedRaw = 0, climbed = 0;    // m, before and after
    bool noisy = false;                    // even so: times may be off by more than 3 percent
};
constexpr double longStep = 300; // m

struct Course {
    std::string path = {};
    double step = 10;  // m between points; the last is shorter
    double length = 0; // m
    std::vector<CoursePoint> points = {};
    CourseFindings findings = {};
};

// Reads any ride or planned track. fitOk; codes of loadRideSource but for fitPlanned and fitWithoutTimes, which are no
// faults here; codes of plan_codes.h, where findings tell as far as they go.
StatusCode loadCourse(const std::string& path, const PlanOptions& options, Course& course,
                      Progress* progress = nullptr);

// Index of the last point that does not lie beyond a distance; and the smoothed height there, between points.
size_t pointAt(const Course& course, double distance);
double heightAt(const Course& course, double distance);

} // namespace torvane
