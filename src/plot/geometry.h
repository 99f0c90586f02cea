// Where values stand in a window: margins, and for each axis its step, limits and scale. Computed anew at every paint.
#pragma once

#include "plot/graph.h"
#include "plot/picture.h"

namespace torvane {

struct AxisScale {
    double step = 1;    // between two ticks
    int ticksBelow = 0; // steps from 0 to the lower limit
    int ticksAbove = 1; // steps from 0 to the upper limit
    double factor = 0;  // pixels for a unit

    double bottom() const
    {
        return -ticksBelow * step;
    }
    double top() const
    {
        return ticksAbove * step;
    }
};

struct GraphGeometry {
    int width, height; // pixels of the client area
    int marginX, marginY;
    int tick;     // by which axis lines reach out of the plot
    int topStrip; // room for the controls
    int lineWidth, fontHeight;
    AxisScale axis[3];
    int originX, originY; // where the values are 0
};

// Steps and limits for values from least to most, between which zero lies. A range of zero becomes 0 to 1.
AxisScale scaleAxis(double least, double most);

GraphGeometry layOut(const Graph& graph, int width, int height);

// Place of a value on an axis. What lies absurdly far outside is held at a place far outside.
int placeX(const GraphGeometry& geometry, double value);
int placeY(const GraphGeometry& geometry, double value, Axis axis = axisY);

// Place of a point by the series on the X axis and on one of the Y axes; false where it has none, a value being no
// number or a series missing.
bool placeOf(const Graph& graph, const GraphGeometry& geometry, int point, Axis vertical, Pixel& place);

// Whether there is a series on the axis.
bool hasSeries(const Graph& graph, Axis axis);

} // namespace torvane
