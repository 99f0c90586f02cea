// Courses made of a height and a heading over the way, for riders of the default profile.
#pragma once

#include "gps/track_geometry.h"
#include "model/constants.h"
#include "model/model_fixture.h"
#include "plan/course_shape.h"
#include "plan/plan_course.h"

#include <cmath>
#include <functional>

namespace torvane {

using OverWay = std::function<double(double)>; // m since the start

inline std::vector<TrackPlace> madePlaces(double length, const OverWay& height, const OverWay& heading, double step)
{
    std::vector<TrackPlace> places = {{47, 8, height(0), 0}};
    while (places.back().distance < length - step / 2) {
        TrackPlace place = places.back();
        double angle = heading(place.distance) * pi / 180;
        place.latitude += std::cos(angle) * step / metresPerDegree;
        place.longitude += std::sin(angle) * step / metresPerDegree / std::cos(place.latitude * pi / 180);
        place.distance += step;
        place.height = height(place.distance);
        places.push_back(place);
    }
    return places;
}

inline Course madeCourse(double length, const OverWay& height, const OverWay& heading, const PlanOptions& options = {},
                         double step = 5)
{
    Course course;
    course.step = options.courseStep;
    course.findings.hasPlaces = true;
    stepAlong(madePlaces(length, height, heading, step), course);
    shapeHeights(course, options.altitudeSmoothing);
    shapeBends(course);
    return course;
}

inline double northward(double)
{
    return 0;
}

inline OverWay slopeOf(double percent)
{
    return [percent](double way) { return way * percent / 100; };
}

inline OverWay hills(double height, double length)
{
    return [=](double way) { return 300 + height / 2 * (1 - std::cos(2 * pi * way / length)); };
}

class PlanTest : public ModelTest {
protected:
    CourseRide ride(const Course& course, double watts)
    {
        CourseRide ridden;
        rideCourse({model, block, course, options}, constantPower(watts), ridden);
        return ridden;
    }
    PlannedCourse plan(const Course& course, StatusCode wanted = fitOk)
    {
        PlannedCourse planned;
        EXPECT_EQ(planCourse(model, block, course, options, planned), wanted);
        return planned;
    }

    PlanOptions options;
};

} // namespace torvane
