// The power of another ride, as it was given along the road.
#pragma once

#include "plan/course_ride.h"

#include <string>
#include <vector>

namespace torvane {

struct RiddenPlace {
    double latitude, longitude; // deg
};

struct RiddenPower {
    PowerProfile profile = {};
    double length = 0;                    // m of that ride
    std::vector<RiddenPlace> places = {}; // along it, where it has positions
};

// Means over 200 m of road of what a ride measured while it moved, spikes clipped. The codes of loadPrepared;
// planWithoutPower where most of that road has no power.
StatusCode readRiddenPower(const std::string& path, RiddenPower& ridden, Progress* progress = nullptr);

} // namespace torvane
