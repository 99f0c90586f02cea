#include "fit/iso_times.h"

#include "core/text.h"
#include "fit/fit_time.h"

#include <chrono>

namespace torvane {

std::string_view IsoTimes::of(uint32_t timestamp)
{
    constexpr uint32_t day = 86400;
    if (text.empty() || timestamp / day != today) {
        today = timestamp / day;
        using namespace std::chrono;
        year_month_day date = floor<days>(sys_seconds(seconds(fitEpoch + timestamp)));
        text = formatText("%04d-%02u-%02uT00:00:00Z", int(date.year()), unsigned(date.month()), unsigned(date.day()));
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
