#include "plot/graph_view.h"

#include "core/text.h"
#include "plot/draw_graph.h"
#include "plot/geometry.h"
#include "plot/track_map.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace torvane {

namespace {

TrackWay wayOf(const Graph& graph)
{
    return {graph.series.latitude, graph.series.longitude};
}

constexpr int mapTop = 36; // pixels: below the row of the controls

ChartSize mapSize(const Graph& graph, int width, int height)
{
    return {width - widthOfCurves(graph, width), std::max(height - mapTop, 0)};
}

bool readsOut(const Graph& graph)
{
    return kindOf(graph).axes > 1 && graph.series.pointCount() > 0;
}

// How far a point is from a place: what comes first counts first.
struct Farness {
    int64_t first, second;
    bool operator<(const Farness& other) const
    {
        return first != other.first ? first < other.first : second < other.second;
    }
};

std::optional<Farness> farnessOf(const Graph& graph, const GraphGeometry& geometry, int point, Pixel at)
{
    std::optional<Farness> least;
    for (int axis = axisY; axis < kindOf(graph).axes; ++axis) {
        Pixel place;
        if (!placeOf(graph, geometry, point, static_cast<Axis>(axis), place))
            continue;
        int64_t across = std::abs(place.x - at.x), along = std::abs(place.y - at.y);
        Farness own = kindOf(graph).lines ? Farness{across, along} : Farness{across * across + along * along, 0};
        least = least ? std::min(*least, own) : own;
    }
    return least;
}

std::optional<Farness> farnessOnMap(const Graph& graph, const TrackScale& scale, int point, Pixel at)
{
    double dx = scale.x(graph.series.longitude[static_cast<size_t>(point)]) - at.x;
    double dy = scale.y(graph.series.latitude[static_cast<size_t>(point)]) - at.y;
    double squared = dx * dx + dy * dy;
    if (!(squared < 1e12)) // also what is no number
        return std::nullopt;
    return Farness{static_cast<int64_t>(squared), 0};
}

template <typename Measure>
int nearestBy(const Graph& graph, Measure measure)
{
    std::optional<Farness> least;
    int found = -1;
    for (int point = 0; point < graph.series.pointCount(); ++point) {
        std::optional<Farness> own = measure(point);
        if (own && (!least || *own < *least)) {
            least = own;
            found = point;
        }
    }
    return found;
}

bool isShown(const Graph& graph, const GraphGeometry& geometry, int point)
{
    return farnessOf(graph, geometry, point, {0, 0}).has_value();
}

// The next point that has a place, at another column where `apart`.
int walk(const Graph& graph, const GraphGeometry& geometry, int from, int direction, bool apart)
{
    int count = graph.series.pointCount();
    int column = from >= 0 && from < count ? placeX(geometry, graph.series.value(from, graph.axisSeries[axisX])) : -1;
    for (int point = from + direction; point >= 0 && point < count; point += direction) {
        bool elsewhere = placeX(geometry, graph.series.value(point, graph.axisSeries[axisX])) != column;
        if ((elsewhere || !apart) && isShown(graph, geometry, point))
            return point;
    }
    return from;
}

void addValue(const Graph& graph, Axis axis, int point, std::string& text)
{
    if (!hasSeries(graph, axis))
        return;
    int series = graph.axisSeries[axis];
    double value = graph.series.value(point, series);
    const char* blank = text.empty() ? "" : "   ";
    std::string number = plottable(value) ? formatText("%.5g", value) : std::string("-");
    text += blank + graph.series.seriesNames[static_cast<size_t>(series)] + ' ' + number;
}

Picture drawMap(const Graph& graph, int width, int height)
{
    int series = graph.axisSeries[axisY];
    std::vector<double> values;
    values.reserve(static_cast<size_t>(graph.series.pointCount()));
    for (int point = 0; point < graph.series.pointCount(); ++point)
        values.push_back(graph.series.value(point, series));
    return drawTrackMap(wayOf(graph), {graph.series.seriesNames[static_cast<size_t>(series)], values},
                        mapSize(graph, width, height));
}

// Each kind of item, so many times as large, and moved.
struct Placing {
    int left, top, times;

    Pixel moved(Pixel at) const
    {
        return {left + at.x * times, top + at.y * times};
    }
    void operator()(PictureLine& line) const
    {
        for (Pixel& point : line.points)
            point = moved(point);
        line.width *= times;
    }
    void operator()(PictureBox& box) const
    {
        Pixel first = moved({box.left, box.top}), second = moved({box.right, box.bottom});
        box = {first.x, first.y, second.x, second.y, box.fill};
    }
    void operator()(PictureText& text) const
    {
        text.at = moved(text.at);
        text.height *= times;
    }
};

void place(Picture& view, Picture& part, const Placing& placing)
{
    for (PictureItem& item : part.items) {
        std::visit(placing, item);
        view.items.push_back(std::move(item));
    }
}

void addSquare(Picture& picture, Pixel at, int reach)
{
    picture.items.push_back(PictureBox{at.x - reach, at.y - reach, at.x + reach + 1, at.y + reach + 1, colourPicked});
}

void addPlaceOnMap(const Graph& graph, int width, int height, int point, Picture& picture)
{
    TrackScale scale(wayOf(graph), mapSize(graph, width, height));
    double x = scale.x(graph.series.longitude[static_cast<size_t>(point)]);
    double y = scale.y(graph.series.latitude[static_cast<size_t>(point)]);
    if (std::isfinite(x) && std::isfinite(y))
        addSquare(picture, {widthOfCurves(graph, width) + static_cast<int>(x), mapTop + static_cast<int>(y)}, 4);
}

} // namespace

bool hasMap(const Graph& graph)
{
    auto known = [](double place) { return std::isfinite(place); };
    return !graph.series.latitude.empty() && std::ranges::any_of(graph.series.latitude, known);
}

int widthOfCurves(const Graph& graph, int width)
{
    return hasMap(graph) ? width * 3 / 5 : width;
}

Picture drawGraphView(const Graph& graph, int width, int height)
{
    int edge = widthOfCurves(graph, width);
    Picture curves = drawGraph(graph, edge, height);
    if (!hasMap(graph))
        return curves;
    Picture map = drawMap(graph, width, height);
    Picture view{width * map.perPixel, height * map.perPixel, {}, map.perPixel};
    place(view, curves, {0, 0, map.perPixel});
    place(view, map, {edge * map.perPixel, mapTop * map.perPixel, 1});
    return view;
}

int nearestPoint(const Graph& graph, int width, int height, int x, int y)
{
    if (!readsOut(graph))
        return -1;
    int edge = widthOfCurves(graph, width);
    if (x >= edge && hasMap(graph)) {
        TrackScale scale(wayOf(graph), mapSize(graph, width, height));
        return nearestBy(graph, [&](int point) { return farnessOnMap(graph, scale, point, {x - edge, y - mapTop}); });
    }
    GraphGeometry geometry = layOut(graph, edge, height);
    return nearestBy(graph, [&](int point) { return farnessOf(graph, geometry, point, {x, y}); });
}

int steppedPoint(const Graph& graph, int width, int height, int from, PointStep step)
{
    constexpr int farParts = 20; // of all points
    if (!readsOut(graph))
        return -1;
    GraphGeometry geometry = layOut(graph, widthOfCurves(graph, width), height);
    int count = graph.series.pointCount();
    int far = std::max(1, count / farParts);
    switch (from < 0 ? PointStep::first : step) {
    case PointStep::back:
        return walk(graph, geometry, from, -1, true);
    case PointStep::forth:
        return walk(graph, geometry, from, 1, true);
    case PointStep::farBack:
        return walk(graph, geometry, std::max(from - far, 0) + 1, -1, false);
    case PointStep::farForth:
        return walk(graph, geometry, std::min(from + far, count - 1) - 1, 1, false);
    case PointStep::first:
        return walk(graph, geometry, -1, 1, false);
    case PointStep::last:
        return walk(graph, geometry, count, -1, false);
    }
    return from;
}

std::string readOut(const Graph& graph, int point)
{
    std::string text;
    if (!readsOut(graph) || point < 0 || point >= graph.series.pointCount())
        return text;
    for (int axis = axisX; axis < kindOf(graph).axes; ++axis)
        addValue(graph, static_cast<Axis>(axis), point, text);
    return text;
}

Picture drawReadOut(const Graph& graph, int width, int height, int point)
{
    Picture picture{width, height, {}};
    if (readOut(graph, point).empty())
        return picture;
    GraphGeometry geometry = layOut(graph, widthOfCurves(graph, width), height);
    for (int axis = axisY; axis < kindOf(graph).axes; ++axis) {
        Pixel place;
        if (placeOf(graph, geometry, point, static_cast<Axis>(axis), place))
            addSquare(picture, place, 1 + geometry.lineWidth);
    }
    if (hasMap(graph))
        addPlaceOnMap(graph, width, height, point, picture);
    return picture;
}

} // namespace torvane
