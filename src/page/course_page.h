// The page of a planned course.
#pragma once

#include "page/plan_against.h"

#include <string>
#include <vector>

namespace torvane {

// HTML. The notes are those that the report has; another plan of the same course beside it, or null.
std::string coursePage(const Model& model, const ShownPlan& plan, const std::vector<std::string>& notes,
                       const ShownPlan* against = nullptr);

} // namespace torvane
