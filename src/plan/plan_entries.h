// What the dialog of a course ahead asks for: the options of the plan, and what is written as text or says what the
// file is to be.
#pragma once

#include "plan/plan_options.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace torvane {

enum PlanFileType : int32_t { planCourseFile, planActivityFile, planFileTypeCount };
constexpr const char* planFileTypeLabels[planFileTypeCount] = {"course", "activity"};

// 0:00 of 1 January 2024 in FIT seconds: the day of a plan that tells no other, since no two runs are to differ.
constexpr uint32_t planDay = 1073001600;

struct PlanEntries {
    PlanOptions options = {};
    std::string asRidden = {}, stops = {}, start = {}; // as entered
    int32_t fileType = planCourseFile;                 // PlanFileType
};

// FIT seconds of "8:30", on the day of plans, or of "2026-05-01 8:30", in UTC; "T" for the blank, seconds and "Z"
// behind are taken as well. The day of plans for an empty text; none where it says nothing of the kind.
std::optional<uint32_t> startOf(std::string_view text);

} // namespace torvane
