// Scales by hand arithmetic, and laws of the picture: inside the window, ticks in order, zero where it belongs.
#include "figures.h"
#include "plot/draw_graph.h"
#include "plot/geometry.h"
#include "plot/svg.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace torvane {

namespace {

Graph graphOf(int kind, size_t count, std::vector<double> values)
{
    GraphSeries series;
    series.graphKind = kind;
    for (size_t i = 0; i < count; ++i) {
        series.seriesNames.push_back("series " + std::to_string(i));
    }
    series.values = std::move(values);
    return storeGraph(series);
}

template <class Item>
std::vector<Item> itemsOf(const Picture& picture)
{
    std::vector<Item> items;
    for (const PictureItem& item : picture.items) {
        if (const Item* found = std::get_if<Item>(&item)) {
            items.push_back(*found);
        }
    }
    return items;
}

TEST(AxisScale, stepsAndLimits)
{
    struct Case {
        double least, most, step;
        int below, above;
    };
    constexpr Case cases[] = {
        {0, 70, 10, 0, 7},       // 10 is between a tenth and a fifth of 70
        {0, 70.5, 10, 0, 8},     // the first step at or above
        {0, 20, 2.5, 0, 8},      // 10, 5, 2.5
        {0, 1287, 200, 0, 7},    // 1000, 100, 200
        {0, 0.3, 0.05, 0, 6},    // the logarithm is truncated to 0: 1, 0.1, 0.05
        {-7, 0, 1, 7, 0},        // no positive part
        {-0.9, 0.4, 0.2, 5, 2},  // 1, 0.1, 0.2
        {0, 0, 0.1, 0, 10},      // no range: 0 to 1
        {0, 5e-310, 0.1, 0, 10}, // nor one that pixels could show
        {-1e299, 1e299, 2.5e298, 4, 4},
    };
    for (const Case& c : cases) {
        AxisScale scale = scaleAxis(c.least, c.most);
        EXPECT_NEAR(scale.step, c.step, c.step * 1e-12) << c.least << ' ' << c.most;
        EXPECT_EQ(scale.ticksBelow, c.below) << c.least << ' ' << c.most;
        EXPECT_EQ(scale.ticksAbove, c.above) << c.least << ' ' << c.most;
    }
}

TEST(GraphGeometry, placesOfValues)
{
    // 640 x 480: margins 64 and 48, 20 pixels for the controls; X 0 to 20, Y -1 to 1, second Y 0 to 20.
    Graph graph = graphOf(3, 3, {0, -1, 0, 20, 1, 20});
    GraphGeometry geometry = layOut(graph, 640, 480);
    EXPECT_EQ(geometry.originX, 64);
    EXPECT_EQ(placeX(geometry, 20), 576);
    // Y shares 364 pixels, half of them above zero; the second axis lies above zero alone and is halved too: the
    // share is 1 - 0.5 + 1. 364 / 1.5 / 2 for the unit of Y; 121 pixels lie below zero.
    EXPECT_EQ(geometry.originY, 480 - 48 - 122);
    EXPECT_EQ(placeY(geometry, 1), geometry.originY - 121);
    EXPECT_EQ(placeY(geometry, 20, axisSecondY), geometry.originY - 242);
    EXPECT_EQ(placeX(geometry, 1e200), 64 + 1000000); // held far outside
}

// Every kind, many sizes, and series with all that a curve can hold.
TEST(DrawGraph, staysInsideTheWindow)
{
    double nan = std::nan("");
    double infinite = std::numeric_limits<double>::infinity();
    const std::vector<double> tables[] = {
        {0, 0, 0, 0, 0, 0}, // no range
        {5, 5, 5, 5, 5, 5}, // flat
        {-5, -5, -5, -5, -5, -5},
        {0, -3, 4, 10, 2, -80},                              // zeros to be aligned
        {nan, 1, 2, 3, infinite, 1e308, 1e-320, -2, -1e299}, // what cannot be plotted
        {},
    };
    constexpr int sizes[][2] = {{640, 480}, {1920, 1080}, {200, 150}, {30, 30}, {1, 1}, {0, 0}};
    for (int kind = 0; kind < 10; ++kind) {
        for (const std::vector<double>& table : tables) {
            Graph graph = graphOf(kind, 3, table);
            graph.series.vectorNames = {"up", "none", "wild"};
            graph.series.vectorValues = {1, 2, 0, 0, 0, 0, nan, 1, 1};
            for (auto [width, height] : sizes) {
                int slack = 20 + height / 20; // aligned zeros may differ by 5 percent; the strip in a tiny window
                Picture picture = drawGraph(graph, width, height);
                for (const PictureLine& line : itemsOf<PictureLine>(picture)) {
                    ASSERT_GE(line.points.size(), 2u);
                    for (Pixel point : line.points) {
                        ASSERT_TRUE(point.x >= -slack && point.x <= width + slack) << kind << ' ' << point.x;
                        ASSERT_TRUE(point.y >= -slack && point.y <= height + slack) << kind << ' ' << point.y;
                    }
                }
            }
        }
    }
}

TEST(DrawGraph, tickLabelsRiseAlongTheAxes)
{
    Picture picture = drawGraph(graphOf(1, 2, {-3.5, -20, 8, 55}), 640, 480);
    std::vector<PictureText> texts = itemsOf<PictureText>(picture);
    // X from -4 to 8 by 2, its name; Y from -20 to 60 by 10, its name.
    constexpr const char* expected[] = {"-4",  "-2", "0",  "2",  "4",  "6",  "8",  "series 0", "-20",
                                        "-10", "0",  "10", "20", "30", "40", "50", "60",       "series 1"};
    ASSERT_EQ(texts.size(), std::size(expected));
    for (size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(texts[i].text, expected[i]);
    }
    for (size_t i = 1; i < 7; ++i) {
        EXPECT_GT(texts[i].at.x, texts[i - 1].at.x);
    }
    for (size_t i = 9; i < 17; ++i) {
        EXPECT_LT(texts[i].at.y, texts[i - 1].at.y);
    }
}

TEST(DrawGraph, bars)
{
    Graph graph = graphOf(0, 1, {10, 20});
    graph.series.pointLabels = {"one", "two"};
    std::vector<PictureBox> boxes = itemsOf<PictureBox>(drawGraph(graph, 640, 480));
    ASSERT_EQ(boxes.size(), 2u); // rows of 192 pixels from 48 on
    expectFigures({boxes[1].left, boxes[1].top, boxes[1].right, boxes[1].bottom, boxes[0].right},
                  {64, 240, 576, 393, 320});
}

TEST(DrawGraph, pickedMarkIsLastAndEmphasized)
{
    Graph graph = graphOf(6, 2, {0, 0, 20, 20});
    graph.series.pointTags = {"first", "second"};
    graph.picked = 1;
    PictureText tag = itemsOf<PictureText>(drawGraph(graph, 640, 480)).back();
    EXPECT_EQ(tag.text, "first");
    EXPECT_TRUE(tag.emphasized);
    graph.picked = 7; // beyond the points
    EXPECT_FALSE(itemsOf<PictureText>(drawGraph(graph, 640, 480)).back().emphasized);
}

TEST(Svg, writesItemsInOrder)
{
    Picture picture{100, 50, {}};
    picture.items.push_back(PictureBox{30, 10, 20, 15, 0x112233}); // from right to left
    picture.items.push_back(PictureLine{{{1, 2}, {3, -4}}, 2, colourTag});
    picture.items.push_back(PictureText{{5, 6}, "a<b & \"c\"\n>", 10, colourPicked, true});
    std::string svg = svgText(picture);
    EXPECT_EQ(svg.substr(svg.find("fill=\"#ffffff\"/>\n") + 17),
              "<rect x=\"20\" y=\"10\" width=\"10\" height=\"5\" fill=\"#332211\"/>\n"
              "<polyline fill=\"none\" points=\"1,2 3,-4\" stroke=\"#3333cc\" stroke-width=\"2\"/>\n"
              "<text x=\"5\" y=\"14\" font-size=\"10\" fill=\"#ff0000\" font-style=\"italic\" "
              "text-decoration=\"underline\">a&lt;b &amp; \"c\" &gt;</text>\n</svg>\n");
}

} // namespace

} // namespace torvane
