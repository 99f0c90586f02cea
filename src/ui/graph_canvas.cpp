#include "ui/graph_canvas.h"

#include "plot/graph_view.h"
#include "ui/display.h"
#include "ui/paint_picture.h"

namespace torvane {

namespace {

RECT whole(SIZE size)
{
    return {0, 0, size.cx, size.cy};
}

} // namespace

Picture graphPicture(const Graph& graph, SIZE size)
{
    return drawGraphView(graph, unscaled(size.cx), unscaled(size.cy));
}

GdiObject<HBITMAP> drawGraphBitmap(HDC like, const Graph& graph, SIZE size, const Ground& ground)
{
    GdiObject bitmap(CreateCompatibleBitmap(like, size.cx, size.cy));
    MemoryDevice device(like, bitmap);
    GdiObject brush(CreateSolidBrush(ground.ground));
    RECT place = whole(size);
    FillRect(device, &place, brush);
    paintPicture(device, graphPicture(graph, size), place, ground);
    return bitmap;
}

void GraphCanvas::forget()
{
    drawn = {};
}

// Put together off the screen and copied, so that nothing flickers.
void GraphCanvas::paint(HDC screen, const Graph& graph, SIZE size, int point)
{
    if (size.cx <= 0 || size.cy <= 0)
        return;
    if (drawn.cx != size.cx || drawn.cy != size.cy)
        base = drawGraphBitmap(screen, graph, size, systemGround());
    drawn = size;
    GdiObject shown(CreateCompatibleBitmap(screen, size.cx, size.cy));
    MemoryDevice from(screen, base), to(screen, shown);
    BitBlt(to, 0, 0, size.cx, size.cy, from, 0, 0, SRCCOPY);
    paintPicture(to, drawReadOut(graph, unscaled(size.cx), unscaled(size.cy), point), whole(size), systemGround());
    BitBlt(screen, 0, 0, size.cx, size.cy, to, 0, 0, SRCCOPY);
}

} // namespace torvane
