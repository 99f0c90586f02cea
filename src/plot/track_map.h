// A track as a map: north above, distances true around its middle, coloured by a value along the way, with start, end,
// an arrow to the north and a bar of a round length. There is nothing below the track: maps of the world are elsewhere.
#pragma once

#include "plot/chart.h"
#include "plot/picture.h"

#include <span>
#include <string>
#include <string_view>

namespace torvane {

// Degrees. A place without a number leaves a gap.
struct TrackWay {
    std::span<const double> latitude, longitude;
};

// How a track is coloured: by a value at each of its places. Of the values the lowest and the highest twentieth share
// the colours at the ends.
struct TrackColouring {
    std::string_view name = {};          // with its unit, "power (W)"
    std::span<const double> values = {}; // empty: all of one colour; no number: grey
};

// Where places stand on a map, in pixels from its left top corner.
class TrackScale {
public:
    TrackScale(const TrackWay& way, const ChartSize& size);

    bool empty() const
    {
        return !(pixelsPerMetre > 0);
    }
    double x(double longitude) const;
    double y(double latitude) const;
    // Metres to the east and to the north of the middle of the track.
    double east(double longitude) const;
    double north(double latitude) const;

    double em;                 // size of the letters, pixels
    double pixelsPerMetre = 0; // 0: no place of the track has a number

private:
    double middleLatitude = 0, middleLongitude = 0, shrink = 1; // of a degree of longitude
    double middleX, middleY;                                    // pixels
};

// Coordinates of the picture are eighths of a pixel.
Picture drawTrackMap(const TrackWay& way, const TrackColouring& colouring, const ChartSize& size);

} // namespace torvane
