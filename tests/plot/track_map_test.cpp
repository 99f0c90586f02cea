// A track as a map: true distances, gaps, and ends.
#include "plot/track_map.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace torvane {

namespace {

constexpr double noPlace = std::numeric_limits<double>::quiet_NaN();

int waysOf(const Picture& picture, int pieces = 0)
{
    for (const PictureItem& item : picture.items)
        if (const auto* line = std::get_if<PictureLine>(&item); line && line->width >= 2 * picture.perPixel)
            ++pieces;
    return pieces;
}

// A square of 2 km in Europe's north, and one that lies on both sides of the 180th meridian.
TEST(TrackMap, DistancesAreTrueBothWays)
{
    for (double middle : {20.0, 180.0, -180.0}) {
        double north = 1.0 / 111.19492664455873, east = north / std::cos(60 * std::numbers::pi / 180);
        double latitudes[] = {60 - north, 60 - north, 60 + north, 60 + north};
        double longitudes[] = {std::remainder(middle - east, 360), std::remainder(middle + east, 360),
                               std::remainder(middle + east, 360), std::remainder(middle - east, 360)};
        TrackScale scale({latitudes, longitudes}, {800, 400});
        double wide = scale.x(longitudes[1]) - scale.x(longitudes[0]);
        EXPECT_NEAR(wide, scale.y(latitudes[0]) - scale.y(latitudes[2]), 1e-6) << middle;
        EXPECT_NEAR(wide, 2000 * scale.pixelsPerMetre, 1e-6) << middle;
        EXPECT_GT(wide, 250) << middle;
    }
}

TEST(TrackMap, GapsAndColoursBreakTheLine)
{
    double latitudes[] = {50, 50.01, noPlace, 50.02, 50.03, 50.04}, longitudes[] = {8, 8, 8, 8, 8, 8};
    double power[] = {100, 100, 100, 100, 300, 300};
    EXPECT_EQ(waysOf(drawTrackMap({latitudes, longitudes}, {}, {600, 600})), 2);
    EXPECT_EQ(waysOf(drawTrackMap({latitudes, longitudes}, {"power (W)", power}, {600, 600})), 3);
    double nowhere[] = {noPlace, noPlace};
    EXPECT_TRUE(drawTrackMap({nowhere, nowhere}, {}, {600, 600}).items.empty());
}

} // namespace

} // namespace torvane
