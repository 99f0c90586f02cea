#include "gps/ride_laps.h"

#include "fit/base_type.h"
#include "fit/fit_walk.h"
#include "fit/message_fields.h"

#include <algorithm>
#include <ranges>

namespace torvane {

std::vector<LapTime> readLaps(const FitImage& image)
{
    std::vector<LapTime> laps;
    walkMessages(image, [&](const FitMessage& message) {
        if (!message.isData(messageLap))
            return;
        std::optional<int64_t> start = readValue(message.payload, findNumber(message, summaryStartTime));
        std::optional<int64_t> end = readValue(message.payload, findNumber(message, timestampField));
        if (start && end && *start < *end)
            laps.push_back({static_cast<uint32_t>(*start), static_cast<uint32_t>(*end)});
    });
    std::ranges::stable_sort(laps, {}, &LapTime::end);
    return laps;
}

RiddenRows rowsOf(const LapTime& lap, RiddenRows rows)
{
    auto behind = [&](uint32_t time) {
        auto timeOf = [&](size_t row) { return rows[row].timestamp; };
        return *std::ranges::upper_bound(std::views::iota(size_t{0}, rows.size()), time, {}, timeOf);
    };
    size_t first = behind(lap.start), end = behind(lap.end);
    return first < end ? rows.subspan(first, end - first) : RiddenRows();
}

} // namespace torvane
