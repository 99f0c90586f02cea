#include "model/constants.h"
#include "model/resistance.h"
#include "plan/course_ride.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

// m/s2 that tyres and road give, less the margin that a rider leaves; what is left on ice, too.
double gripOf(const RideConditions& ride)
{
    constexpr double least = 0.5; // m/s2
    Evaluation level = {};
    updateLoadAndGrip(ride.model, level, 0);
    return std::max(least, (1 - ride.settings.safetyMargin) * level.effectiveFriction * standardGravity);
}

void slowForStops(const RideConditions& ride, std::vector<double>& limits)
{
    for (const Stop& stop : ride.options.stops)
        if (stop.distance < ride.course.length)
            limits[pointAt(ride.course, stop.distance)] = 0;
}

// Whoever has to be slow somewhere brakes in front of it.
void brakeAhead(const Course& course, double deceleration, std::vector<double>& limits)
{
    for (size_t i = limits.size() - 1; i-- > 0;) {
        double way = course.points[i + 1].distance - course.points[i].distance;
        limits[i] = std::min(limits[i], std::sqrt(limits[i + 1] * limits[i + 1] + 2 * deceleration * way));
    }
}

} // namespace

std::vector<double> speedLimits(const RideConditions& ride)
{
    double grip = gripOf(ride);
    double sideways = std::min(ride.options.bendAcceleration, grip);
    std::vector<double> limits;
    limits.reserve(ride.course.points.size());
    for (const CoursePoint& point : ride.course.points)
        limits.push_back(std::min(ride.options.topSpeed, std::sqrt(sideways / point.bend)));
    slowForStops(ride, limits);
    brakeAhead(ride.course, std::min(ride.options.brakeDeceleration, grip), limits);
    return limits;
}

} // namespace torvane
