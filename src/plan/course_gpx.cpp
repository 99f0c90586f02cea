#include "plan/course_gpx.h"

#include "core/text.h"
#include "fit/iso_times.h"

#include <cmath>
#include <string_view>

namespace torvane {

namespace {

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
        const PlannedSecond& at = secondAt(planned, mark.distance);
        if (!hasPosition(at))
            continue;
        appendPlace(text, "wpt", at);
        appendFormat(text, "<name>%s</name></wpt>\n", xmlEscaped(mark.name).c_str());
    }
}

// Watts as the extension of a track point that other programs read.
void appendPoint(std::string& text, const PlannedSecond& second, std::string_view time)
{
    appendPlace(text, "trkpt", second);
    text.append("<time>").append(time);
    appendFormat(text, "</time><extensions><power>%.0f</power></extensions></trkpt>\n", second.power);
}

} // namespace

std::string courseGpx(const PlannedFile& planned)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx version=\"1.1\" creator=\"Torvane\" "
                       "xmlns=\"http://www.topografix.com/GPX/1/1\">\n";
    appendMarks(text, planned);
    appendFormat(text, "<trk><name>%s</name><type>cycling</type><trkseg>\n", xmlEscaped(planned.name).c_str());
    IsoTimes times;
    for (const PlannedSecond& second : planned.seconds)
        if (hasPosition(second))
            appendPoint(text, second, times.of(planned.start + second.time));
    text += "</trkseg></trk>\n</gpx>\n";
    return text;
}

} // namespace torvane
