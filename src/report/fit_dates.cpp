// Dates and times of day out of FIT timestamps. All in UTC.
#include "core/text.h"
#include "report/fit_report.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr uint32_t secondsPerDay = 86400;

std::string blanksToZeros(std::string text)
{
    std::replace(text.begin(), text.end(), ' ', '0');
    return text;
}

// A division of the calendar rules, without its fraction.
int64_t wholeOf(double value)
{
    return static_cast<int64_t>(value);
}

} // namespace

std::string formatTimeOfDay(uint32_t timestamp)
{
    std::string text;
    appendTimeOfDay(text, timestamp);
    return text;
}

void appendTimeOfDay(std::string& text, uint32_t timestamp)
{
    uint32_t seconds = timestamp % secondsPerDay;
    for (uint32_t number : {seconds / 3600, seconds / 60 % 60, seconds % 60}) {
        const char part[] = {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10), ':'};
        text.append(part, sizeof part);
    }
    text.pop_back();
}

std::string formatDateTime(uint32_t timestamp)
{
    constexpr int32_t julianDayOfEpoch = 2447892; // 31 December 1989
    constexpr const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    constexpr const char* weekdays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    CalendarDate date = julianToCalendar(static_cast<int32_t>(timestamp / secondsPerDay) + julianDayOfEpoch);
    std::string text =
        formatText("%2d,%s,%4d,%s,", date.day, months[date.month - 1], date.year, weekdays[date.weekday]);
    return blanksToZeros(text) + formatTimeOfDay(timestamp);
}

CalendarDate julianToCalendar(int32_t julianDay)
{
    constexpr int32_t firstCorrectedDay = 588829;
    int64_t j = julianDay;
    int64_t b = j;
    if (j >= firstCorrectedDay) {
        int64_t centuries = wholeOf(((j - 1867216) - 0.25) / 36524.25);
        b = j + 1 + centuries - wholeOf(centuries * 0.25);
    }
    b += 1524;
    int64_t years = wholeOf(((b - 2439870) - 122.1) / 365.25 + 6680.0);
    int64_t daysOfYears = 365 * years + wholeOf(years * 0.25);
    int64_t month = wholeOf((b - daysOfYears) / 30.6001);

    CalendarDate date = {};
    date.day = static_cast<int32_t>(b - wholeOf(month * 30.6001) - daysOfYears);
    date.month = static_cast<int32_t>(month - 1 > 12 ? month - 13 : month - 1);
    date.year = static_cast<int32_t>(years - 4715);
    if (date.month > 2)
        --date.year;
    if (date.year <= 0) // no year 0
        --date.year;
    date.weekday = static_cast<int32_t>((j + 1) % 7);
    return date;
}

} // namespace torvane
