#include "report/iso_times.h"

#include "core/text.h"
#include "report/fit_report.h"

namespace torvane {

std::string_view IsoTimes::of(uint32_t timestamp)
{
    constexpr uint32_t day = 86400;
    if (text.empty() || timestamp / day != today) {
        today = timestamp / day;
        constexpr int32_t julianDayOfEpoch = 2447892; // 31 December 1989
        CalendarDate date = julianToCalendar(julianDayOfEpoch + static_cast<int32_t>(today));
        text = formatText("%04d-%02d-%02dT00:00:00Z", date.year, date.month, date.day);
    }
    put(11, timestamp % day / 3600);
    put(14, timestamp % 3600 / 60);
    put(17, timestamp % 60);
    return text;
}

void IsoTimes::put(size_t at, uint32_t number)
{
    text[at] = static_cast<char>('0' + number / 10);
    text[at + 1] = static_cast<char>('0' + number % 10);
}

} // namespace torvane
