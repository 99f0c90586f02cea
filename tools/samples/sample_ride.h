// Rides a described course by the program's own physics and notes what a device on the handlebar would: once a second,
// with the noise of its receiver.
#pragma once

#include "gps/gps_record.h"
#include "samples/course.h"

#include <cstdint>
#include <vector>

namespace torvane {

struct RideTask {
    uint32_t start;             // s since the FIT epoch
    double latitude, longitude; // deg
    double altitude;            // m
    double heading;             // deg
    Weather weather;            // the temperature at the start
    std::vector<Leg> legs;
    std::vector<RideStop> stops;
};

// Times of the ride at which the device stopped and went on.
struct DevicePause {
    uint32_t stopped, resumed; // s since the FIT epoch
};

struct RiddenTrack {
    GpsRecords records; // with heart rate; power and cadence as a power meter measures them
    std::vector<DevicePause> pauses;
};

// The same numbers every time.
RiddenTrack ride(const Model& model, const RideTask& task);

} // namespace torvane
