// What the graph window reads out, the map beside the curves, and its colours on other grounds; places by hand.
#include "plot/graph_view.h"
#include "plot/ground.h"
#include "plot/palette.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace torvane {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

// Distance, time, altitude, power: 0 to 4 across 640 pixels lies at 64, 192, 320, 448, 576.
Graph rideOf(std::vector<double> latitude, std::vector<double> longitude)
{
    GraphSeries series;
    series.graphKind = 3;
    series.alongs = 2;
    series.seriesNames = {"distance(km)", "time(min)", "altitude(m)", "power(W)"};
    series.values = {0, 0, 100, 0, 1, 8, nan, nan, 2, 10, 100, 200, 3, 12, 300, 100, 4, 20, 0, 400};
    series.latitude = std::move(latitude);
    series.longitude = std::move(longitude);
    return storeGraph(std::move(series));
}

TEST(GraphView, ReadsOutTheNearestPointAcross)
{
    Graph graph = rideOf({}, {});
    struct Case {
        int x, y, point;
    };
    constexpr Case cases[] = {{0, 0, 0}, {190, 240, 0}, {193, 240, 2}, {390, 10, 3}, {639, 479, 4}};
    for (Case at : cases)
        EXPECT_EQ(nearestPoint(graph, 640, 480, at.x, at.y), at.point) << at.x;
    EXPECT_EQ(readOut(graph, 2), "distance(km) 2   altitude(m) 100   power(W) 200");
    EXPECT_EQ(readOut(graph, 1), "distance(km) 1   altitude(m) -   power(W) -");
    // Two points on one column: the first has a curve at the pointer, and its other one far away.
    graph.series.values = {0, 0, 300, 0, 0, 0, 150, 200, 4, 20, 0, 400};
    EXPECT_EQ(nearestPoint(storeGraph(graph.series), 640, 480, 64, 68), 0);
    graph = rideOf({}, {});
    layAlong(graph, 1);
    EXPECT_EQ(readOut(graph, 3), "time(min) 12   altitude(m) 300   power(W) 100");
    layAlong(graph, 2); // lies upwards alone
    EXPECT_EQ(graph.axisSeries[axisX], 1);
    EXPECT_EQ(readOut(graph, -1) + readOut(graph, 5), "");
}

TEST(GraphView, KeysLeadFromPointToPoint)
{
    Graph graph = rideOf({}, {});
    struct Case {
        int from;
        PointStep step;
        int to;
    };
    constexpr Case cases[] = {{-1, PointStep::forth, 0}, {0, PointStep::forth, 2}, {2, PointStep::back, 0},
                              {0, PointStep::back, 0},   {4, PointStep::forth, 4}, {0, PointStep::farForth, 2},
                              {0, PointStep::last, 4},   {4, PointStep::first, 0}, {3, PointStep::farBack, 2}};
    for (const Case& key : cases)
        EXPECT_EQ(steppedPoint(graph, 640, 480, key.from, key.step), key.to)
            << key.from << ' ' << static_cast<int>(key.step);
    // Ten points on one column: a step leads past all of them.
    GraphSeries dense;
    dense.graphKind = 1;
    dense.seriesNames = {"time", "speed"};
    for (int i = 0; i < 10; ++i) {
        dense.values.insert(dense.values.end(), {i * 1e-6, 1});
    }
    dense.values.insert(dense.values.end(), {5, 2});
    EXPECT_EQ(steppedPoint(storeGraph(dense), 640, 480, 0, PointStep::forth), 10);
}

TEST(GraphView, MapStandsBesideAndAnswersTheMouse)
{
    // A square of a kilometre in the far north; one place is not known.
    Graph graph = rideOf({60, nan, 60.01, 60.01, 60}, {10, nan, 10, 10.02, 10.02});
    ASSERT_TRUE(hasMap(graph));
    EXPECT_EQ(widthOfCurves(graph, 1000), 600);
    EXPECT_EQ(nearestPoint(graph, 1000, 480, 620, 40), 2) << "north-west";
    EXPECT_EQ(nearestPoint(graph, 1000, 480, 980, 460), 4) << "south-east";
    Picture view = drawGraphView(graph, 1000, 480);
    EXPECT_EQ(view.width, 1000 * view.perPixel);
    int mostRight = 0;
    for (const PictureItem& item : view.items)
        if (const PictureLine* line = std::get_if<PictureLine>(&item))
            for (Pixel at : line->points) {
                mostRight = std::max(mostRight, at.x / view.perPixel);
                EXPECT_LE(at.y, view.height);
            }
    EXPECT_TRUE(mostRight > 700 && mostRight <= 1000) << mostRight;
    EXPECT_EQ(drawReadOut(graph, 1000, 480, 2).items.size(), 3u) << "a mark on each curve and on the map";
    for (const PictureItem& item : drawReadOut(graph, 1000, 480, 2).items) {
        const PictureBox& mark = std::get<PictureBox>(item);
        EXPECT_EQ(mark.right - mark.left, mark.bottom - mark.top);
    }
    EXPECT_FALSE(hasMap(rideOf({nan, nan, nan, nan, nan}, {nan, nan, nan, nan, nan})));
}

double luminance(Colour colour)
{
    double sum = 0;
    constexpr double weights[] = {0.2126, 0.7152, 0.0722};
    for (int part = 0; part < 3; ++part) {
        double value = (colour >> 8 * part & 0xFF) / 255.0;
        sum += weights[part] * (value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
    }
    return sum;
}

TEST(Ground, ColoursStandOffFromIt)
{
    for (Colour colour : {colourBlack, colourGrey, colourTag, colourPicked, themeColours[4].light}) {
        EXPECT_EQ(colourOn({}, colour), colour) << std::hex << colour;
    }
    EXPECT_EQ(groundOf(0xFFFFFF, 0).faint, colourGrey);
    EXPECT_TRUE(groundOf(35 | 200 << 8, 0).isDark()) << "0.299 of the red and 0.587 of the green are 127.9";
    Ground dark = groundOf(0x000000, 0xFFFFFF);
    for (Colour colour : {colourBlack, colourGrey, colourTag, colourPicked, colourVector, themeColours[4].light}) {
        double bright = luminance(colourOn(dark, colour)) + 0.05, ground = luminance(dark.ground) + 0.05;
        EXPECT_GT(bright / ground, 4.5) << std::hex << colour;
    }
}

} // namespace
} // namespace torvane
