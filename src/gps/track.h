// The raw rows made into a track that a model can run along: headings, distances, speeds, accelerations and slopes,
// with outliers rejected and noise smoothed where the flags ask for it.
#pragma once

#include "core/progress.h"
#include "gps/gps_record.h"

#include <cstdint>
#include <span>

namespace torvane {

// Works on rows whose sectors are formed. unrealInclination in %: a steeper slope counts as 0. unrealAccele in m/s2: an
// acceleration above it, beyond what the slope alone gives, counts as 0; nothing is rejected on the braking side.
// No infinite and no undefined number remains in speed and acceleration: a step without time or way has acceleration 0.
// Ends on the way where the progress is to stop.
void refineTrack(std::span<GpsRecord> records, double unrealInclination, double unrealAccele, uint32_t analysisFlags,
                 const Progress* progress = nullptr);

} // namespace torvane
