// A course described leg by leg, laid out metre by metre for a rider to follow.
#pragma once

#include "rides/ride_step.h"

#include <vector>

namespace torvane {

struct Leg {
    double length;    // m
    double rise;      // %
    double turn;      // deg, to the right, spread over the leg
    double power;     // W at the pedals, on the mean
    double limit = 0; // kph that the rider does not exceed here; 0: none
};

// A stop on the way. A paused device writes nothing meanwhile; another one goes on writing a speed of 0.
struct RideStop {
    double distance; // m
    int seconds;
    bool paused;
};

struct CourseMetre {
    Road road;
    double power; // W
    double limit; // m/s that lets the rider brake in time for all that comes
};

using Course = std::vector<CourseMetre>; // at every metre from the start; at least 2

// Ends with a stop.
Course layOut(const std::vector<Leg>& legs, const std::vector<RideStop>& stops, double altitude, double heading);

Road roadAt(const Course& course, double distance);
// The metre that a distance lies in; the last one beyond the end.
const CourseMetre& metreAt(const Course& course, double distance);

} // namespace torvane
