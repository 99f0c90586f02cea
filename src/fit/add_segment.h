// A segment of records while messages are added: all that stands from one definition of records to the next.
#pragma once

#include "fit/fit_walk.h"
#include "fit/running_set.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace torvane {

// Sums of a segment; its entry becomes the added lap and session.
struct Segment {
    RunningSet set = {};
    uint16_t threshold = 0;          // mm/s, slower records do not count
    uint32_t minimumInterval = 3600; // s, smallest step between counted records so far
    uint32_t firstDistance = 0;      // 1/100 m
};

// Which fields of a definition of records count, and where the payload has them.
struct CountedFields {
    struct Field {
        uint32_t row; // of the table of what counts
        uint32_t offset;
    };
    std::vector<Field> fields = {}; // of a repeated field the last one; by row
    std::optional<uint32_t> speedOffset = {};
    bool bigEndian = false;
};
CountedFields countedFieldsOf(const LocalDefinition& definition);

// Adds a record to the sums, if it is fast enough; one without a speed stands still.
void countRecord(Segment& segment, const CountedFields& counted, std::span<const uint8_t> payload);

} // namespace torvane
