// An activity as samples with presence by field, and the messages between them. Reads; repairs nothing but the order
// of time (ride_clock.h), since a sample without its place in time can stand nowhere.
#pragma once

#include "fit/fit_image.h"
#include "gps/prepare_findings.h"
#include "gps/ride_fields.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
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

struct TimerEvent {
    uint32_t time;        // FIT seconds
    bool stops;           // else it starts
    size_t samplesBefore; // samples in front of it
    size_t other;         // its message
};

// A session or a lap among the others.
struct Summary {
    size_t other;                // its message
    bool isSession;              // else a lap
    uint32_t start = 0, end = 0; // FIT seconds; 0 unknown
    std::optional<uint8_t> sport = {};
    double timer = 0, meanSpeed = 0; // ms, mm/s, as the device counted; 0 unknown
};

struct Activity {
    uint8_t fileType = 0; // of its first file_id
    std::vector<RideSample> samples;
    std::vector<OtherMessage> others;
    std::vector<Summary> summaries;
    std::vector<TimerEvent> timer;
    std::vector<Pause> pauses;
    std::deque<std::vector<uint8_t>> made = {}; // bytes of messages that no image holds
};

// Compressed timestamps count from the last full one of any message. The image has to outlive the activity. 0,
// fitInvalid, or fitTooLarge.
StatusCode readActivity(const FitImage& image, Activity& activity, PrepareFindings& findings);

} // namespace torvane
