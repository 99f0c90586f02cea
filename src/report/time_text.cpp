#include "report/time_text.h"

#include "core/text.h"

#include <algorithm>

namespace torvane {

namespace {

std::string clockText(int32_t hours, int32_t minutes, int32_t seconds)
{
    std::string text = formatText("%2d:%2d:%2dh", hours, minutes, seconds);
    std::replace(text.begin(), text.end(), ' ', '0');
    return text;
}

} // namespace

int32_t wholeSeconds(double seconds)
{
    constexpr double most = INT32_MAX;
    return seconds > 0.0 ? static_cast<int32_t>(std::min(seconds, most)) : 0;
}

std::string hms(int32_t seconds)
{
    return clockText(seconds / 3600, seconds / 60 % 60, seconds % 60);
}

std::string intensionText(const RideLength& length)
{
    int32_t minutes = length.intensionFirst[0];
    int32_t seconds = length.intensionSecond[0];
    int32_t kilometres = length.intensionFirst[1];
    int32_t metres = length.intensionSecond[1];
    std::string way =
        kilometres == 0 ? formatText("%dm", metres) : formatText("%5.3lfkm", metres / 1000.0 + kilometres);
    return way + " per " + clockText(minutes / 60, minutes % 60, seconds);
}

} // namespace torvane
