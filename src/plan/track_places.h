// A file's track as places one behind the other, each with its way from the start: what a course is made of. Strays are
// dropped, legs that do not touch are set one behind the other, and what was done is told.
#pragma once

#include "plan/course.h"

#include <string>
#include <vector>

namespace torvane {

struct TrackPlace {
    double latitude = noPlace, longitude = noPlace; // deg; both or none
    double height = noPlace;                        // m
    double distance = noPlace;                      // m; of the file, then of the course
    double power = noPlace;                         // W, measured
    bool begins = false;                            // a segment; of a course, behind a gap
};

// The places of a file with rising distances, those nearer to the last than leastWay left out. Codes of loadCourse.
constexpr double leastWay = 2; // m
StatusCode readPlaces(const std::string& path, std::vector<TrackPlace>& places, CourseFindings& findings,
                      Progress* progress = nullptr);

} // namespace torvane
