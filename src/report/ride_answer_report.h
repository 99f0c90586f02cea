// What a ride cost, in words: the text of its answer, and the sentences about what is doubtful in it.
#pragma once

#include "core/screens.h"
#include "gps/ride_answer.h"

#include <string>
#include <string_view>
#include <vector>

namespace torvane {

// A sentence for everything that was mended or is doubtful; of a ride without an answer, by its code, also why.
std::vector<std::string> rideNotes(const AnsweredRide& ride, StatusCode code);

// Replaces the lower pane.
void reportRideAnswer(Screens& screens, const Model& model, const AnsweredRide& ride,
                      const std::vector<std::string>& notes);

// Behind the words of a code that says that there is no answer.
void reportRideNotes(Screens& screens, const std::vector<std::string>& notes);

} // namespace torvane
