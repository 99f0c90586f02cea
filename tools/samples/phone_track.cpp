#include "samples/phone_track.h"

#include "core/text.h"
#include "fit/iso_times.h"

namespace torvane {

namespace {

constexpr uint32_t secondsBetweenPoints = 4;

void appendPoint(std::string& text, const GpsRecord& row, IsoTimes& times)
{
    appendFormat(text, "   <trkpt lat=\"%.6f\" lon=\"%.6f\"><ele>%.1f</ele><time>%s</time></trkpt>\n", row.latitude,
                 row.longitude, row.altitude, times.of(row.timestamp).data());
}

} // namespace

Bytes phoneTrack(const RiddenTrack& track)
{
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<gpx version=\"1.1\" creator=\"a phone\" xmlns=\"http://www.topografix.com/GPX/1/1\">\n"
                       " <trk>\n  <name>Evening ride</name>\n  <type>cycling</type>\n  <trkseg>\n";
    IsoTimes times;
    uint32_t due = 0;
    for (const GpsRecord& row : track.records) {
        if (row.timestamp < due)
            continue;
        appendPoint(text, row, times);
        due = row.timestamp + secondsBetweenPoints;
    }
    text += "  </trkseg>\n </trk>\n</gpx>\n";
    return {text.begin(), text.end()};
}

} // namespace torvane
