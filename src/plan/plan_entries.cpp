#include "plan/plan_entries.h"

#include "fit/fit_time.h"

#include <charconv>
#include <chrono>

namespace torvane {

namespace {

using namespace std::chrono;

// Takes a number off the front, and the sign behind it where there is to be one.
bool takeNumber(std::string_view& text, int& number, char behind)
{
    auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (fault != std::errc() || number < 0)
        return false;
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    if (behind != 0 && !text.starts_with(behind))
        return false;
    text.remove_prefix(behind != 0);
    return true;
}

std::optional<sys_days> takeDay(std::string_view& text)
{
    int y = 0, m = 0, d = 0;
    if (!takeNumber(text, y, '-') || !takeNumber(text, m, '-') || !takeNumber(text, d, 0))
        return std::nullopt;
    year_month_day date = year(y) / m / d;
    constexpr int firstYear = 1990, lastYear = 2100; // whole years of FIT's seconds
    if (!date.ok() || y < firstYear || y > lastYear || (!text.starts_with(' ') && !text.starts_with('T')))
        return std::nullopt;
    text.remove_prefix(1);
    return date;
}

// Seconds of the day.
std::optional<uint32_t> takeClock(std::string_view text)
{
    int h = 0, m = 0, s = 0;
    if (!takeNumber(text, h, ':') || !takeNumber(text, m, 0))
        return std::nullopt;
    if (text.starts_with(':')) {
        text.remove_prefix(1);
        if (!takeNumber(text, s, 0))
            return std::nullopt;
    }
    if ((!text.empty() && text != "Z") || h > 23 || m > 59 || s > 59)
        return std::nullopt;
    return static_cast<uint32_t>((h * 60 + m) * 60 + s);
}

} // namespace

std::optional<uint32_t> startOf(std::string_view text)
{
    if (text.empty())
        return planDay;
    uint32_t day = planDay;
    if (text.find('-') != text.npos) {
        std::optional<sys_days> date = takeDay(text);
        if (!date)
            return std::nullopt;
        day = static_cast<uint32_t>(sys_seconds(*date).time_since_epoch().count() - fitEpoch);
    }
    std::optional<uint32_t> clock = takeClock(text);
    return clock ? std::optional(day + *clock) : std::nullopt;
}

} // namespace torvane
