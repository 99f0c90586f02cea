#include "samples/planned_track.h"

#include "core/text.h"

#include <cmath>
#include <numbers>

namespace torvane {

Bytes plannedTrack(const Course& course, double latitude, double longitude, const char* name)
{
    constexpr double radians = std::numbers::pi / 180;
    constexpr size_t metresBetweenPoints = 15;
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<gpx version=\"1.1\" creator=\"a planner\" xmlns=\"http://www.topografix.com/GPX/1/1\">\n";
    appendFormat(text, " <trk>\n  <name>%s</name>\n  <trkseg>\n", name);
    for (size_t metre = 0; metre < course.size(); ++metre) {
        const Road& road = course[metre].road;
        if (metre % metresBetweenPoints == 0 || metre + 1 == course.size())
            appendFormat(text, "   <trkpt lat=\"%.6f\" lon=\"%.6f\"><ele>%.1f</ele></trkpt>\n", latitude, longitude,
                         road.altitude);
        latitude += std::cos(road.heading * radians) / metresPerDegree;
        longitude += std::sin(road.heading * radians) / metresPerDegree / std::cos(latitude * radians);
    }
    text += "  </trkseg>\n </trk>\n</gpx>\n";
    return {text.begin(), text.end()};
}

} // namespace torvane
