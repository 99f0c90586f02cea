#include "plan/course.h"

#include "plan/course_shape.h"
#include "plan/series.h"
#include "plan/track_places.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

bool hasHeight(const TrackPlace& place)
{
    return !std::isnan(place.height);
}

// Heights that lie between their neighbours; beyond the first and the last one that is known, those.
StatusCode completeHeights(std::vector<TrackPlace>& places, CourseFindings& findings)
{
    size_t known = static_cast<size_t>(std::ranges::count_if(places, hasHeight));
    findings.pointsWithoutAltitude = places.size() - known;
    if (2 * known < places.size() || known < 2)
        return planWithoutAltitude;
    auto next = std::ranges::find_if(places, hasHeight);
    auto last = next;
    for (auto place = places.begin(); place != places.end(); ++place) {
        if (hasHeight(*place)) {
            last = place;
            next = std::find_if(place + 1, places.end(), hasHeight);
            continue;
        }
        const TrackPlace& end = next == places.end() ? *last : *next;
        double way = end.distance - last->distance;
        double part = way > 0 && place > last ? (place->distance - last->distance) / way : 0;
        place->height = between(last->height, end.height, part);
    }
    return fitOk;
}

// Behind a gap the road goes on from the height at which it ended: nobody rides the step between.
void joinHeights(std::vector<TrackPlace>& places)
{
    double shift = 0, last = places[0].height;
    for (TrackPlace& place : places) {
        if (place.begins)
            shift += place.height - last;
        last = place.height;
        place.height -= shift;
    }
}

// No road climbs half a kilometre at 35 percent.
bool tooSteep(const Course& course)
{
    constexpr double span = 500, steepest = 0.35;
    size_t points = static_cast<size_t>(span / course.step);
    for (size_t i = points; i < course.points.size(); ++i)
        if (std::fabs(course.points[i].height - course.points[i - points].height) > steepest * span)
            return true;
    return false;
}

} // namespace

StatusCode loadCourse(const std::string& path, const PlanOptions& options, Course& course, Progress* progress)
{
    course = {};
    course.path = path;
    course.step = options.courseStep;
    std::vector<TrackPlace> places;
    if (StatusCode code = readPlaces(path, places, course.findings, progress))
        return code;
    if (places.back().distance < leastCourse)
        return planTooShort;
    if (places.back().distance > mostCourse)
        return planTooLong;
    if (StatusCode code = completeHeights(places, course.findings))
        return code;
    joinHeights(places);
    stepAlong(places, course);
    shapeHeights(course, options.altitudeSmoothing);
    shapeBends(course);
    return tooSteep(course) ? planTooSteep : fitOk;
}

size_t pointAt(const Course& course, double distance)
{
    size_t last = course.points.size() - 1;
    return distance > 0 ? std::min(last, static_cast<size_t>(distance / course.step)) : 0;
}

double heightAt(const Course& course, double distance)
{
    size_t i = std::min(pointAt(course, distance), course.points.size() - 2);
    const CoursePoint &from = course.points[i], &to = course.points[i + 1];
    return from.height + (to.height - from.height) * (distance - from.distance) / (to.distance - from.distance);
}

} // namespace torvane
