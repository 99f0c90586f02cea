#include "tracks/track_time.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace torvane {

namespace {

// Takes what stands in front, as long as it fits.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest(text) {}

    // Exactly so many digits.
    int digits(size_t count)
    {
        int value = 0;
        for (size_t i = 0; i < count; ++i) {
            if (rest.empty() || rest[0] < '0' || rest[0] > '9')
                return fail();
            value = value * 10 + (rest[0] - '0');
            rest.remove_prefix(1);
        }
        return value;
    }
    void sign(char wanted)
    {
        if (!take(wanted))
            fail();
    }
    bool take(char wanted)
    {
        if (!rest.starts_with(wanted))
            return false;
        rest.remove_prefix(1);
        return true;
    }
    // What stands behind a decimal point, as a share of a second.
    double fraction()
    {
        size_t length = std::min(rest.find_first_not_of("0123456789"), rest.size());
        double value = 0, scale = 0.1;
        for (char digit : rest.substr(0, length)) {
            value += (digit - '0') * scale;
            scale /= 10;
        }
        rest.remove_prefix(length);
        return value;
    }
    bool atEnd() const
    {
        return rest.empty() && good;
    }

private:
    int fail()
    {
        good = false;
        return 0;
    }
    std::string_view rest;
    bool good = true;
};

// Seconds that a zone is ahead of UTC.
int zoneOffset(Scanner& text, bool& hasZone)
{
    if (text.take('Z') || text.take('z'))
        return 0;
    bool ahead = text.take('+');
    hasZone = ahead || text.take('-');
    if (!hasZone)
        return 0;
    int hours = text.digits(2);
    text.take(':');
    int offset = hours * 3600 + text.digits(2) * 60;
    return ahead ? offset : -offset;
}

} // namespace

std::optional<TrackTime> readTrackTime(std::string_view text)
{
    Scanner scanner(text);
    std::chrono::year year(scanner.digits(4));
    scanner.sign('-');
    std::chrono::month month(static_cast<unsigned>(scanner.digits(2)));
    scanner.sign('-');
    std::chrono::day day(static_cast<unsigned>(scanner.digits(2)));
    scanner.sign('T');
    int hour = scanner.digits(2);
    scanner.sign(':');
    int minute = scanner.digits(2);
    scanner.sign(':');
    int second = scanner.digits(2);
    TrackTime time;
    double part = scanner.take('.') || scanner.take(',') ? scanner.fraction() : 0;
    int offset = zoneOffset(scanner, time.hasZone);
    std::chrono::year_month_day date(year, month, day);
    if (!scanner.atEnd() || !date.ok() || hour > 23 || minute > 59 || second > 60)
        return std::nullopt;
    int64_t days = std::chrono::sys_days(date).time_since_epoch().count();
    time.seconds = static_cast<double>(days * 86400 + hour * 3600 + minute * 60 + second - offset) + part;
    return time;
}

} // namespace torvane
