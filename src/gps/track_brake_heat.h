// The heat of both brakes along a predicted track: where nobody pedals and the road gives more than the ride shows, the
// difference went into the brakes.
#pragma once

#include "gps/prediction.h"

#include <cstddef>
#include <span>

namespace torvane {

// Makes the brakes of all rows; they stay zero unless power was predicted. Slope, wind and air are those of the last
// row throughout, in the physics of the road those of each.
void trackBrakeHeat(TrackModel& track, std::span<GpsRecord> records, BrakeRecords& brakes);

// One row: netPower in W is what the track asks of the rider, negative where it gives. Heats and cools both brakes for
// the whole seconds since the row before; none when time stood still or ran backwards.
void brakeHeatStep(const TrackModel& track, std::span<const GpsRecord> records, std::span<BrakeRecord> brakes,
                   double netPower, size_t index);

} // namespace torvane
