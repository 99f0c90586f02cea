// Charts for files: which curves, where their letters stand, and what becomes of values.
#include "plot/chart.h"
#include "plot/palette.h"
#include "plot/text_width.h"
#include "plot/ticks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <variant>

namespace torvane {

namespace {

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// Rising and swinging values up to a size, below zero as well.
GraphSeries madeSeries(GraphLayout layout, double size, int points = 200)
{
    GraphSeries graph;
    beginGraphSeries(graph, layout, points);
    for (int point = 0; point < points; ++point) {
        graph.values.push_back(point * size / points);
        for (int i = 1; i < graph.seriesCount(); ++i)
            graph.values.push_back(size * i * std::sin(0.1 * point * i));
    }
    return graph;
}

struct TextBox {
    std::string text;
    double left, top, right, bottom;

    bool touches(const TextBox& other) const
    {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
};

// Around the letters, from the top of a capital to the foot of a "g", in pixels.
std::vector<TextBox> textBoxes(const Picture& picture)
{
    std::vector<TextBox> boxes;
    for (const PictureItem& item : picture.items)
        if (const auto* text = std::get_if<PictureText>(&item)) {
            double unit = picture.perPixel, em = text->height * emOfHeight / unit, x = text->at.x / unit;
            double base = (text->at.y + text->height * baseOfHeight) / unit;
            boxes.push_back({text->text, x, base - 0.73 * em, x + textWidth(text->text) * em, base + 0.22 * em});
        }
    return boxes;
}

void expectApart(const Picture& picture)
{
    std::vector<TextBox> boxes = textBoxes(picture);
    EXPECT_GE(boxes.size(), 5u);
    for (size_t i = 0; i < boxes.size(); ++i) {
        const TextBox& box = boxes[i];
        EXPECT_TRUE(box.left >= 0 && box.top >= 0 && box.right <= picture.width / picture.perPixel &&
                    box.bottom <= picture.height / picture.perPixel)
            << box.text << " is beyond the edge";
        for (size_t j = 0; j < i; ++j)
            EXPECT_FALSE(box.touches(boxes[j])) << box.text << " on " << boxes[j].text;
    }
}

const PictureLine& curveIn(const Picture& picture)
{
    return std::get<PictureLine>(picture.items[picture.items.size() - 2]); // then the name of the axis
}

} // namespace

TEST(Chart, lettersStandApartAtEverySize)
{
    constexpr ChartSize sizes[] = {{320, 240}, {320, 640}, {640, 480}, {1280, 720}, {2400, 1350}};
    for (GraphLayout layout : {GraphLayout::frequencyBand, GraphLayout::process, GraphLayout::braking,
                               GraphLayout::rolling, GraphLayout::corneringBand})
        for (double size : {1e-4, 0.37, 55.0, 123456.0, 3e8})
            for (const ChartSize& chart : sizes) {
                SCOPED_TRACE(testing::Message() << "layout " << static_cast<int>(layout) << ", values up to " << size
                                                << ", " << chart.width << " x " << chart.height);
                GraphSeries series = madeSeries(layout, size);
                expectApart(drawChart(series, curvesAbout(series), chart));
            }
}

// By the lines at which its labels stand a chart tells its values back, whatever its size.
TEST(Chart, isReadBackByItsLabels)
{
    const double values[][3] = {{0.5, 10, 300}, {1, -20, 301}, {2, 35, 310}, {4, 30, 305}};
    GraphSeries series;
    series.seriesNames = {"distance(km)", "power(W)", "altitude(m)"};
    for (auto& row : values)
        series.values.insert(series.values.end(), row, row + 3);
    for (ChartSize size : {ChartSize{320, 240}, ChartSize{640, 480}, ChartSize{2400, 1350}}) {
        CurveChoice choice;
        choice.curves = {1, 2};
        Picture picture = drawChart(series, choice, size);
        double unit = picture.perPixel;
        std::vector<std::pair<double, double>> across, up; // pixel and number
        std::vector<const PictureLine*> curves;
        for (const PictureItem& item : picture.items)
            if (const auto* line = std::get_if<PictureLine>(&item)) {
                Pixel from = line->points.front(), to = line->points.back();
                if (line->points.size() > 2)
                    curves.push_back(line);
                for (const TextBox& box : textBoxes(picture)) {
                    double middle = (box.left + box.right) / 2, height = (box.bottom - box.top) / 0.95 / emOfHeight;
                    double y = box.bottom - 0.22 * emOfHeight * height - (baseOfHeight - 0.5) * height;
                    bool number = box.text.find_first_not_of("-.0123456789") == std::string::npos;
                    if (number && from.y == to.y && std::fabs(y - from.y / unit) < 0.2 && box.right < from.x / unit) {
                        up.emplace_back(from.y, std::stod(box.text));
                        EXPECT_EQ(line->colour == inkColour.light, up.back().second == 0) << box.text;
                    }
                    if (number && from.x == to.x && std::fabs(middle - from.x / unit) < 0.2 && box.top > to.y / unit)
                        across.emplace_back(from.x, std::stod(box.text));
                }
            }
        auto valueAt = [](const auto& ticks, double pixel) {
            auto [a, b] = std::pair(ticks.front(), ticks.back());
            for (auto [at, value] : ticks)
                EXPECT_NEAR(a.second + (at - a.first) / (b.first - a.first) * (b.second - a.second), value, 0.1);
            return a.second + (pixel - a.first) / (b.first - a.first) * (b.second - a.second);
        };
        auto second = std::ranges::adjacent_find(up, [](auto a, auto b) { return b.first > a.first; });
        ASSERT_TRUE(curves.size() == 2 && across.size() > 2 && second != up.end()) << size.width;
        std::vector<std::pair<double, double>> panels[] = {{up.begin(), second + 1}, {second + 1, up.end()}};
        for (size_t curve : {0u, 1u})
            for (size_t i = 0; i < std::size(values); ++i) {
                ASSERT_GE(panels[curve].size(), 2u);
                EXPECT_NEAR(valueAt(across, curves[curve]->points[i].x), values[i][0], 0.02) << i;
                EXPECT_NEAR(valueAt(panels[curve], curves[curve]->points[i].y), values[i][curve + 1], 0.5) << i;
            }
    }
}

TEST(Chart, valuesThatAreNoneLeaveAGapAndAPeakStays)
{
    GraphSeries series = madeSeries(GraphLayout::corneringBand, 1, 100000);
    for (int point = 0; point < series.pointCount(); ++point)
        series.values[static_cast<size_t>(point) * 2 + 1] = 0;
    series.values[2 * 31234 + 1] = 7;
    Picture peak = drawChart(series, curvesAbout(series), {});
    const std::vector<Pixel>& line = curveIn(peak).points;
    EXPECT_LT(line.size(), 4u * 640);
    auto top = std::ranges::min_element(line, {}, &Pixel::y);
    EXPECT_LT(top->y, peak.height / 5);
    size_t whole = peak.items.size();
    series.values[2 * 50000 + 1] = noNumber;
    EXPECT_EQ(drawChart(series, curvesAbout(series), {}).items.size(), whole + 1) << "two pieces of the curve";
    series.values.clear();
    expectApart(drawChart(series, curvesAbout(series), {}));
}

TEST(Ticks, areRound)
{
    const struct {
        double least, most;
        int steps;
        bool rounded;
        int count;
        const char *first, *last;
    } rows[] = {
        {0, 250, 5, true, 6, "0", "250"},     {0, 251, 5, true, 4, "0", "300"},
        {3, 47, 5, false, 4, "10", "40"},     {-0.31, 0.04, 4, true, 6, "-0.4", "0.1"},
        {0.1, 0.3, 2, true, 3, "0.1", "0.3"}, {5, 5, 4, true, 4, "2", "8"},
        {0, 0, 4, true, 4, "0.0", "0.6"},     {1e9, 3e9, 2, true, 3, "1e+09", "3e+09"},
    };
    for (const auto& row : rows) {
        Ticks ticks = chooseTicks(row.least, row.most, row.steps, row.rounded);
        SCOPED_TRACE(testing::Message() << row.least << " to " << row.most);
        EXPECT_EQ(ticks.count(), row.count);
        EXPECT_EQ(ticks.label(ticks.first), row.first);
        EXPECT_EQ(ticks.label(ticks.last), row.last);
    }
}

TEST(Curves, namesUnitsAndChoice)
{
    EXPECT_EQ(curveName("front brake Cel"), "frontBrake");
    EXPECT_EQ(curveUnit("front brake Cel"), "Cel");
    EXPECT_EQ(curveName("corner radius(m) under 0.200 safty margin"), "cornerRadius");
    EXPECT_EQ(curveUnit("corner radius(m) under 0.200 safty margin"), "m");
    EXPECT_EQ(curveName("safty margin ratio"), "saftyMarginRatio");
    EXPECT_EQ(curveUnit("safty margin ratio"), "");
    GraphSeries band = madeSeries(GraphLayout::frequencyBand, 1);
    CurveChoice choice = curvesAbout(band);
    EXPECT_EQ(choice.curves, (std::vector<int>{1, 5, 6, 7})) << "power and what it goes into";
    EXPECT_EQ(chooseCurves(band, "THRUSTPOWER,velocity,thrustPower", "totalAirResist", choice), "");
    EXPECT_EQ(choice.curves, (std::vector<int>{4, 0}));
    EXPECT_EQ(choice.x, 5);
    EXPECT_TRUE(chooseCurves(band, "power", "", choice).starts_with("there is no curve 'power'; there are velocity, "));
}

} // namespace torvane
