// What a graph holds and what its controls do.
#include "figures.h"
#include "plot/geometry.h"
#include "plot/graph.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace torvane {

namespace {

GraphSeries seriesOf(int kind, int count, std::vector<double> values)
{
    constexpr const char* names[] = {"time", "velocity", "distance", "accele"};
    GraphSeries series;
    series.graphKind = kind;
    series.seriesNames.assign(names, names + count);
    series.values = std::move(values);
    return series;
}

TEST(Graph, rangesHoldZeroAndSkipWhatCannotBePlotted)
{
    double nan = std::nan("");
    double infinite = std::numeric_limits<double>::infinity();
    Graph graph = storeGraph(seriesOf(3, 4, {5, -3, nan, 0, 7, -2, 1, -infinite, 6, -1, 2, 1e301}));
    EXPECT_EQ(graph.seriesMin, (std::vector<double>{0, -3, 0, 0}));
    EXPECT_EQ(graph.seriesMax, (std::vector<double>{7, 0, 2, 0}));
}

TEST(Graph, scaleGroupsShareTheirRange)
{
    GraphSeries series = seriesOf(3, 4, {5, -3, 10, -20, 1, 2, 3, 4});
    series.scaleGroup = {0, 1, 2, 3}; // the last belongs to both groups; the first shares with none
    Graph graph = storeGraph(series);
    EXPECT_EQ(graph.seriesMin, (std::vector<double>{0, -20, -20, -20}));
    EXPECT_EQ(graph.seriesMax[0], 5);
    EXPECT_EQ(graph.seriesMax[2], 10);
}

TEST(Graph, selectListsOfLinesLeaveTheFirstSeriesOut)
{
    Graph graph = storeGraph(seriesOf(3, 4, {1, 2, 3, 4}));
    std::vector<GraphControl> controls = graphControls(graph);
    ASSERT_EQ(controls.size(), 3u);
    EXPECT_STREQ(controls[0].label, "Select");
    EXPECT_EQ(controls[1].id, 2);
    EXPECT_EQ(controls[1].entries, (std::vector<std::string>{"velocity", "distance", "accele"}));
    EXPECT_EQ(controls[1].selected, 0);
    EXPECT_EQ(controls[2].selected, 1);
    chooseEntry(graph, 2, 2);
    chooseEntry(graph, 3, 0);
    chooseEntry(graph, 3, 3);  // there is no such entry
    chooseEntry(graph, 3, -1); // nothing selected
    chooseEntry(graph, 5, 1);  // there is no such control
    expectFigures({graph.axisSeries[axisX], graph.axisSeries[axisY], graph.axisSeries[axisSecondY], graph.picked,
                   graphControls(graph)[1].selected},
                  {0, 3, 1, 0, 2});
}

TEST(Graph, searchListsGoTogether)
{
    GraphSeries series = seriesOf(8, 2, {0, 0, 10, 10, 20, 0});
    series.pointLabels = {"a", "b", "c"};
    series.secondLabels = {"x", "y", "z"};
    Graph graph = storeGraph(series);
    std::vector<GraphControl> controls = graphControls(graph);
    ASSERT_EQ(controls.size(), 6u);
    EXPECT_EQ(controls[1].entries.size(), 2u); // a graph of vectors lists all series
    EXPECT_EQ(controls[3].x, 240);
    EXPECT_EQ(controls[4].entries, (std::vector<std::string>{"", "a", "b", "c"}));
    EXPECT_EQ(controls[5].x, 370);
    chooseEntry(graph, 6, 3);
    EXPECT_EQ(graphControls(graph)[4].selected, 3);
    EXPECT_EQ(graphControls(graph)[5].selected, 3);
    chooseEntry(graph, 2, 1); // X
    EXPECT_EQ(graph.axisSeries[axisX], 1);
}

TEST(Graph, clickPicksTheNearestMark)
{
    // 0 to 20 on both axes of 640 x 480: 512 pixels from 64, 364 pixels up from 432.
    Graph graph = storeGraph(seriesOf(6, 2, {0, 0, 20, 20, 20, 20}));
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

} // namespace

} // namespace torvane
