// Which records count: the ride divided into sectors, runs at or above the threshold speed without a missing sample.
// Also the distances and speeds that a file lacks, since the division needs them. Rows in, rows out; smooths nothing.
#pragma once

#include "gps/gps_record.h"

#include <cstdint>
#include <span>

namespace torvane {

// Sets `sector` of every row, 0 for an excluded one, and first the distance and speed that the flags ask for.
// thresholdSpeed in m/s. False when no sector was formed.
bool formSectors(std::span<GpsRecord> records, double thresholdSpeed, uint32_t analysisFlags);

// Distance of every row along the great circles between positions, 0 at the first.
void distanceFromPositions(std::span<GpsRecord> records);

// Speed of every row from distances and timestamps, taken so that the mean of two speeds covers the step between them:
// a wrong first value swings on through the track until smoothing absorbs it. A step without time tells no speed; the
// row keeps that of the row before, and the first takes that of the first step with time. Time differences are
// unsigned.
void speedFromDistance(std::span<GpsRecord> records);

} // namespace torvane
