// The data block of a prepared file: its records a second apart under one definition, and the other messages in their
// places between them. A definition is written when a message needs it.
#pragma once

#include "core/progress.h"
#include "gps/activity.h"
#include "gps/ride_summaries.h"

#include <vector>

namespace torvane {

// False where the block would be larger than `mostBytes`.
bool writePrepared(const Activity& activity, const SummaryRules& rules, size_t mostBytes, std::vector<uint8_t>& block,
                   PrepareFindings& findings, Progress* progress = nullptr);

// Whether a file has the marks of one that was written here: that of a rewritten file, and its way to define records.
// In such a file "invalid" markers are missing values.
bool hasPreparedForm(const FitImage& image);

} // namespace torvane
