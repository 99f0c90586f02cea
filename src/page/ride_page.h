// The page of a recorded ride.
#pragma once

#include "gps/ride_answer.h"

#include <string>
#include <vector>

namespace torvane {

// HTML. The notes are those that the report has.
std::string ridePage(const Model& model, const AnsweredRide& ride, const std::vector<std::string>& notes);

} // namespace torvane
