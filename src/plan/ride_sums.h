// What a ride adds up to while its steps go by.
#pragma once

#include "plan/course_ride.h"

#include <vector>

namespace torvane {

// Mean fourth power of means over 30 s, as normalised power takes it.
class NormalisedSum {
public:
    explicit NormalisedSum(double timeStep);
    void add(double power, double seconds);
    double value() const; // W; the mean where the ride is shorter than 30 s

private:
    std::vector<double> last; // powers of 30 s, in a ring
    size_t next = 0, held = 0;
    double sum = 0, fourths = 0, seconds = 0, work = 0, time = 0;
};

class RideSums {
public:
    RideSums(CourseRide& ride, double timeStep) : into(ride), normalised(timeStep) {}
    void add(const CourseStep& step, double seconds, double metres, bool steady);
    void finish();

private:
    CourseRide& into;
    NormalisedSum normalised;
};

} // namespace torvane
