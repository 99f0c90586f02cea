// Rides and courses as phones and web pages give them: GPX 1.0 and 1.1, and TCX. Points as they stand there; nothing is
// repaired.
#pragma once

#include "core/byte_source.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace torvane {

constexpr double notThere = std::numeric_limits<double>::quiet_NaN();

struct TrackPoint {
    double time = notThere;                                      // s since 1970, UTC
    double latitude = notThere, longitude = notThere;            // deg; both or none
    double elevation = notThere;                                 // m
    double distance = notThere;                                  // m, as the device counted it
    double speed = notThere;                                     // m/s
    float heartRate = std::numeric_limits<float>::quiet_NaN();   // 1/min
    float cadence = std::numeric_limits<float>::quiet_NaN();     // 1/min
    float power = std::numeric_limits<float>::quiet_NaN();       // W
    float temperature = std::numeric_limits<float>::quiet_NaN(); // Cel
};

enum class TrackFormat { gpx, tcx };

// Where something begins, as an index into the points.
struct TrackLeg { // a track of GPX, an activity of TCX
    size_t first = 0;
    std::string sport = {}; // as the file names it; empty: not named
};

struct Tracks {
    TrackFormat format = TrackFormat::gpx;
    std::vector<TrackPoint> points;
    std::vector<TrackLeg> legs;
    std::vector<size_t> laps;     // of TCX
    std::vector<size_t> segments; // recording began, or went on after a pause
    bool planned = false;         // a route or a course: nobody has ridden it yet
    size_t empty = 0;             // segments without a point
    // Times that could not be read, and those that named no zone and count as UTC.
    size_t timesUnreadable = 0, timesWithoutZone = 0;
};

enum class TrackResult {
    ok,
    empty, // well-formed, but without a point of a track, a route, an activity or a course
    sourceFault,
    notWellFormed,
    doctype,
    otherRoot, // XML of another kind
    tooDeep,   // beyond the bounds of XML that is read here
    noParser,
};

struct TrackReading {
    TrackResult result = TrackResult::ok;
    SourceFault fault = SourceFault::none; // beside sourceFault
    Tracks tracks = {};
};

// Reads a document, in any encoding that asUtf8 knows. Points of routes count only where no track has a point.
TrackReading readTracks(NextPiece pieces);

} // namespace torvane
