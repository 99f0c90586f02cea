// What a graph holds and what its controls do; scales by hand arithmetic, and laws of the picture: inside the window,
// ticks in order, zero where it belongs.
#include "by_hand.h"
#include "figures.h"
#include "plot/draw_graph.h"
#include "plot/geometry.h"
#include "plot/graph.h"
#include "plot/palette.h"
#include "plot/svg.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <set>
#include <string>

namespace torvane {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN(), infinite = std::numeric_limits<double>::infinity();

GraphSeries seriesOf(int kind, int count, std::vector<double> values)
{
    constexpr const char* names[] = {"time", "velocity", "distance", "accele"};
    GraphSeries series;
    series.graphKind = kind;
    series.seriesNames.assign(names, names + count);
    series.values = std::move(values);
    return series;
}

Graph graphOf(int kind, int count, std::vector<double> values)
{
    return storeGraph(seriesOf(kind, count, std::move(values)));
}

template <class Item>
std::vector<Item> itemsOf(const Picture& picture)
{
    std::vector<Item> items;
    for (const PictureItem& item : picture.items)
        if (const Item* found = std::get_if<Item>(&item))
            items.push_back(*found);
    return items;
}

TEST(GraphSeries, complaints)
{
    // Kind, series, complaint.
    constexpr int cases[][3] = {
        {0, 1, 0}, {0, 2, 1}, {1, 2, 0}, {1, 3, 1}, {2, 3, 0}, {2, 2, 1}, {3, 3, 0}, {3, 64, 0}, {3, 2, 1},  {4, 3, 1},
        {5, 2, 0}, {5, 1, 2}, {6, 2, 0}, {6, 1, 1}, {7, 1, 2}, {8, 1, 2}, {8, 5, 0}, {9, 2, 4},  {-1, 2, 4},
    };
    for (auto [kind, series, complaint] : cases) {
        GraphSeries graph;
        graph.graphKind = kind;
        graph.seriesNames.resize(static_cast<size_t>(series));
        EXPECT_EQ(checkGraphSeries(graph), complaint) << kind << " with " << series;
    }
}

// Lines of one unit are drawn on one scale, or each on its own; lines of two units never on one.
TEST(GraphSeries, scalesGoByUnits)
{
    for (GraphLayout layout : {GraphLayout::frequencyBand, GraphLayout::process, GraphLayout::braking,
                               GraphLayout::rolling, GraphLayout::corneringBand, GraphLayout::course}) {
        GraphSeries graph;
        beginGraphSeries(graph, layout, 0);
        std::map<int, std::set<std::string>> unitsOfScale;
        std::map<std::string, std::set<int>> scalesOfUnit;
        for (size_t i = 0; i < graph.seriesNames.size(); ++i) {
            std::string unit = graph.seriesNames[i].substr(graph.seriesNames[i].find_last_of(" ("));
            unitsOfScale[graph.scaleGroup[i]].insert(unit);
            scalesOfUnit[unit].insert(graph.scaleGroup[i]);
        }
        for (const auto& [scale, units] : unitsOfScale)
            EXPECT_TRUE(scale == 0 || units.size() == 1) << graph.seriesNames[1] << ' ' << scale;
        for (const auto& [unit, scales] : scalesOfUnit)
            EXPECT_EQ(scales.size(), 1u) << graph.seriesNames[1] << ' ' << unit;
    }
}

TEST(Graph, rangesHoldZeroAndSkipWhatCannotBePlotted)
{
    Graph graph = graphOf(3, 4, {5, -3, nan, 0, 7, -2, 1, -infinite, 6, -1, 2, 1e301});
    EXPECT_EQ(graph.seriesMin, (std::vector<double>{0, -3, 0, 0}));
    EXPECT_EQ(graph.seriesMax, (std::vector<double>{7, 0, 2, 0}));
}

TEST(Graph, scaleGroupsShareTheirRange)
{
    GraphSeries series = seriesOf(3, 4, {5, -3, 10, -20, 1, 2, 3, 4});
    series.scaleGroup = {0, 1, 2, 3}; // the last belongs to both groups; the first shares with none
    Graph graph = storeGraph(series);
    EXPECT_EQ(graph.seriesMin, (std::vector<double>{0, -20, -20, -20}));
    expectFigures({graph.seriesMax[0], graph.seriesMax[2]}, {5, 10});
}

TEST(Graph, selectListsOfLinesLeaveTheFirstSeriesOut)
{
    Graph graph = graphOf(3, 4, {1, 2, 3, 4});
    std::vector<GraphControl> controls = graphControls(graph);
    ASSERT_EQ(controls.size(), 3u);
    EXPECT_STREQ(controls[0].label, "Select");
    EXPECT_EQ(controls[1].entries, (std::vector<std::string>{"velocity", "distance", "accele"}));
    expectFigures({controls[1].id, controls[1].selected, controls[2].selected}, {2, 0, 1});
    chooseEntry(graph, 2, 2);
    chooseEntry(graph, 3, 0);
    chooseEntry(graph, 3, 3);  // there is no such entry
    chooseEntry(graph, 3, -1); // nothing selected
    chooseEntry(graph, 5, 1);  // there is no such control
    expectFigures({graph.axisSeries[axisX], graph.axisSeries[axisY], graph.axisSeries[axisSecondY], graph.picked,
                   graphControls(graph)[1].selected},
                  {0, 3, 1, 0, 2});
    graph.series.seriesNames[2] = "predicted power(W)"; // 108 pixels wide, beside an arrow of 18
    EXPECT_GE(graphControls(graph)[1].width, 108 + 18);
}

TEST(Graph, searchListsGoTogether)
{
    GraphSeries series = seriesOf(8, 2, {0, 0, 10, 10, 20, 0});
    series.pointLabels = {"a", "b", "c"};
    series.secondLabels = {"x", "y", "z"};
    Graph graph = storeGraph(series);
    std::vector<GraphControl> controls = graphControls(graph);
    ASSERT_EQ(controls.size(), 6u);
    expectFigures({controls[1].entries.size(), controls[3].x, controls[5].x}, {2, 240, 370}); // all series are listed
    EXPECT_EQ(controls[4].entries, (std::vector<std::string>{"", "a", "b", "c"}));
    chooseEntry(graph, 6, 3);
    chooseEntry(graph, 2, 1); // X
    expectFigures({graphControls(graph)[4].selected, graphControls(graph)[5].selected, graph.axisSeries[axisX]},
                  {3, 3, 1});
}

TEST(Graph, clickPicksTheNearestMark)
{
    // 0 to 20 on both axes of 640 x 480: 512 pixels from 64, 364 pixels up from 432.
    Graph graph = graphOf(6, 2, {0, 0, 20, 20, 20, 20});
    EXPECT_FALSE(pickPoint(graph, 640, 480, 300, 200));
    EXPECT_FALSE(pickPoint(graph, 640, 480, 64 + 15, 432 - 12)); // 15 and 12: 369
    EXPECT_EQ(graph.picked, 0);
    EXPECT_TRUE(pickPoint(graph, 640, 480, 64 + 14, 432 - 12)); // 14 and 12: 340
    EXPECT_EQ(graph.picked, 1);
    EXPECT_TRUE(pickPoint(graph, 640, 480, 575, 70)); // two marks on one place: the first
    EXPECT_EQ(graph.picked, 2);
    graph.series.graphKind = 4; // no search
    EXPECT_FALSE(pickPoint(graph, 640, 480, 64, 432));
}

// Steps go as 10, 5, 2.5 or 1000, 100, 200 until one lies between a tenth and a fifth of the range; the logarithm is
// truncated towards 0. A range that pixels could not show is 0 to 1.
TEST(AxisScale, stepsAndLimits)
{
    // Least and greatest value; step, ticks below and above 0.
    constexpr double cases[][5] = {
        {0, 70, 10, 0, 7},    {-7, 0, 1, 7, 0},
        {0, 70.5, 10, 0, 8},  {-0.9, 0.4, 0.2, 5, 2},
        {0, 20, 2.5, 0, 8},   {0, 0, 0.1, 0, 10},
        {0, 1287, 200, 0, 7}, {0, 5e-310, 0.1, 0, 10},
        {0, 0.3, 0.05, 0, 6}, {-1e299, 1e299, 2.5e298, 4, 4},
        {0, 25, 5, 0, 5},
    };
    for (auto [least, most, step, below, above] : cases) {
        SCOPED_TRACE(testing::Message() << least << " to " << most);
        AxisScale scale = scaleAxis(least, most);
        EXPECT_NEAR(scale.step, step, step * 1e-12);
        expectFigures({scale.ticksBelow, scale.ticksAbove}, {below, above});
    }
}

// Every kind, many sizes, and series with all that a curve can hold.
TEST(DrawGraph, staysInsideTheWindow)
{
    const std::vector<double> tables[] = {
        {0, 0, 0, 0, 0, 0},                                  // no range
        {-5, -5, -5, -5, -5, -5},                            // flat
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
                SCOPED_TRACE(testing::Message() << kind << testing::PrintToString(table) << width << " x " << height);
                int slack = 20 + height / 20; // aligned zeros may differ by 5 percent; the strip in a tiny window
                for (const PictureLine& line : itemsOf<PictureLine>(drawGraph(graph, width, height))) {
                    ASSERT_GE(line.points.size(), 2u);
                    for (Pixel point : line.points) {
                        ASSERT_TRUE(point.x >= -slack && point.x <= width + slack) << point.x;
                        ASSERT_TRUE(point.y >= -slack && point.y <= height + slack) << point.y;
                    }
                }
            }
        }
    }
}

// In 640 x 480 pixels: margins 64 and 48, 20 for the controls; axes reach 9 out. X is 0 to 20, Y -1 to 1, the second Y
// 0 to
// 20. Y shares 364 pixels, half of them above zero; the second axis lies above zero alone and is halved too: the share
// is 1 - 0.5 + 1. 364 / 1.5 / 2 for the unit of Y; 121 pixels lie below zero. Six and five pixels a letter are left for
// texts that end at an axis.
TEST(DrawGraph, axesAndCurvesByHand)
{
    ByHand graph{{640, 480, {}}};
    constexpr const char *tens[] = {"0", "2.5", "5", "7.5", "10", "12.5", "15", "17.5", "20"},
                         *ones[] = {"-1", "-0.75", "-0.5", "-0.25", "0", "0.25", "0.5", "0.75", "1"};
    graph.line({{55, 310}, {585, 310}}, 1, colourBlack);
    for (int n = 0; n < 9; ++n) {
        int x = 64 + 64 * n;
        graph.line({{x, 307}, {x, 313}}, 1, colourBlack);
        graph.text(x + 4, 314, tens[n], 14, colourBlack);
    }
    graph.text(585, 294, "time", 14, colourBlack);
    graph.line({{64, 441}, {64, 59}}, 1, colourBlack);
    for (int n = 0; n < 9; ++n) {
        double y = 310 - std::trunc((n - 4) * 0.25 * 364 / 3), wide = 6 + 5 * double(std::string(ones[n]).size());
        graph.line({{61, y}, {67, y}}, 1, colourBlack);
        graph.text(64 - wide, y - 16, ones[n], 14, colourBlack);
    }
    graph.text(68, 59, "velocity", 14, colourBlack);
    graph.line({{576, 441}, {576, 59}}, 1, colourGrey);
    for (int n = 0; n < 9; ++n) {
        double y = 310 - std::trunc(n * 2.5 * 364 / 30);
        graph.line({{573, y}, {579, y}}, 1, colourGrey);
        graph.text(580, y - 16, tens[n], 14, colourGrey);
    }
    graph.text(576 - 6 - 5 * 8, 59, "distance", 14, colourGrey);
    graph.line({{64, 310 + 121}, {576, 310 - 121}}, 2, colourBlack);
    graph.line({{64, 310}, {576, 310 - 242}}, 2, colourGrey);
    graph.expect(drawGraph(graphOf(3, 3, {0, -1, 0, 20, 1, 20}), 640, 480));
    // Zeros less than a twentieth of the height apart stay: the first one is where 20 of 120 lie below it.
    EXPECT_EQ(layOut(graphOf(3, 3, {0, -10, -10, 1, 100, 70}), 640, 480).originY, 371);
}

// X is -20 to 20, of 12.8 pixels each around 320, Y 0 to 20, of 18.2 up from 432.
TEST(DrawGraph, vectorsAndMarksByHand)
{
    Graph graph = graphOf(7, 2, {-20, 0, 20, 20});
    graph.series.vectorStyle = 1;
    graph.series.vectorNames = {"steep", "no", "back"};
    graph.series.vectorValues = {0.75, 1, nan, 1, -0.75, 1};
    graph.series.pointTags = {"first"};
    graph.picked = 1;
    Picture found = drawGraph(graph, 640, 480);
    found.items.erase(found.items.begin(), found.items.begin() + 2 * (1 + 2 * 9 + 1)); // axes, ticks and names
    ByHand wanted{{640, 480, {}}};
    // The line to 15 and 20, where an axis ends; the arrow; its head of 8 pixels, split by 3/5 and 4/5 behind a foot
    // 1/32 of the line before the tip; its name.
    wanted.line({{320, 432}, {320 + 192, 432 - 364}}, 1, colourVector);
    wanted.line({{320, 432}, {329, 414}}, 2, colourVector);
    wanted.line({{329 - 6 - 6, 414 + 11 - 5}, {329, 414}, {329 - 6 + 6, 414 + 11 + 5}}, 2, colourVector);
    wanted.text(335, 414 - 30, "steep", 14, colourVector);
    wanted.line({{320, 432}, {320 - 192, 432 - 364}}, 1, colourVector);
    wanted.line({{320, 432}, {311, 414}}, 2, colourVector);
    wanted.line({{311 + 6 - 6, 414 + 11 + 5}, {311, 414}, {311 + 6 + 6, 414 + 11 - 5}}, 2, colourVector);
    wanted.text(311 - 6 - 4 * 5, 414 - 30, "back", 14, colourVector);
    for (auto [x, y] : {std::pair{64, 432}, {576, 68}}) {
        wanted.line({{x - 2, y}, {x, y - 2}, {x + 2, y}, {x, y + 2}, {x - 2, y}}, 2, colourBlack);
        if (x == 64)
            wanted.text(68, 432, "first", 14, colourTag);
    }
    wanted.line({{62, 432}, {64, 430}, {66, 432}, {64, 434}, {62, 432}}, 4, colourPicked);
    wanted.text(68, 432, "first", 14, colourPicked, true);
    wanted.expect(found);
    graph.picked = 7; // beyond the points
    EXPECT_FALSE(itemsOf<PictureText>(drawGraph(graph, 640, 480)).back().emphasized);
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

TEST(Svg, writesItemsInOrder)
{
    Picture picture{100, 50, {}};
    picture.items.push_back(PictureBox{30, 10, 20, 15, 0x112233}); // from right to left
    picture.items.push_back(PictureLine{{{1, 2}, {3, -4}}, 2, colourTag});
    picture.items.push_back(PictureText{{5, 6}, "a<b & \"c\"\n>", 10, colourPicked, true});
    std::string svg = svgText(picture);
    EXPECT_EQ(svg.substr(svg.find("<rect")),
              "<rect x=\"0\" y=\"0\" width=\"100\" height=\"50\" fill=\"#ffffff\"/>\n"
              "<rect x=\"20\" y=\"10\" width=\"10\" height=\"5\" fill=\"#332211\"/>\n"
              "<polyline fill=\"none\" points=\"1,2 3,-4\" stroke=\"#3333cc\" stroke-width=\"2\"/>\n"
              "<text x=\"5\" y=\"14\" font-size=\"8.70\" fill=\"#ff0000\" font-style=\"italic\" "
              "text-decoration=\"underline\">a&lt;b &amp; \"c\" &gt;</text>\n</svg>\n");
    Picture themed{10, 10, {PictureBox{0, 0, 1, 1, inkColour.light}}};
    EXPECT_NE(svgText(themed).find("fill=\"#1f2328\"/>"), svg.npos);
    EXPECT_NE(svgText(themed, SvgGround::preferred).find("fill=\"#1f2328\" class=\"f1\"/>"), svg.npos);
    EXPECT_NE(svgText(themed, SvgGround::dark).find("fill=\"#e6e8eb\"/>"), svg.npos);
}

} // namespace
} // namespace torvane
