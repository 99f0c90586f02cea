// What the model asks of a rider along a finished track: at each row the gear and cadence of the rider's habits, and
// the power for the speed, acceleration, slope, wind and air of that place. The settings are those of an analysis.
#pragma once

#include "core/parameter_block.h"
#include "gps/gps_record.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace torvane {

// Thrust power in W that a row asks for, negative where the road gives more than it takes; without its acceleration
// where that cannot be known. Reads loads, wind and air in runState as they stand.
double powerAskedBy(const GpsRecord& record, uint32_t analysisFlags);

// Conditions in runState that hold for all rows, then those of one row; sets the row's temperature unless it has its
// own. A file with neither timestamps nor temperatures, and a flat course without, keep the air as it stands.
void prepareModelForTrack(const ParameterBlock& settings, uint32_t analysisFlags);
void prepareModelForRecord(std::span<GpsRecord> records, const ParameterBlock& settings, uint32_t analysisFlags,
                           size_t index);

// Rewrites cadence and power of every row, of excluded ones as well, as far as the settings ask for it. A row that asks
// for no power has no cadence either. No row gets a power that is infinite or no number: a bicycle that stands still
// against a head wind counts as 0 W.
void predictTrack(std::span<GpsRecord> records, const ParameterBlock& settings, uint32_t analysisFlags);

} // namespace torvane
