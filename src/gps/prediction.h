// What the model asks of a rider along a finished track: at each row the gear and cadence of the rider's habits, and
// the power for the speed, acceleration, slope, wind and air of that place. The settings are those of an analysis.
#pragma once

#include "core/parameter_block.h"
#include "core/progress.h"
#include "fit/fit_passes.h"
#include "gps/gps_record.h"
#include "gps/smoothing.h"
#include "model/brake_heat.h"
#include "model/evaluation.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

namespace torvane {

// The model on its way along a track.
struct TrackModel {
    const Model& model; // outlives the track
    const ParameterBlock& settings;
    uint32_t analysisFlags;
    BrakeMaterials materials;
    double airTemperature; // Cel, where the rows have none of their own
    Evaluation now = {};   // of the last row, with its slope, wind and air
    // Cel and m that its air was worked out of
    double lastTemperature = std::numeric_limits<double>::quiet_NaN(), lastAltitude = lastTemperature;
    int gearPlace = 0; // where the search for its gear ended
};

// m/s at which a row's step is ridden. Classic, the speed of the row; of the road, the mean of the step that leads to
// it, so that what its accelerations ask for adds up to the kinetic energy.
double speedOfStep(const TrackModel& track, std::span<const GpsRecord> records, size_t i);

// Thrust power in W that a row asks for at a speed in m/s, negative where the road gives more than it takes; without
// its acceleration where that cannot be known. Reads loads, wind and air as they stand.
double powerAskedBy(TrackModel& track, const GpsRecord& record, double speed);

// With the conditions that hold for all rows.
TrackModel startTrackModel(const Model& model, const ParameterBlock& settings, const FitSummary& summary,
                           uint32_t analysisFlags);
// Those of one row; sets its temperature unless it has its own. A file with neither timestamps nor temperatures, and a
// flat course without, keep the air as it stands.
void prepareModelForRecord(TrackModel& track, GpsRecord& record);

// Rewrites cadence and power of every row, of excluded ones as well, as far as the settings ask for it. A row that asks
// for no power has no cadence either. No row gets a power that is infinite or no number: a bicycle that stands still
// against a head wind counts as 0 W.
TrackPass predictTrack(TrackModel& track, std::span<GpsRecord> records, Progress* progress = nullptr);

} // namespace torvane
