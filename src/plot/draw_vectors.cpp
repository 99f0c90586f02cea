#include "plot/draw_vectors.h"

#include <algorithm>
#include <cmath>

namespace torvane {

namespace {

struct Vector {
    double x, y; // on the two axes chosen
    const std::string& name;
};

// How far, in lengths of the vector, one goes along it until an axis ends. The vector has a direction.
double reach(const GraphGeometry& g, const Vector& v, bool forward)
{
    double most = 1e300;
    const double components[] = {v.x, v.y};
    for (int axis = axisX; axis <= axisY; ++axis) {
        double component = forward ? components[axis] : -components[axis];
        if (component != 0.0)
            most = std::min(most, (component > 0.0 ? g.axis[axis].top() : g.axis[axis].bottom()) / component);
    }
    return forward ? most : -most;
}

Pixel placeAt(const GraphGeometry& g, const Vector& v, double lengths)
{
    return {placeX(g, lengths * v.x), placeY(g, lengths * v.y)};
}

int rounded(double pixels)
{
    return static_cast<int>(std::lround(pixels));
}

// The two strokes of an arrow's head. Its foot lies 1/32 of the line's length behind the tip.
PictureLine arrowHead(const GraphGeometry& g, const Vector& v, Pixel tip, Pixel lineStart, Pixel lineEnd)
{
    double size = std::sqrt(g.lineWidth * 32.0);
    double norm = std::hypot(v.x, v.y);
    double across = std::fabs(v.y) / norm * size; // split by the squares of the components
    double along = std::fabs(v.x) / norm * size;
    int dx = rounded(v.y < 0.0 ? -across : across);
    int dy = rounded(v.x < 0.0 ? -along : along);
    Pixel foot = {tip.x - (lineEnd.x - lineStart.x) / 32, tip.y - (lineEnd.y - lineStart.y) / 32};
    return {{{foot.x - dx, foot.y - dy}, tip, {foot.x + dx, foot.y + dy}}, g.lineWidth, colourVector};
}

Pixel nameAt(const GraphGeometry& g, const Vector& v, Pixel tip)
{
    int length = (g.lineWidth + 3) * static_cast<int>(v.name.size());
    int x = v.x < 0.0 ? tip.x - 3 * g.lineWidth - length : tip.x + 3 * g.lineWidth;
    int y = v.y < 0.0 ? tip.y + 5 * g.lineWidth + 10 : tip.y - 5 * g.lineWidth - 20;
    return {x, y};
}

void drawVector(const GraphGeometry& g, const Vector& v, bool arrow, Picture& picture)
{
    Pixel start = placeAt(g, v, reach(g, v, false));
    Pixel end = placeAt(g, v, reach(g, v, true));
    Pixel tip = arrow ? placeAt(g, v, 1.0) : end;
    picture.items.push_back(PictureLine{{start, end}, 1, colourVector});
    if (arrow)
        picture.items.push_back(PictureLine{{{g.originX, g.originY}, tip}, g.lineWidth, colourVector});
    picture.items.push_back(arrowHead(g, v, tip, start, end));
    picture.items.push_back(PictureText{nameAt(g, v, tip), v.name, g.fontHeight, colourVector, false});
}

} // namespace

void drawVectors(const Graph& graph, const GraphGeometry& geometry, Picture& picture)
{
    const GraphSeries& series = graph.series;
    size_t width = series.seriesNames.size();
    if (!hasSeries(graph, axisX) || !hasSeries(graph, axisY))
        return;
    size_t count = std::min(series.vectorNames.size(), series.vectorValues.size() / width);
    for (size_t i = 0; i < count; ++i) {
        const double* row = &series.vectorValues[i * width];
        Vector v{row[graph.axisSeries[axisX]], row[graph.axisSeries[axisY]], series.vectorNames[i]};
        if (plottable(v.x) && plottable(v.y) && (v.x != 0.0 || v.y != 0.0))
            drawVector(geometry, v, series.vectorStyle == 1, picture);
    }
}

} // namespace torvane
