// Rides with a power meter, made by the model for a rider whose drag and rolling are known, with the faults of devices.
#pragma once

#include "model/model.h"
#include "plan/measured_ride.h"

namespace torvane {

enum class Terrain { flat, rolling, hilly };
enum class Way { loop, thereAndBack, oneWay };

struct MadeRider {
    double factor = 1;  // of the air drag, against the profile
    double rolling = 1; // likewise
    double load = 0;    // kg, more than the profile knows: bottles
};

struct MeteredRide {
    Terrain terrain = Terrain::rolling;
    Way way = Way::loop;
    double legLength = 8000;  // m of a round, or until the turn
    double windSpeed = 0;     // m/s, with gusts of 30 percent
    double windDirection = 0; // deg
    double power = 200;       // W, about
    int seconds = 3600;
    unsigned seed = 1;
    double altitudeNoise = 1;    // m, over 30 s
    double meterError = 0.01;    // standard deviation of its scale
    double thermometerError = 3; // Cel, likewise: devices stand in the sun
};

MeasuredRide makeMeteredRide(const Model& profile, const MadeRider& rider, const MeteredRide& made);

// The i-th of the rides that the figures of calibration are told for.
struct MadeCase {
    MadeRider rider;
    MeteredRide ride;
};
MadeCase madeCase(unsigned i, double windSpeed);

} // namespace torvane
