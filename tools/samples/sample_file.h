// A ridden track as an activity file of a device: identification, timer events, records, laps, session, activity.
#pragma once

#include "rides/fit_builder.h"
#include "samples/sample_ride.h"

namespace torvane {

struct DeviceFile {
    bool powerMeter = false;          // records hold power and cadence
    bool summaries = true;            // laps, session and activity; without them only records, as after a crash
    std::vector<double> lapEnds = {}; // m; the last lap ends with the ride
    int64_t clockError = 0;           // s that the device's clock is late
    bool wideFields = false;          // speed and altitude as current devices write them
    uint32_t longestStep = 1;         // s between records where the speed hardly changes
    uint32_t meterFound = 0;          // s after the start: only from then on records define power and cadence
    uint32_t meterLost = UINT32_MAX;  // s after the start: for half a minute the meter gives nothing
};

Bytes activityFile(const RiddenTrack& track, const DeviceFile& file);

} // namespace torvane
