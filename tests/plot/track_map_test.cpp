// A track as a map: true distances, gaps, and ends.
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

// From the south to the north-east: the bar is as long as it says, the arrow points up, the colours have their figures.
TEST(TrackMap, IsReadBackByItsBar)
{
    for (double degrees : {0.001, 0.02, 3.0}) {
        std::vector<double> latitudes, longitudes, power;
        for (int i = 0; i <= 100; ++i) {
            latitudes.push_back(60 + degrees * i / 100);
            longitudes.push_back(8 + degrees * i / 50);
            power.push_back(i * i);
        }
        Picture picture = drawTrackMap({latitudes, longitudes}, {"power (W)", power}, {800, 400});
        std::vector<Pixel> bar, first, last, arrow;
        std::vector<PictureBox> boxes;
        std::vector<std::string> texts;
        std::vector<int> places;
        for (const PictureItem& item : picture.items)
            if (const auto* line = std::get_if<PictureLine>(&item)) {
                if (line->width >= 2 * picture.perPixel) {
                    first = first.empty() ? line->points : first;
                    last = line->points;
                } else {
                    (line->points.size() == 4 ? bar : arrow) = line->points;
                }
            } else if (const auto* text = std::get_if<PictureText>(&item)) {
                texts.push_back(text->text);
                places.push_back(text->at.x);
            } else {
                boxes.push_back(std::get<PictureBox>(item));
            }
        ASSERT_TRUE(bar.size() == 4 && arrow.size() == 3);
        double metres = 0, metresNorth = degrees * 111194.92664455873;
        for (const std::string& text : texts)
            if (text.ends_with("m"))
                metres = std::stod(text) * (text.ends_with("km") ? 1000 : 1);
        double perMetre = (bar[2].x - bar[1].x) / metres;
        EXPECT_NEAR((first.front().y - last.back().y) / perMetre, metresNorth, 0.02 * metresNorth) << degrees;
        EXPECT_LE(bar[2].x, 0.35 * picture.width);
        EXPECT_GE(bar[2].x, 0.08 * picture.width);
        EXPECT_TRUE(bar[0].y == bar[3].y && bar[0].y < bar[1].y && bar[1].y == bar[2].y && bar[0].x == bar[1].x);
        EXPECT_TRUE(arrow[1].y < arrow[0].y && arrow[0].y == arrow[2].y && arrow[0].x < arrow[1].x &&
                    arrow[1].x < arrow[2].x);
        EXPECT_EQ(std::vector<std::string>(texts.end() - 3, texts.end()),
                  (std::vector<std::string>{"power (W)", "25", "9.02e+03"})); // but for a twentieth at both ends
        size_t name = texts.size() - 3;
        ASSERT_EQ(boxes.size(), 12u); // two of each end
        EXPECT_TRUE(places[name] < places[name + 1] && places[name + 1] < boxes[4].left &&
                    boxes[11].right < places[name + 2]);
        for (size_t i = 5; i < 12; ++i)
            EXPECT_TRUE(boxes[i].left == boxes[i - 1].right && boxes[i].fill != boxes[i - 1].fill) << i;
    }
}

} // namespace

} // namespace torvane
