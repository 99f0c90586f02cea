// How far the speeds of a ride can be trusted from one second to the next.
#pragma once

#include "gps/gps_record.h"

#include <span>

namespace torvane {

// m/s of noise, below which smoothing takes more than it gives: it mixes the seconds of braking, in which nobody
// pedals, with those in which one sets off again. Devices have 0.01 and more.
constexpr double cleanSpeed = 0.004;

// m/s, standard deviation of one row's speed about a smooth course of it, or of the steps that it is told in where
// these are coarser. Of rows that stand a second apart; 1 where too few do.
double noiseOfSpeed(std::span<const GpsRecord> records);

} // namespace torvane
