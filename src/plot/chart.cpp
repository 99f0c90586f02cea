#include "plot/chart.h"

#include "plot/graph.h"
#include "plot/palette.h"
#include "plot/text_width.h"
#include "plot/ticks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string_view>

namespace torvane {

namespace {

constexpr int fine = 8; // coordinates in a pixel
// Sizes of the font from a plot down to the middle of its labels: clear of the lowest one beside it.
constexpr double belowPlot = 1.25;

struct Range {
    double least = std::numeric_limits<double>::infinity();
    double most = -std::numeric_limits<double>::infinity();

    void take(double value)
    {
        if (!plottable(value))
            return;
        least = std::min(least, value);
        most = std::max(most, value);
    }
};

// All curves of one unit.
struct Panel {
    std::string unit;
    std::vector<int> curves = {};
    Range range = {};
    Ticks ticks = {};
    std::vector<std::vector<int>> legend = {}; // rows of curves
    double top = 0, bottom = 0;                // of the plot
};

struct Chart {
    const GraphSeries& series;
    const CurveChoice& choice;
    Picture& picture;
    double em; // size of the letters, pixels
    std::vector<Panel> panels = {};
    Range x = {};
    std::vector<ChartMark> marks = {}; // along x
    double left = 0, right = 0;        // of all plots, pixels

    double rowHeight() const
    {
        return 1.35 * em;
    }
    double width(std::string_view text) const
    {
        return textWidth(text) * em;
    }
    const std::string& name(int curve) const
    {
        return series.seriesNames[static_cast<size_t>(curve)];
    }
    double placeX(double value) const
    {
        return left + (value - x.least) / (x.most - x.least) * (right - left);
    }
};

double placeY(const Panel& panel, double value)
{
    const Ticks& t = panel.ticks;
    return panel.bottom - (value - t.least) / (t.most - t.least) * (panel.bottom - panel.top);
}

Pixel pixel(double x, double y)
{
    return {static_cast<int>(std::lround(x * fine)), static_cast<int>(std::lround(y * fine))};
}

void addText(Chart& chart, double x, double middle, std::string text)
{
    double height = chart.em / emOfHeight;
    chart.picture.items.push_back(PictureText{pixel(x, middle - height / 2), std::move(text),
                                              static_cast<int>(std::lround(height * fine)), inkColour.light, false});
}

void addLine(Chart& chart, Pixel from, Pixel to, const ThemeColour& colour, double width)
{
    chart.picture.items.push_back(
        PictureLine{{from, to}, std::max(static_cast<int>(std::lround(width * fine)), 1), colour.light});
}

// Cut at its end where there is no room for it.
std::string fitted(const Chart& chart, std::string text, double room)
{
    constexpr std::string_view dots = "...";
    if (chart.width(text) <= room)
        return text;
    while (!text.empty() && chart.width(text) + chart.width(dots) > room) {
        while ((static_cast<unsigned char>(text.back()) & 0xC0) == 0x80)
            text.pop_back();
        text.pop_back();
    }
    return text.empty() ? text : text.append(dots);
}

// Panels

Panel& panelOf(Chart& chart, int curve)
{
    std::string unit = curveUnit(chart.name(curve));
    auto found = std::ranges::find(chart.panels, unit, &Panel::unit);
    return found != chart.panels.end() ? *found : chart.panels.emplace_back(Panel{std::move(unit)});
}

// What begins near zero is shown from zero on.
void widenToZero(Range& range)
{
    if (!(range.least <= range.most))
        range = {0, 1};
    if (range.least > 0 && range.least < range.most / 2)
        range.least = 0;
    if (range.most < 0 && range.most > range.least / 2)
        range.most = 0;
}

void makePanels(Chart& chart)
{
    for (int curve : chart.choice.curves)
        panelOf(chart, curve).curves.push_back(curve);
    for (Panel& panel : chart.panels) {
        for (int point = 0; point < chart.series.pointCount(); ++point)
            for (int curve : panel.curves)
                panel.range.take(chart.series.value(point, curve));
        widenToZero(panel.range);
    }
}

double swatch(const Chart& chart)
{
    return 1.8 * chart.em; // with the blank behind it
}

// Rows of names above a plot, as many in each as have room.
void layLegend(const Chart& chart, Panel& panel)
{
    double room = 0;
    for (int curve : panel.curves) {
        double needed = swatch(chart) + chart.width(chart.name(curve)) + chart.em;
        if (panel.legend.empty() || needed > room) {
            panel.legend.emplace_back();
            room = chart.right - chart.left;
        }
        panel.legend.back().push_back(curve);
        room -= needed;
    }
}

void layPanels(Chart& chart, double height)
{
    double below = 0.4 * chart.em + 2 * chart.rowHeight();
    double each = (height - below - 0.4 * chart.em) / static_cast<double>(std::max<size_t>(chart.panels.size(), 1));
    double top = 0.4 * chart.em;
    for (Panel& panel : chart.panels) {
        layLegend(chart, panel);
        panel.top = top + static_cast<double>(panel.legend.size()) * chart.rowHeight() + 0.6 * chart.em;
        panel.bottom = std::max(top + each - 0.6 * chart.em, panel.top + 1);
        int steps = static_cast<int>((panel.bottom - panel.top) / (2.2 * chart.em));
        panel.ticks = chooseTicks(panel.range.least, panel.range.most, std::clamp(steps, 1, 8), true);
        top += each;
    }
}

// Left edge of the plots, so that the widest label of any panel has room. Its ticks are only known with the heights,
// so as many as there can be are measured.
void layLeft(Chart& chart)
{
    double widest = 0;
    for (const Panel& panel : chart.panels)
        for (int steps = 1; steps <= 8; ++steps) {
            Ticks ticks = chooseTicks(panel.range.least, panel.range.most, steps, true);
            for (int n = ticks.first; n <= ticks.last; ++n)
                widest = std::max(widest, chart.width(ticks.label(n)));
        }
    chart.left = widest + 0.9 * chart.em;
}

// How wide the widest one is; beyond the plots half of it has room.
double layMarks(Chart& chart, std::vector<ChartMark> marks, double width)
{
    double widest = 0;
    for (const ChartMark& mark : marks)
        widest = std::max(widest, chart.width(mark.label));
    chart.marks = std::move(marks);
    chart.right = width - std::max(widest / 2, 0.5 * chart.em) - 0.3 * chart.em;
    return widest;
}

std::vector<ChartMark> marksOf(const Ticks& ticks)
{
    std::vector<ChartMark> marks;
    for (int n = ticks.first; n <= ticks.last; ++n)
        marks.push_back({ticks.value(n), ticks.label(n)});
    return marks;
}

void layX(Chart& chart, double width, std::vector<ChartMark> marks)
{
    Range range;
    for (int point = 0; point < chart.series.pointCount(); ++point)
        range.take(chart.series.value(point, chart.choice.x));
    if (!(range.least <= range.most))
        range = {0, 1};
    std::erase_if(marks, [&](const ChartMark& mark) { return mark.value < range.least || mark.value > range.most; });
    for (int steps = 12; steps >= 1; --steps) {
        Ticks ticks = chooseTicks(range.least, range.most, steps, false);
        chart.x = {ticks.least, ticks.most};
        double label = layMarks(chart, marks.empty() ? marksOf(ticks) : marks, width);
        if (!marks.empty())
            return;
        double apart = (chart.right - chart.left) * ticks.step / (ticks.most - ticks.least);
        if (apart > label + chart.em)
            return;
    }
}

// Drawing

void drawLegend(Chart& chart, const Panel& panel)
{
    double y = panel.top - 0.6 * chart.em - (static_cast<double>(panel.legend.size()) - 0.5) * chart.rowHeight();
    for (const std::vector<int>& row : panel.legend) {
        double x = chart.left;
        for (int curve : row) {
            size_t number =
                static_cast<size_t>(std::ranges::find(chart.choice.curves, curve) - chart.choice.curves.begin());
            addLine(chart, pixel(x, y), pixel(x + 1.3 * chart.em, y), curveColour(number), 0.2 * chart.em);
            std::string text = fitted(chart, chart.name(curve), chart.right - x - swatch(chart));
            double next = x + swatch(chart) + chart.width(text) + chart.em;
            addText(chart, x + swatch(chart), y, std::move(text));
            x = next;
        }
        y += chart.rowHeight();
    }
}

// Labels that would touch the one before are left out; the lines stay.
void drawYTicks(Chart& chart, const Panel& panel)
{
    double before = std::numeric_limits<double>::infinity();
    for (int n = panel.ticks.first; n <= panel.ticks.last; ++n) {
        double y = placeY(panel, panel.ticks.value(n));
        addLine(chart, pixel(chart.left, y), pixel(chart.right, y), n == 0 ? inkColour : gridColour, 1);
        if (before - y < 1.3 * chart.em)
            continue;
        std::string label = panel.ticks.label(n);
        double x = chart.left - 0.4 * chart.em - chart.width(label);
        addText(chart, x, y, std::move(label));
        before = y;
    }
}

// Labels that would touch the one before are left out; the lines stay.
void drawXTicks(Chart& chart, const Panel& panel, bool labelled)
{
    double free = 0;
    for (const ChartMark& mark : chart.marks) {
        double x = chart.placeX(mark.value), half = chart.width(mark.label) / 2;
        addLine(chart, pixel(x, panel.top), pixel(x, panel.bottom), gridColour, 1);
        if (!labelled || x - half < free)
            continue;
        addText(chart, x - half, panel.bottom + belowPlot * chart.em, mark.label);
        free = x + half + 0.5 * chart.em;
    }
}

void drawXName(Chart& chart, const Panel& panel)
{
    std::string name = fitted(chart, chart.name(chart.choice.x), chart.right - chart.left);
    double x = chart.right - chart.width(name);
    addText(chart, x, panel.bottom + belowPlot * chart.em + chart.rowHeight(), std::move(name));
}

// Points in one column of pixels, of which a curve shows no more than the first, the lowest, the highest and the last.
class Column {
public:
    explicit Column(std::vector<Pixel>& toLine) : line(toLine) {}

    void take(Pixel at)
    {
        if (count != 0 && at.x / fine != points[0].x / fine)
            finish();
        if (count < points.size())
            points[count++] = at;
        else
            thin(at);
    }
    void finish()
    {
        line.insert(line.end(), points.begin(), points.begin() + static_cast<std::ptrdiff_t>(count));
        count = 0;
    }

private:
    // Of the inner two and the one that comes, the extremes stay.
    void thin(Pixel at)
    {
        bool lower = points[3].y < std::min(points[1].y, points[2].y);
        bool higher = points[3].y > std::max(points[1].y, points[2].y);
        if (lower || higher) {
            size_t leaves = (points[1].y < points[2].y) == lower ? 1 : 2;
            points[leaves] = points[3];
            if (leaves == 1)
                std::swap(points[1], points[2]);
        }
        points[3] = at;
    }

    std::vector<Pixel>& line;
    std::array<Pixel, 4> points = {};
    size_t count = 0;
};

void addCurve(Chart& chart, std::vector<Pixel>& line, const ThemeColour& colour)
{
    if (line.size() == 1)
        line.push_back(line.front());
    int width = static_cast<int>(std::lround(std::max(1.4, 0.12 * chart.em) * fine));
    if (!line.empty())
        chart.picture.items.push_back(PictureLine{line, width, colour.light});
    line.clear();
}

void drawCurve(Chart& chart, const Panel& panel, int curve, const ThemeColour& colour)
{
    std::vector<Pixel> line;
    Column column(line);
    for (int point = 0; point < chart.series.pointCount(); ++point) {
        double x = chart.series.value(point, chart.choice.x);
        double y = chart.series.value(point, curve);
        if (plottable(x) && plottable(y)) {
            column.take(pixel(chart.placeX(x), placeY(panel, y)));
            continue;
        }
        column.finish();
        addCurve(chart, line, colour);
    }
    column.finish();
    addCurve(chart, line, colour);
}

void drawPanel(Chart& chart, const Panel& panel)
{
    drawXTicks(chart, panel, &panel == &chart.panels.back());
    drawYTicks(chart, panel);
    drawLegend(chart, panel);
    for (size_t i = 0; i < chart.choice.curves.size(); ++i)
        if (std::ranges::find(panel.curves, chart.choice.curves[i]) != panel.curves.end())
            drawCurve(chart, panel, chart.choice.curves[i], curveColour(i));
}

double letterSize(const ChartSize& size)
{
    return std::clamp(10 + 0.012 * (std::min(size.width, size.height) - 240), 9.0, 30.0);
}

} // namespace

Picture drawChart(const GraphSeries& series, const CurveChoice& choice, const ChartSize& size,
                  const std::vector<ChartMark>& marks)
{
    Picture picture{size.width * fine, size.height * fine, {}, fine};
    if (choice.curves.empty())
        return picture;
    Chart chart{series, choice, picture, letterSize(size)};
    makePanels(chart);
    layLeft(chart);
    layX(chart, size.width, marks);
    layPanels(chart, size.height);
    for (const Panel& panel : chart.panels)
        drawPanel(chart, panel);
    drawXName(chart, chart.panels.back());
    return picture;
}

} // namespace torvane
