// Times of track files.
#pragma once

#include <optional>
#include <string_view>

namespace torvane {

struct TrackTime {
    double seconds = 0;  // since 1970, UTC
    bool hasZone = true; // else it counts as UTC
};

// "2019-06-02T11:20:13.207+01:00": ISO 8601 with date and time to the second, any fraction, any zone. None where it is
// anything else, or no day of the calendar.
std::optional<TrackTime> readTrackTime(std::string_view text);

} // namespace torvane
