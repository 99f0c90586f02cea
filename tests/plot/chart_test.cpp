// Charts for files: which curves, where their letters stand, and what becomes of values.
#include "by_hand.h"

#include "plot/chart.h"
#include "plot/palette.h"
#include "plot/text_width.h"
#include "plot/ticks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
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
            << box.text << " from " << box.left << ", " << box.top << " is beyond the edge";
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

// In a square of 240 pixels letters have 10, and a figure is 5.56 wide by the metrics of the font. The plots have their
// left edge behind "300" and 9 pixels, their right edge half of "3.0" and 3 pixels before the picture's. Each of the
// two units has half of what stands above the labels of the last one: 102.5 pixels, of which a name takes 19.5.
TEST(Chart, isDrawnAsByHand)
{
    GraphSeries series;
    series.seriesNames = {"time(s)", "power(W)", "altitude(m)"};
    series.values = {1, 100, 305, 2, 300, 320, 3, 200, 310};
    CurveChoice choice;
    choice.curves = {1, 2};
    ByHand chart{{240 * 8, 240 * 8, {}, 8}};
    constexpr double left = 16.68 + 9, right = 240 - 6.95 - 3, high = 102.5 - 19.5 - 6;
    auto letters = [&](double x, double middle, const char* words) {
        chart.text(x, middle - 5 / 0.87, words, 10 / 0.87, inkColour.light);
    };
    const struct {
        const char *name, *labels[4];
        double heights[3]; // of the curve's points, in the plot's
    } panels[] = {{"power(W)", {"0", "100", "200", "300"}, {1. / 3, 1, 2. / 3}},
                  {"altitude(m)", {"305", "310", "315", "320"}, {0, 1, 1. / 3}}};
    for (size_t i : {0u, 1u}) {
        double top = 4 + 102.5 * double(i) + 19.5, bottom = top + high;
        for (int n = 0; n < 5; ++n) {
            double x = left + n * (right - left) / 4;
            chart.line({{x, top}, {x, bottom}}, 1, gridColour.light);
            if (i == 1)
                letters(x - 6.95, bottom + 12.5, std::array{"1.0", "1.5", "2.0", "2.5", "3.0"}[size_t(n)]);
        }
        for (int n = 0; n < 4; ++n) {
            double y = bottom - n * high / 3;
            const char* label = panels[i].labels[n];
            chart.line({{left, y}, {right, y}}, 1, (*label == '0' ? inkColour : gridColour).light);
            letters(left - 4 - 5.56 * double(std::string(label).size()), y, label);
        }
        chart.line({{left, top - 12.75}, {left + 13, top - 12.75}}, 2, curveColour(i).light);
        letters(left + 18, top - 12.75, panels[i].name);
        const double* heights = panels[i].heights;
        chart.line({{left, bottom - heights[0] * high},
                    {(left + right) / 2, bottom - heights[1] * high},
                    {right, bottom - heights[2] * high}},
                   1.4, curveColour(i).light);
    }
    letters(right - 30.55, 240 - 31 - 6 + 12.5 + 13.5, "time(s)");
    chart.expect(drawChart(series, choice, {240, 240}));
}

// Many points on one column of pixels, 2 and -2 among them wherever: there the curve reaches as high and as low.
TEST(Chart, valuesThatAreNoneLeaveAGapAndPeaksStay)
{
    constexpr int columns = 100, each = 50;
    GraphSeries series = madeSeries(GraphLayout::corneringBand, 1, 0);
    for (int column = 0; column < columns; ++column)
        for (int i = 0; i < each; ++i) {
            double value = i == column % each ? 2 : i == (7 * column + 3) % each ? -2 : std::sin(column * i * i);
            series.values.insert(series.values.end(), {double(column), value});
        }
    Picture whole = drawChart(series, curvesAbout(series), {});
    std::map<int, std::pair<int, int>> drawn; // the highest and the lowest place of each column
    for (Pixel at : curveIn(whole).points) {
        auto& [high, low] = drawn.try_emplace(at.x, at.y, at.y).first->second;
        high = std::min(high, at.y);
        low = std::max(low, at.y);
    }
    EXPECT_EQ(drawn.size(), size_t{columns});
    EXPECT_LE(curveIn(whole).points.size(), size_t{4} * columns);
    for (const auto& [x, ends] : drawn)
        EXPECT_TRUE(ends == drawn.begin()->second && ends.second - ends.first > whole.height / 2)
            << ends.first << " to " << ends.second << " at " << x;
    size_t pieces = whole.items.size();
    series.values[columns * each + 1] = noNumber;
    EXPECT_EQ(drawChart(series, curvesAbout(series), {}).items.size(), pieces + 1) << "two pieces";
    series.values.clear();
    expectApart(drawChart(series, curvesAbout(series), {}));
}

// Each letter once more than the one before it, by the metrics of a font that is as wide; a letter of other scripts is
// an em.
TEST(TextWidth, isTheFonts)
{
    std::string letters;
    for (char c = ' '; c <= '~'; ++c)
        letters.append(static_cast<size_t>(c - ' ' + 1), c);
    EXPECT_NEAR(textWidth(letters), 2394.471, 1e-9);
    EXPECT_EQ(textWidth("\u00e9\u65e5"), 2);
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
    GraphSeries descent;
    descent.seriesNames = {"time(s)", "front brake(Cel)", "rear brake(Cel)", "velocity(kph)", "altitude(m)"};
    EXPECT_EQ(curvesAbout(descent).curves, (std::vector<int>{4, 3, 1})) << "a road comes before its brakes";
}

} // namespace torvane
