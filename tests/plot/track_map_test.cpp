// A track as a map: true distances, gaps, and ends.
#include "by_hand.h"

#include "plot/palette.h"
#include "plot/track_map.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

namespace torvane {

namespace {

constexpr double noPlace = std::numeric_limits<double>::quiet_NaN();

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
    }
}

// Letters of 10 pixels, and 172 pixels for a fiftieth of a degree from south to north: 86 for 1,112 m.
TEST(TrackMap, isDrawnAsByHand)
{
    double latitudes[] = {-0.01, -0.005, 0, noPlace, 0.005, 0.01}, longitudes[] = {7.98, 7.99, 8, 8, 8.01, 8.02};
    double power[] = {100, 150, 200, 200, 250, 300};
    ByHand map{{370 * 8, 240 * 8, {}, 8}};
    auto letters = [&](double x, double middle, const char* words) {
        map.text(x, middle - 5 / 0.87, words, 10 / 0.87, inkColour.light);
    };
    map.line({{13, 206}, {99, 163}}, 2.2, rgb(0x2E7BD6)); // of eight colours the first, the third, the seventh
    map.line({{99, 163}, {185, 120}}, 2.2, rgb(0x7F62DB));
    map.line({{271, 77}, {357, 34}}, 2.2, rgb(0xDB4A45));
    auto end = [&](double x, double y, Colour colour) {
        map.box(x - 4, y - 4, x + 4, y + 4, inkColour.light);
        map.box(x - 3, y - 3, x + 3, y + 3, colour);
    };
    end(357, 34, curveColour(4).light);
    letters(357 - 8 - 16.68, 34, "end"); // at its right there is no room
    end(13, 206, curveColour(2).light);
    letters(13 + 8, 206, "start");
    double kilometre = 172 / (0.02 * 111.19492664455873);
    map.line({{6, 225.5}, {6, 229}, {6 + kilometre, 229}, {6 + kilometre, 225.5}}, 1.5, inkColour.light);
    letters(6 + kilometre + 5, 229, "1 km");
    map.line({{358, 237}, {358, 221}}, 1.5, inkColour.light);
    map.line({{354, 225}, {358, 221}, {362, 225}}, 1.5, inkColour.light);
    letters(342, 229, "N");
    double x = 6 + 46.11 + 5;
    letters(6, 10, "power (W)");
    letters(x, 10, "100");
    x += 16.68 + 5;
    for (unsigned colour : {0x2E7BD6, 0x5B6FDB, 0x7F62DB, 0xA352CC, 0xC244A6, 0xD43F77, 0xDB4A45, 0xC96400}) {
        map.box(x, 6, x + 11, 14, rgb(colour));
        x += 11;
    }
    letters(x + 5, 10, "300");
    map.expect(drawTrackMap({latitudes, longitudes}, {"power (W)", power}, {370, 240}));
    double nowhere[] = {noPlace, noPlace}, equator[] = {0, 0, 0}, thereAndBack[] = {8, 8.01, 8};
    EXPECT_TRUE(drawTrackMap({nowhere, nowhere}, {}, {600, 600}).items.empty());
    Picture east = drawTrackMap({equator, thereAndBack}, {}, {600, 600});
    EXPECT_TRUE(std::holds_alternative<PictureLine>(east.items[0])) << "its way";
    EXPECT_NE(svgText(east).find(">start and end</text>"), std::string::npos);
}

// The bar is as long as it says, a round length between a sixteenth and a third of the width; but for a twentieth at
// both ends the colours have their figures.
TEST(TrackMap, itsBarIsRound)
{
    for (auto [degrees, length] : {std::pair{0.001, "50 m"}, {0.02, "1 km"}, {0.05, "2 km"}, {3.0, "200 km"}}) {
        std::vector<double> latitudes, longitudes, power;
        for (int i = 0; i <= 100; ++i) {
            latitudes.push_back(60 + degrees * i / 100);
            longitudes.push_back(8 + degrees * i / 50);
            power.push_back(i * i);
        }
        std::string svg = svgText(drawTrackMap({latitudes, longitudes}, {"power (W)", power}, {800, 400}));
        for (const std::string& words : {std::string(length), std::string("25"), std::string("9.02e+03")})
            EXPECT_NE(svg.find(">" + words + "</text>"), svg.npos) << words << " of " << degrees;
    }
}

} // namespace

} // namespace torvane
