#include "plot/geometry.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace torvane {

namespace {

struct Weight {
    int from; // pixels of the smaller side
    int lineWidth, fontHeight;
};

constexpr Weight weights[] = {{960, 3, 16}, {480, 2, 14}, {0, 1, 12}};

const Weight& weightOf(int side)
{
    return *std::find_if(std::begin(weights), std::end(weights) - 1, [=](const Weight& w) { return side >= w.from; });
}

// Truncated, and held where neither arithmetic nor painting overflows.
int pixels(double distance)
{
    constexpr double farOutside = 1e6;
    return std::isnan(distance) ? 0 : static_cast<int>(std::clamp(distance, -farOutside, farOutside));
}

// Fewest steps that reach a distance from zero.
int stepsTo(double distance, double step)
{
    int steps = static_cast<int>(std::ceil(distance / step));
    return steps * step < distance ? steps + 1 : steps;
}

int seriesOn(const Graph& graph, Axis axis)
{
    int series = graph.axisSeries[axis];
    return series >= 0 && series < graph.series.seriesCount() ? series : -1;
}

AxisScale scaleOf(const Graph& graph, Axis axis)
{
    int series = seriesOn(graph, axis);
    return series < 0
               ? scaleAxis(0.0, 0.0)
               : scaleAxis(graph.seriesMin[static_cast<size_t>(series)], graph.seriesMax[static_cast<size_t>(series)]);
}

void fillAxis(AxisScale& axis, int length)
{
    axis.factor = std::max(length, 0) / (axis.top() - axis.bottom());
}

// Brings the zeros of both Y axes together by shrinking both, and returns the pixels that lie below zero. A difference
// of up to 5 percent of the height is left alone.
double alignZeros(AxisScale& first, AxisScale& second)
{
    constexpr double leftAlone = 0.05;
    double aboveFirst = first.top() / (first.top() - first.bottom());
    double aboveSecond = second.top() / (second.top() - second.bottom());
    bool firstHigher = aboveFirst - aboveSecond > leftAlone;
    bool secondHigher = aboveSecond - aboveFirst > leftAlone;
    if (firstHigher || secondHigher) {
        double share = firstHigher ? 1 - aboveSecond + aboveFirst : 1 - aboveFirst + aboveSecond;
        first.factor /= share;
        second.factor /= share;
    }
    const AxisScale& deeper = firstHigher ? second : first;
    return std::fabs(deeper.bottom()) * deeper.factor;
}

} // namespace

AxisScale scaleAxis(double least, double most)
{
    double range = most - least;
    if (!(range >= 1e-300)) { // also what is no number; a smaller range has no scale in pixels
        range = most = 1.0;
        least = 0.0;
    }
    double step = std::pow(10.0, std::trunc(std::log10(range)));
    while (step > 0.5 * range)
        step *= 0.1;
    while (step > 0.2 * range)
        step *= 0.5;
    while (0.1 * range > step)
        step *= 2.0;
    AxisScale scale;
    scale.step = step;
    scale.ticksBelow = least < 0.0 ? stepsTo(-least, step) : 0;
    scale.ticksAbove = most > 0.0 ? stepsTo(most, step) : 0;
    return scale;
}

GraphGeometry layOut(const Graph& graph, int width, int height)
{
    const GraphKind& kind = kindOf(graph);
    const Weight& weight = weightOf(std::min(width, height));
    GraphGeometry geometry = {};
    geometry.width = width;
    geometry.height = height;
    geometry.marginX = width * 10 / 100;
    geometry.marginY = height * 10 / 100;
    geometry.tick = std::min(width, height) * 2 / 100;
    geometry.topStrip = kind.select || kind.search ? 20 : 0;
    geometry.lineWidth = weight.lineWidth;
    geometry.fontHeight = weight.fontHeight;
    for (int axis = axisX; axis < kind.axes; ++axis)
        geometry.axis[axis] = scaleOf(graph, static_cast<Axis>(axis));
    AxisScale& first = geometry.axis[axisY];
    AxisScale& second = geometry.axis[axisSecondY];
    fillAxis(geometry.axis[axisX], width - 2 * geometry.marginX);
    fillAxis(first, height - 2 * geometry.marginY - geometry.topStrip);
    fillAxis(second, height - 2 * geometry.marginY - geometry.topStrip);
    double below = kind.axes > 2 ? alignZeros(first, second) : std::fabs(first.bottom()) * first.factor;
    const AxisScale& x = geometry.axis[axisX];
    geometry.originX = pixels(std::fabs(x.bottom()) * x.factor + geometry.marginX);
    geometry.originY = pixels(height - geometry.marginY - below);
    return geometry;
}

int placeX(const GraphGeometry& geometry, double value)
{
    return geometry.originX + pixels(geometry.axis[axisX].factor * value);
}

int placeY(const GraphGeometry& geometry, double value, Axis axis)
{
    return geometry.originY - pixels(geometry.axis[axis].factor * value);
}

bool placeOf(const Graph& graph, const GraphGeometry& geometry, int point, Axis vertical, Pixel& place)
{
    if (!hasSeries(graph, axisX) || !hasSeries(graph, vertical))
        return false;
    double x = graph.series.value(point, graph.axisSeries[axisX]);
    double y = graph.series.value(point, graph.axisSeries[vertical]);
    place = {placeX(geometry, x), placeY(geometry, y, vertical)};
    return plottable(x) && plottable(y);
}

bool hasSeries(const Graph& graph, Axis axis)
{
    return seriesOn(graph, axis) >= 0;
}

} // namespace torvane
