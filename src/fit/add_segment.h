// A segment of records while messages are added: all that stands from one definition of records to the next.
#pragma once

#include "fit/fit_walk.h"
#include "fit/running_set.h"

namespace torvane {

// Sums of a segment; its entry becomes the added lap and session.
struct Segment {
    RunningSet set = {};
    uint16_t threshold = 0;          // mm/s, slower records do not count
    uint32_t minimumInterval = 3600; // s, smallest step between counted records so far
    uint32_t firstDistance = 0;      // 1/100 m
};

// Adds a record message to the sums, if it is fast enough; one without a speed stands still.
void countRecord(Segment& segment, const FitMessage& message);

} // namespace torvane
