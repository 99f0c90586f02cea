// Axes with their ticks, labels and names, then the data by the kind of the graph. Vectors: draw_vectors.cpp.
#include "plot/draw_graph.h"

#include "core/text.h"
#include "plot/draw_vectors.h"
#include "plot/geometry.h"

#include <algorithm>
#include <optional>

namespace torvane {

namespace {

constexpr int thin = 1;

struct Drawing {
    const Graph& graph;
    const GraphKind& kind;
    const GraphGeometry& geometry;
    Picture& picture;
};

void addLine(const Drawing& d, Pixel from, Pixel to, Colour colour)
{
    d.picture.items.push_back(PictureLine{{from, to}, thin, colour});
}

void addText(const Drawing& d, Pixel at, std::string text, Colour colour, bool emphasized = false)
{
    d.picture.items.push_back(PictureText{at, std::move(text), d.geometry.fontHeight, colour, emphasized});
}

// The widths of a text are not known here: so much is counted for each character.
int guessedWidth(const GraphGeometry& g, const std::string& text)
{
    return g.lineWidth * 3 + (g.lineWidth + 3) * static_cast<int>(text.size());
}

int raise(const GraphGeometry& g)
{
    return 2 * g.lineWidth + 12;
}

std::string tickLabel(double value)
{
    std::string label = formatText("%lf", value);
    label.erase(label.find_last_not_of('0') + 1);
    if (label.back() == '.')
        label.pop_back();
    return label;
}

std::string axisName(const Graph& graph, Axis axis)
{
    return hasSeries(graph, axis) ? graph.series.seriesNames[static_cast<size_t>(graph.axisSeries[axis])]
                                  : std::string();
}

// Axes

Colour axisColour(const Drawing& d, Axis axis)
{
    return d.kind.grey || axis == axisSecondY ? colourGrey : colourBlack;
}

// The horizontal axis runs through zero; under bars it runs along the lower edge.
int levelOfX(const Drawing& d)
{
    return d.kind.bars ? d.geometry.height - d.geometry.marginY : d.geometry.originY;
}

int leftOf(const Drawing& d, Axis vertical)
{
    return vertical == axisSecondY ? d.geometry.width - d.geometry.marginX : d.geometry.originX;
}

int topEnd(const GraphGeometry& g)
{
    return g.marginY - g.tick + g.topStrip;
}

void drawXTick(const Drawing& d, double value)
{
    constexpr int reach = 3;
    const GraphGeometry& g = d.geometry;
    Colour colour = axisColour(d, axisX);
    int x = placeX(g, value);
    int y = levelOfX(d);
    addLine(d, {x, y - reach}, {x, y + reach}, colour);
    addText(d, {x + g.lineWidth + 2, y + g.lineWidth + 2}, tickLabel(value), colour);
}

void drawYTick(const Drawing& d, Axis axis, double value)
{
    constexpr int reach = 3;
    const GraphGeometry& g = d.geometry;
    Colour colour = axisColour(d, axis);
    int x = leftOf(d, axis);
    int y = placeY(g, value, axis);
    std::string label = tickLabel(value);
    int shift = axis == axisSecondY ? g.lineWidth + 2 : -guessedWidth(g, label);
    addLine(d, {x - reach, y}, {x + reach, y}, colour);
    addText(d, {x + shift, y - raise(g)}, std::move(label), colour);
}

void drawTicks(const Drawing& d, Axis axis)
{
    const AxisScale& scale = d.geometry.axis[axis];
    for (int n = -scale.ticksBelow; n <= scale.ticksAbove; ++n) {
        double value = n * scale.step;
        if (axis == axisX)
            drawXTick(d, value);
        else
            drawYTick(d, axis, value);
    }
}

void drawXAxis(const Drawing& d)
{
    const GraphGeometry& g = d.geometry;
    Colour colour = axisColour(d, axisX);
    int right = g.width - g.marginX + g.tick;
    int y = levelOfX(d);
    addLine(d, {g.marginX - g.tick, y}, {right, y}, colour);
    drawTicks(d, axisX);
    addText(d, {right, y - raise(g)}, axisName(d.graph, axisX), colour);
}

void drawYLine(const Drawing& d, Axis axis)
{
    const GraphGeometry& g = d.geometry;
    int x = leftOf(d, axis);
    addLine(d, {x, g.height - g.marginY + g.tick}, {x, topEnd(g)}, axisColour(d, axis));
}

void drawYAxis(const Drawing& d, Axis axis)
{
    const GraphGeometry& g = d.geometry;
    std::string name = axisName(d.graph, axis);
    int shift = axis == axisSecondY ? -guessedWidth(g, name) : g.lineWidth + 2;
    drawYLine(d, axis);
    drawTicks(d, axis);
    addText(d, {leftOf(d, axis) + shift, topEnd(g)}, std::move(name), axisColour(d, axis));
}

void drawAxes(const Drawing& d)
{
    drawXAxis(d);
    if (d.kind.axes == 1)
        drawYLine(d, axisY);
    for (int axis = axisY; axis < d.kind.axes; ++axis)
        drawYAxis(d, static_cast<Axis>(axis));
}

// Data

// Of neighbours on one column of pixels those that are seen: a run can have far more points than a window has pixels.
struct Column {
    Pixel first, last;
    int top, bottom;

    explicit Column(Pixel at) : first(at), last(at), top(at.y), bottom(at.y) {}
    void take(Pixel at)
    {
        last = at;
        top = std::min(top, at.y);
        bottom = std::max(bottom, at.y);
    }
    void drawOn(PictureLine& line) const
    {
        for (Pixel at : {first, {first.x, top}, {first.x, bottom}, last})
            if (line.points.empty() || line.points.back() != at)
                line.points.push_back(at);
    }
};

void drawCurve(const Drawing& d, Axis vertical)
{
    PictureLine line{{}, d.geometry.lineWidth, vertical == axisSecondY ? colourGrey : colourBlack};
    std::optional<Column> column;
    for (int point = 0; point < d.graph.series.pointCount(); ++point) {
        Pixel place;
        if (!placeOf(d.graph, d.geometry, point, vertical, place))
            continue;
        if (column && column->last.x == place.x) {
            column->take(place);
            continue;
        }
        if (column)
            column->drawOn(line);
        column.emplace(place);
    }
    if (column)
        column->drawOn(line);
    if (line.points.size() == 1)
        line.points.push_back(line.points.front());
    if (!line.points.empty())
        d.picture.items.push_back(std::move(line));
}

void drawCurves(const Drawing& d)
{
    for (int axis = axisY; axis < d.kind.axes; ++axis)
        drawCurve(d, static_cast<Axis>(axis));
}

void drawBar(const Drawing& d, int row, double rowHeight)
{
    constexpr double filled = 0.8; // of a row's height
    const GraphGeometry& g = d.geometry;
    double value = d.graph.series.value(row, d.graph.axisSeries[axisX]);
    double top = g.marginY + row * rowHeight;
    if (plottable(value)) {
        d.picture.items.push_back(PictureBox{g.marginX, static_cast<int>(top), placeX(g, value),
                                             static_cast<int>(top + filled * rowHeight), colourBar});
    }
    if (static_cast<size_t>(row) < d.graph.series.pointLabels.size()) {
        addText(d, {2 * g.marginX / 3, static_cast<int>(top) + 2 * g.lineWidth},
                d.graph.series.pointLabels[static_cast<size_t>(row)], colourBlack);
    }
}

void drawBars(const Drawing& d)
{
    if (hasSeries(d.graph, axisX)) {
        int rows = d.graph.series.pointCount();
        double rowHeight = (d.geometry.height - 2 * d.geometry.marginY) / static_cast<double>(rows);
        for (int row = 0; row < rows; ++row)
            drawBar(d, row, rowHeight);
    }
}

struct MarkStyle {
    int penWidth; // in line widths
    Colour diamond, tag;
    bool emphasized;
};

constexpr MarkStyle plainMark = {1, colourBlack, colourTag, false};
constexpr MarkStyle pickedMark = {2, colourPicked, colourPicked, true};

void drawMark(const Drawing& d, int point, const MarkStyle& style)
{
    Pixel at;
    if (!placeOf(d.graph, d.geometry, point, axisY, at))
        return;
    int radius = d.geometry.lineWidth;
    d.picture.items.push_back(PictureLine{{{at.x - radius, at.y},
                                           {at.x, at.y - radius},
                                           {at.x + radius, at.y},
                                           {at.x, at.y + radius},
                                           {at.x - radius, at.y}},
                                          d.geometry.lineWidth * style.penWidth,
                                          style.diamond});
    if (static_cast<size_t>(point) < d.graph.series.pointTags.size()) {
        addText(d, {at.x + 2 * d.geometry.lineWidth, at.y}, d.graph.series.pointTags[static_cast<size_t>(point)],
                style.tag, style.emphasized);
    }
}

void drawMarks(const Drawing& d)
{
    int count = d.graph.series.pointCount();
    for (int point = 0; point < count; ++point)
        drawMark(d, point, plainMark);
    if (d.graph.picked > 0 && d.graph.picked <= count)
        drawMark(d, d.graph.picked - 1, pickedMark);
}

} // namespace

Picture drawGraph(const Graph& graph, int width, int height)
{
    Picture picture{std::max(width, 0), std::max(height, 0), {}};
    GraphGeometry geometry = layOut(graph, picture.width, picture.height);
    Drawing d{graph, kindOf(graph), geometry, picture};
    drawAxes(d);
    if (d.kind.bars)
        drawBars(d);
    if (d.kind.lines)
        drawCurves(d);
    if (d.kind.vectors)
        drawVectors(graph, geometry, picture);
    if (d.kind.marks)
        drawMarks(d);
    return picture;
}

} // namespace torvane
