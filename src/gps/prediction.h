// What the model asks of a rider along a finished track: at each row the gear and cadence of the rider's habits, and
// the power for the speed, acceleration, slope, wind and air of that place. Reads workingBlock's analysis settings.
#pragma once

#include "gps/gps_record.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace torvane {

// Whether the file lets an acceleration be known at all: from timestamps, or from distances.
bool knowsAcceleration();

// Thrust power in W that a row asks for, negative where the road gives more than it takes. The second form needs no
// acceleration. Reads loads, wind and air in runState as they stand.
double netPowerOf(const GpsRecord& record);
double steadyPowerOf(const GpsRecord& record);

// Conditions in runState that hold for all rows, then those of one row; sets the row's temperature unless it has its
// own. A file with neither timestamps nor temperatures, and a flat course without, keep the air as it stands.
void prepareModelForTrack(uint32_t analysisFlags);
void prepareModelForRecord(std::span<GpsRecord> records, uint32_t analysisFlags, size_t index);

// Rewrites cadence and power of every row, of excluded ones as well, as far as the settings ask for it. A row that asks
// for no power has no cadence either. No row gets a power that is infinite or no number: a bicycle that stands still
// against a head wind counts as 0 W.
void predictTrack(std::span<GpsRecord> records, uint32_t analysisFlags);

} // namespace torvane
