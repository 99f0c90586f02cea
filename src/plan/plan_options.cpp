#include "plan/plan_options.h"

#include <algorithm>
#include <charconv>

namespace torvane {

namespace {

// Reads a number and what stands behind it, and takes both off the text.
bool takeNumber(std::string_view& text, double& value)
{
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || !(value >= 0))
        return false;
    text.remove_prefix(static_cast<size_t>(end - text.data()));
    return true;
}

bool takeWord(std::string_view& text, std::string_view word)
{
    if (!text.starts_with(word))
        return false;
    text.remove_prefix(word.size());
    return true;
}

constexpr double longestStops = 864000; // s, together: each second of a ride is a row

// "10min", "300s", "1h".
bool takeDuration(std::string_view& text, double& seconds)
{
    if (!takeNumber(text, seconds))
        return false;
    if (takeWord(text, "min"))
        seconds *= 60;
    else if (takeWord(text, "h"))
        seconds *= 3600;
    else if (!takeWord(text, "s"))
        return false;
    return seconds <= longestStops;
}

void skipBlanks(std::string_view& text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == ','))
        text.remove_prefix(1);
}

struct Stops {
    std::vector<Stop> placed = {};
    int32_t even = 0;
    double evenSeconds = 0;

    double together() const // s
    {
        double sum = even * evenSeconds;
        for (const Stop& stop : placed)
            sum += stop.seconds;
        return sum;
    }
};

// "3x10min" or "40:10min".
bool takeOne(std::string_view& text, Stops& stops)
{
    constexpr double mostStops = 100;
    double number = 0, seconds = 0;
    if (!takeNumber(text, number))
        return false;
    bool even = takeWord(text, "x");
    if (!(even || takeWord(text, ":")) || !takeDuration(text, seconds))
        return false;
    if (!even) {
        stops.placed.push_back({number * 1000, seconds});
        return stops.placed.size() <= mostStops;
    }
    if (stops.even != 0 || number > mostStops || number != static_cast<int32_t>(number))
        return false;
    stops.even = static_cast<int32_t>(number);
    stops.evenSeconds = seconds;
    return true;
}

} // namespace

bool takeStops(std::string_view text, PlanOptions& options)
{
    Stops stops;
    for (skipBlanks(text); !text.empty(); skipBlanks(text))
        if (!takeOne(text, stops))
            return false;
    if (stops.together() > longestStops)
        return false;
    std::ranges::sort(stops.placed, {}, &Stop::distance);
    options.stops = stops.placed;
    options.evenStops = stops.even;
    options.evenStopSeconds = stops.evenSeconds;
    return true;
}

} // namespace torvane
