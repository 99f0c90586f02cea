// A measured ride as calibration balances its energy: second by second, without gaps, made smooth, with the power that
// reached the road and what the model needs to know of bicycle and air there.
#pragma once

#include "core/ride_choices.h"
#include "model/model.h"
#include "plan/measured_ride.h"

#include <cstddef>
#include <vector>

namespace torvane {

// The air along the heading is what it does by itself and what the wind adds; who has no positions heads nowhere.
struct ThrustSecond {
    double time = 0;      // s since the start of the ride
    double metres = 0;    // since the start
    double altitude = 0;  // m, mean over 15 s
    double speed = 0;     // m/s, mean over 3 s
    double east = 0;      // of the heading, of length 1
    double north = 0;     //
    double measured = 0;  // W, where the meter sits; no number where it is missing
    double thrust = 0;    // W of that which reached the road
    double airPower = 0;  // W for a cube of velocity in m/s, with a factor of 1
    double latitude = 0;  // deg; no number without positions
    double longitude = 0; // deg
};

// Seconds that follow one another: from the first up to the last, which is not among them.
struct SecondRange {
    size_t first = 0, last = 0;
    size_t size() const
    {
        return last - first;
    }
};

// What stays the same all over the ride.
struct Bicycle {
    double rollingForce = 0; // N
    double inertia = 0;      // kg, with what its wheels add
    double weight = 0;       // N
};

struct ThrustRide {
    std::vector<ThrustSecond> seconds;
    std::vector<SecondRange> stretches; // without a gap
    Bicycle bicycle = {};
    bool hasPositions = false;
};

constexpr uint32_t longestStep = 5; // s, longer ones are gaps

// `stage` is where the meter sits: pedaling, crank or hub. Seconds without altitude or speed are left out, as gaps.
ThrustRide thrustOf(const Model& model, const MeasuredRide& ride, Stage stage);

// What the model states for a factor of 1, by the physics of the road.
Model withoutFactor(const Model& model);

} // namespace torvane
