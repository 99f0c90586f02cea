// The parameter file has the rectangle, the entry file whether the window was maximised.
#include "ui/window_place.h"

#include "ui/display.h"

#include <algorithm>

namespace torvane {

namespace {

constexpr int defaultWidth = 800; // on an ordinary display
constexpr int defaultHeight = 480;
constexpr int graspable = 100; // of a title bar's width
constexpr std::string_view maximisedEntry = "windowMaximised";

// One direction of the main window.
struct Extent {
    int32_t &low, &high, &size, &screen;
    int standard, metric;
    LONG room; // without bars of the desktop
};

void centre(const Extent& extent)
{
    extent.size = std::min<int32_t>(extent.size, extent.room);
    extent.screen = GetSystemMetrics(extent.metric);
    extent.low = (extent.screen - extent.size) / 2;
    extent.high = extent.low + extent.size;
}

// A size of 0 becomes the default, and a place of 0 with it the middle of the screen.
void settle(const Extent& extent)
{
    bool sized = extent.size > 0;
    if (!sized)
        extent.size = scaled(extent.standard);
    if (!sized && extent.low == 0)
        centre(extent);
    extent.high = static_cast<int32_t>(int64_t{extent.low} + extent.size); // a file may hold any place
}

MONITORINFO monitorOf(const RECT& place, DWORD otherwise)
{
    MONITORINFO monitor = {};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&place, otherwise), &monitor);
    return monitor;
}

// Places of hidden windows count from the corner that the desktop's bars leave.
RECT onScreen(RECT place)
{
    MONITORINFO monitor = monitorOf(place, MONITOR_DEFAULTTONEAREST);
    OffsetRect(&place, monitor.rcWork.left - monitor.rcMonitor.left, monitor.rcWork.top - monitor.rcMonitor.top);
    return place;
}

bool wasMaximised(const EntryFile& kept)
{
    return keptValue(kept, maximisedEntry) == "1";
}

} // namespace

bool isReachable(const RECT& window)
{
    int caption = GetSystemMetrics(SM_CYCAPTION);
    RECT bar = {window.left, window.top, window.right, window.top + GetSystemMetrics(SM_CYSIZEFRAME) + caption};
    MONITORINFO monitor = monitorOf(bar, MONITOR_DEFAULTTONULL);
    RECT seen;
    return IntersectRect(&seen, &bar, &monitor.rcWork) && seen.right - seen.left >= scaled(graspable) &&
           seen.bottom - seen.top >= caption / 2;
}

RECT returnPlace(HWND window)
{
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    if ((IsIconic(window) || IsZoomed(window)) && GetWindowPlacement(window, &placement))
        return onScreen(placement.rcNormalPosition);
    RECT place = {};
    GetWindowRect(window, &place);
    return place;
}

void settleMainPlace(ParameterBlock& block)
{
    int32_t* rect = block.windowRect;
    RECT room = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &room, 0);
    const Extent extents[] = {
        {rect[0], rect[2], block.windowWidth, block.screenWidth, defaultWidth, SM_CXSCREEN, room.right - room.left},
        {rect[1], rect[3], block.windowHeight, block.screenHeight, defaultHeight, SM_CYSCREEN, room.bottom - room.top},
    };
    for (const Extent& extent : extents)
        settle(extent);
    if (isReachable({rect[0], rect[1], rect[2], rect[3]}))
        return;
    for (const Extent& extent : extents)
        centre(extent);
}

void showAsKept(HWND window, const EntryFile& kept)
{
    ShowWindow(window, wasMaximised(kept) ? SW_SHOWMAXIMIZED : SW_SHOWDEFAULT);
}

void keepMainPlace(HWND window, ParameterBlock& block, EntryFile& kept)
{
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof placement;
    GetWindowPlacement(window, &placement);
    bool returnsMaximised = IsIconic(window) && (placement.flags & WPF_RESTORETOMAXIMIZED) != 0;
    bool maximised = IsZoomed(window) || returnsMaximised;
    if (maximised != wasMaximised(kept))
        keepValue(kept, maximisedEntry, maximised ? "1" : "0");
    RECT place = returnPlace(window);
    const LONG edges[] = {place.left, place.top, place.right, place.bottom};
    std::ranges::copy(edges, block.windowRect);
    block.windowWidth = place.right - place.left;
    block.windowHeight = place.bottom - place.top;
}

} // namespace torvane
