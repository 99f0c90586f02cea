// What the benchmarks work on: a model with the defaults in force, and rides made by the model itself.
#pragma once

#include "gps/ride_maker.h"

#include <string>

namespace torvane {

constexpr int seasonRide = 100000; // records of the ride that most figures are for

// The model of a fresh process.
Model plainModel();

// A file with a ride of so many records: time, position, altitude, distance, speed, heart rate and temperature, 23
// bytes each; file_id, one lap, one session, one activity. In two parts: the records are defined again half way, and
// there are no lap, session and activity. As GPX: time, position, altitude, heart rate. Written once for each process,
// into a folder of its own.
enum class MadeFile { whole, inTwoParts, gpx };
const std::string& madeRide(int records, MadeFile kind = MadeFile::whole);

// Where benchmarks may write.
const std::string& benchmarkFolder();

} // namespace torvane
