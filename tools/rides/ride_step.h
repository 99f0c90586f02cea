// One time step of a made ride: the program's own model moves a rider of known power along a known road. What the
// analysis predicts of such a ride must be that power again.
#pragma once

#include "gps/track_geometry.h"
#include "model/model.h"

#include <random>

namespace torvane {

// The road at one place.
struct Road {
    double altitude; // m
    double rise;     // m per m
    double heading;  // deg
};

struct Weather {
    double temperature = 20;  // Cel
    double windSpeed = 0;     // m/s
    double windDirection = 0; // deg, where it comes from
    Physics physics = Physics::classic;
};

// The rider's place. Speed in m/s, not 0: power over no speed is no finite force.
struct Place {
    double distance = 0, speed = 8, latitude = 47, longitude = 8;
};

// The cadence in rpm at a speed, in the gear nearest to the usual cadence.
double riddenCadence(const Model& model, double speed);

// Moves the place on by dt seconds under a power at the pedals in W; braking takes that much speed more, in m/s2.
void rideOn(const Model& model, const Road& road, const Weather& weather, double power, double braking, double dt,
            Place& place);

// Roughly normal, and the same on every platform.
double noise(std::mt19937& random, double deviation);

} // namespace torvane
