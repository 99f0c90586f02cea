#include "plan/course_gpx.h"

#include "core/text.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace torvane {

namespace {

using namespace std::chrono;

std::string isoTime(uint32_t fitSecond)
{
    constexpr sys_days fitEpoch = year(1989) / December / 31;
    sys_seconds time = fitEpoch + seconds(fitSecond);
    sys_days today = floor<days>(time);
    year_month_day date = today;
    hh_mm_ss clock(time - today);
    return formatText("%04d-%02u-%02uT%02d:%02d:%02dZ", int(date.year()), unsigned(date.month()), unsigned(date.day()),
                      int(clock.hours().count()), int(clock.minutes().count()), int(clock.seconds().count()));
}

bool hasPosition(const PlannedSecond& second)
{
    return std::isfinite(second.latitude) && std::isfinite(second.longitude);
}

void appendPlace(std::string& text, const char* element, const PlannedSecond& second)
{
    appendFormat(text, "<%s lat=\"%.7f\" lon=\"%.7f\">", element, second.latitude, second.longitude);
    if (std::isfinite(second.altitude))
        appendFormat(text, "<ele>%.2f</ele>", second.altitude);
}

void appendMarks(std::string& text, const PlannedFile& planned)
{
    for (const CourseMark& mark : planned.marks) {
        auto at = std::ranges::lower_bound(planned.seconds, mark.distance, {}, &PlannedSecond::distance);
        if (at == planned.seconds.end() || !hasPosition(*at))
            continue;
        appendPlace(text, "wpt", *at);
        appendFormat(text, "<name>%s</name></wpt>\n", xmlEscaped(mark.name).c_str());
    }
}

// Watts as the extension of a track point that other programs read.
void appendPoint(std::string& text, const PlannedSecond& second, uint32_t start)
{
    appendPlace(text, "trkpt", second);
    appendFormat(text, "<time>%s</time><extensions><power>%.0f</power></extensions></trkpt>\n",
                 isoTime(start + second.time).c_str(), second.power);
}

} // namespace

std::string courseGpx(const PlannedFile& planned)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx version=\"1.1\" creator=\"Torvane\" "
                       "xmlns=\"http://www.topografix.com/GPX/1/1\">\n";
    appendMarks(text, planned);
    appendFormat(text, "<trk><name>%s</name><type>cycling</type><trkseg>\n", xmlEscaped(planned.name).c_str());
    for (const PlannedSecond& second : planned.seconds)
        if (hasPosition(second))
            appendPoint(text, second, planned.start);
    return text + "</trkseg></trk>\n</gpx>\n";
}

} // namespace torvane
