// The page of a planned course.
#pragma once

#include "plan/course_answer.h"

#include <string>
#include <vector>

namespace torvane {

// HTML. The seconds are those of the course's ride, the notes those that the report has.
std::string coursePage(const Model& model, const AnsweredCourse& answered, const std::vector<PlannedSecond>& seconds,
                       const std::vector<std::string>& notes);

} // namespace torvane
