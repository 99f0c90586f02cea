// An activity as samples with presence by field, and the messages between them. Reads; repairs nothing but the order
// of time, since a sample without its place in time can stand nowhere.
#pragma once

#include "fit/fit_image.h"
#include "gps/prepare_findings.h"
#include "gps/ride_fields.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace torvane {

struct RideSample {
    uint32_t timestamp = 0;                          // FIT seconds; rising from sample to sample
    uint16_t known = 0;                              // bit by RideField: the value was measured, or bridged
    bool shifted = false;                            // the track goes on elsewhere from here
    bool open = false;                               // nothing may be filled in between this sample and the next
    std::array<int32_t, rideFieldCount> values = {}; // as stored

    bool has(size_t field) const
    {
        return (known >> field & 1) != 0;
    }
    void set(size_t field, int32_t value)
    {
        values[field] = value;
        known = static_cast<uint16_t>(known | 1u << field);
    }
    void clear(size_t field)
    {
        known = static_cast<uint16_t>(known & ~(1u << field));
    }
};
static_assert(rideFieldCount <= 16);

// A message that is no record, as views into the image that was read.
struct OtherMessage {
    std::span<const uint8_t> definition; // the definition message that holds for it
    std::span<const uint8_t> payload;
    uint16_t global = 0;
    bool compressed = false;
    uint32_t timestamp = 0;   // FIT seconds, 0 none
    size_t samplesBefore = 0; // samples in front of it
};

// From stop to start of the timer, FIT seconds.
struct Pause {
    uint32_t from, to;
};

struct Activity {
    uint8_t fileType = 0;
    std::vector<uint8_t> sessionSports; // without "invalid" ones
    std::vector<uint8_t> lapSports;
    std::vector<RideSample> samples;
    std::vector<OtherMessage> others;
    std::vector<Pause> pauses;
};

// Of equal or backward timestamps the first sample stands; one that leaps ahead by more than gapLimit seconds, and is
// alone in that, goes. Compressed timestamps count from the last full one of any message. The image has to outlive the
// activity. 0, fitInvalid, or fitTooLarge.
StatusCode readActivity(const FitImage& image, uint32_t gapLimit, Activity& activity, PrepareFindings& findings);

// fitSessionSportsDiffer, without sessions fitLapSportsDiffer, when there are several sports, else 0.
StatusCode sportsOf(const Activity& activity);

} // namespace torvane
