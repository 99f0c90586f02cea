// The picture of the graph window on the screen. What the data give is drawn once into a bitmap that stands until
// something about it changes; the read-out moves over it.
#pragma once

#include "plot/graph.h"
#include "plot/ground.h"
#include "plot/picture.h"
#include "ui/gdi_object.h"

namespace torvane {

// Sizes are a window's, in pixels of the display; the picture is in those of an ordinary one, for which letters and
// lines are measured.
Picture graphPicture(const Graph& graph, SIZE size);

// Of that size, as it is seen on a ground.
GdiObject<HBITMAP> drawGraphBitmap(HDC like, const Graph& graph, SIZE size, const Ground& ground);

class GraphCanvas {
public:
    // The next paint draws anew: another series, other colours.
    void forget();
    // With the marks of a point; -1: of none.
    void paint(HDC screen, const Graph& graph, SIZE size, int point);

private:
    GdiObject<HBITMAP> base;
    SIZE drawn = {};
};

} // namespace torvane
