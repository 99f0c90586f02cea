#include "samples/course.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

constexpr double usualBraking = 1.5; // m/s2
constexpr double fastest = 100 / 3.6;
constexpr int bend = 25; // m over which a change of gradient is rounded, to both sides

void addLeg(Course& course, const Leg& leg, double& heading)
{
    int metres = static_cast<int>(leg.length);
    for (int i = 0; i < metres; ++i) {
        heading += leg.turn / metres;
        double limit = leg.limit > 0 ? leg.limit / 3.6 : fastest;
        course.push_back({{.altitude = 0, .rise = leg.rise / 100, .heading = heading}, leg.power, limit});
    }
}

void roundGradients(Course& course)
{
    Course sharp = course;
    int last = static_cast<int>(course.size()) - 1;
    for (int i = 0; i <= last; ++i) {
        double sum = 0;
        for (int k = i - bend; k <= i + bend; ++k)
            sum += sharp[static_cast<size_t>(std::clamp(k, 0, last))].road.rise;
        course[static_cast<size_t>(i)].road.rise = sum / (2 * bend + 1);
    }
}

void raise(Course& course, double altitude)
{
    for (CourseMetre& metre : course) {
        metre.road.altitude = altitude;
        altitude += metre.road.rise / std::hypot(1, metre.road.rise); // along the slope
    }
}

// From the end backwards: no faster than what braking still brings down to the limit of the next metre.
void brakeInTime(Course& course)
{
    for (size_t i = course.size() - 1; i-- > 0;) {
        double next = course[i + 1].limit;
        course[i].limit = std::min(course[i].limit, std::sqrt(next * next + 2 * usualBraking));
    }
}

} // namespace

Course layOut(const std::vector<Leg>& legs, const std::vector<RideStop>& stops, double altitude, double heading)
{
    Course course;
    for (const Leg& leg : legs)
        addLeg(course, leg, heading);
    roundGradients(course);
    raise(course, altitude);
    course.back().limit = 0;
    for (const RideStop& stop : stops)
        course[static_cast<size_t>(stop.distance)].limit = 0;
    brakeInTime(course);
    return course;
}

const CourseMetre& metreAt(const Course& course, double distance)
{
    return course[std::min(static_cast<size_t>(distance), course.size() - 1)];
}

Road roadAt(const Course& course, double distance)
{
    const Road& from = metreAt(course, distance).road;
    const Road& to = metreAt(course, distance + 1).road;
    double part = distance - std::floor(distance);
    return {.altitude = from.altitude + (to.altitude - from.altitude) * part,
            .rise = from.rise,
            .heading = from.heading + (to.heading - from.heading) * part};
}

} // namespace torvane
