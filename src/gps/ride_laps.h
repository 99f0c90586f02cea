// The laps of a ride as its device has set them.
#pragma once

#include "fit/fit_image.h"
#include "gps/ridden_rows.h"

#include <cstdint>
#include <vector>

namespace torvane {

struct LapTime {
    uint32_t start, end; // FIT seconds
};

// Of the lap messages that know both, rising by their end.
std::vector<LapTime> readLaps(const FitImage& image);

// The rows whose steps lie in a lap.
RiddenRows rowsOf(const LapTime& lap, RiddenRows rows);

} // namespace torvane
