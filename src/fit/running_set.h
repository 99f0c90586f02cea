// The sums over the records of a session or lap that is being written, and the averages that come of them.
// What a record adds to them differs from writer to writer and stands there.
#pragma once

#include "fit/fit_passes.h"

#include <cstdint>

namespace torvane {

struct RunningSet {
    SessionLapEntry entry; // its recordCount is not used
    uint32_t recordCount;
    uint32_t cadenceCount; // records with a cadence above 0
    uint32_t powerCount;   // records with a power above 0
    uint32_t lastTime;     // FIT seconds of the last record
    // Sums, in the units of the entry's averages
    uint64_t altitude;
    uint64_t heartRate;
    uint64_t cadence;
    uint64_t speed;
    uint64_t power;
    uint64_t gpsAccuracy;
    int64_t temperature;
};

// Fills in the entry's averages. Coasting does not lower those of cadence and power: they are taken over the records
// above 0. The average speed is distance over time where the timer runs, else the mean of the records.
void finaliseSessionLap(RunningSet& set);

} // namespace torvane
