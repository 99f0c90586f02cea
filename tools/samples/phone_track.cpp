#include "samples/phone_track.h"

#include "core/text.h"
#include "report/fit_report.h"

namespace torvane {

namespace {

constexpr uint32_t secondsBetweenPoints = 4;
constexpr uint32_t secondsPerDay = 86400;
constexpr int64_t fitEpochInJulianDays = 2447892; // 31 December 1989

// "2024-06-15T07:30:00Z"
std::string timeText(uint32_t timestamp)
{
    CalendarDate date = julianToCalendar(static_cast<int32_t>(fitEpochInJulianDays + timestamp / secondsPerDay));
    uint32_t second = timestamp % secondsPerDay;
    return formatText("%04d-%02d-%02dT%02u:%02u:%02uZ", date.year, date.month, date.day, second / 3600,
                      second / 60 % 60, second % 60);
}

void appendPoint(std::string& text, const GpsRecord& row)
{
    appendFormat(text, "   <trkpt lat=\"%.6f\" lon=\"%.6f\"><ele>%.1f</ele><time>%s</time></trkpt>\n", row.latitude,
                 row.longitude, row.altitude, timeText(row.timestamp).c_str());
}

} // namespace

Bytes phoneTrack(const RiddenTrack& track)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<gpx version=\"1.1\" creator=\"a phone\" xmlns=\"http://www.topografix.com/GPX/1/1\">\n"
                       " <trk>\n  <name>Evening ride</name>\n  <type>cycling</type>\n  <trkseg>\n";
    uint32_t due = 0;
    for (const GpsRecord& row : track.records) {
        if (row.timestamp < due)
            continue;
        appendPoint(text, row);
        due = row.timestamp + secondsBetweenPoints;
    }
    text += "  </trkseg>\n </trk>\n</gpx>\n";
    return {text.begin(), text.end()};
}

} // namespace torvane
