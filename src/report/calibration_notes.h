// What is doubtful in a calibration, and why a ride could not be used: a sentence each.
#pragma once

#include "plan/calibrate.h"

#include <span>
#include <string>
#include <vector>

namespace torvane {

// Behind a number of seconds: why these are left out.
constexpr const char* leftOutNames[leftOutCount] = {"used",          "below 3 m/s or standing",
                                                    "without power", "above 1500 W",
                                                    "braking",       "in runs too short for half a minute"};

// Rides that were left out, then doubts of the answer.
std::vector<std::string> calibrationNotes(const CalibrationAnswer& answer, std::span<const MeasuredRide> rides);

// Why nothing was saved; empty for any other code.
std::string calibrationFailure(const CalibrationAnswer& answer, const Model& model, StatusCode code);

} // namespace torvane
