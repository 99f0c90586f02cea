// A planned course in words, and the sentences about what its track lacks.
#pragma once

#include "core/screens.h"
#include "plan/course_answer.h"

#include <string>
#include <vector>

namespace torvane {

constexpr const char* whatIfNames[whatIfCount] = {"10 W more", "1 kg less", "2 m/s head wind", "5 % less drag",
                                                  "one gear lower"};

// A sentence for everything of the track that was mended or is missing, and, where there is a plan, for where the rider
// cannot ride.
std::vector<std::string> courseNotes(const AnsweredCourse& answered, StatusCode code);

// Replaces the lower pane.
void reportCourse(Screens& screens, const Model& model, const AnsweredCourse& answered,
                  const std::vector<std::string>& notes);

// Why there is no plan, into the lower pane and the status line.
void reportNoCourse(Screens& screens, const AnsweredCourse& answered, StatusCode code,
                    const std::vector<std::string>& notes);

} // namespace torvane
