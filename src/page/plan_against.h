// Two plans of one course side by side: where the minutes are.
#pragma once

#include "page/page.h"
#include "plan/course_answer.h"

#include <string>
#include <vector>

namespace torvane {

struct ShownPlan {
    AnsweredCourse answered = {};
    std::vector<PlannedSecond> seconds = {}; // of its ride
    std::string label = {};                  // what makes it another one: "pacing=plan"
};

// A section with what both come to, the time between them along the way, and their powers and speeds.
void addAgainst(HtmlPage& page, const ShownPlan& plan, const ShownPlan& against);

} // namespace torvane
