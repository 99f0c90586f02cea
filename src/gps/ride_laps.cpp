#include "gps/ride_laps.h"

#include "fit/base_type.h"
#include "fit/fit_walk.h"
#include "fit/message_fields.h"

#include <algorithm>

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
        size_t low = 0, high = rows.size();
        while (low < high) {
            size_t middle = low + (high - low) / 2;
            if (rows[middle].timestamp <= time)
                low = middle + 1;
            else
                high = middle;
        }
        return low;
    };
    size_t first = behind(lap.start), end = behind(lap.end);
    return first < end ? rows.subspan(first, end - first) : RiddenRows();
}

} // namespace torvane
