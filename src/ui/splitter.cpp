#include "ui/splitter.h"

#include "core/entry_file.h"
#include "core/pane_split.h"
#include "ui/display.h"
#include "ui/main_window.h"
#include "ui/screen_set.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace torvane {

namespace {

constexpr wchar_t className[] = L"TorvaneSplitter";
constexpr int splitterId = 204;
constexpr int thickness = 6;  // pixels of an ordinary display: the edges of both panes
constexpr int leastPane = 40; // likewise
constexpr char keptName[] = "upperPane";

// In pixels of an ordinary display.
int wantedHeight()
{
    int kept = atoi(std::string(keptValue(mainWindow.session.kept, keptName)).c_str());
    return kept > 0 ? kept : firstUpperHeight;
}

void wantHeight(int height)
{
    constexpr int ordinaryDots = 96;
    int kept = MulDiv(height, ordinaryDots, displayDots());
    if (kept != wantedHeight())
        keepValue(mainWindow.session.kept, keptName, std::to_string(kept));
}

void drag(HWND splitter)
{
    POINT at;
    GetCursorPos(&at);
    HWND window = GetParent(splitter);
    ScreenToClient(window, &at);
    RECT lower;
    GetWindowRect(screenSet.lowerScreen, &lower);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&lower), 2);
    int room = static_cast<int>(lower.bottom);
    wantHeight(std::max(upperPaneHeight(static_cast<int>(at.y), room, scaled(leastPane)), 1));
    layoutScreens(window);
}

LRESULT CALLBACK splitterProcedure(HWND splitter, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_LBUTTONDOWN:
        SetCapture(splitter);
        return 0;
    case WM_MOUSEMOVE:
        if (GetCapture() == splitter)
            drag(splitter);
        return 0;
    case WM_LBUTTONUP:
        ReleaseCapture();
        return 0;
    }
    return DefWindowProcW(splitter, message, wParam, lParam);
}

} // namespace

int registerSplitterClass()
{
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = splitterProcedure;
    windowClass.hInstance = mainWindow.instance;
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_SIZENS));
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_3DFACE + 1));
    windowClass.lpszClassName = className;
    return RegisterClassExW(&windowClass) != 0 ? 0 : -1;
}

HWND createSplitter(HWND window)
{
    return CreateWindowExW(0, className, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS, 0, 0, 0, 0, window,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(splitterId)), mainWindow.instance, nullptr);
}

int upperPaneHeightIn(int room)
{
    return upperPaneHeight(scaled(wantedHeight()), room, scaled(leastPane));
}

void placeSplitter(HWND splitter, int y, int width)
{
    int height = scaled(thickness);
    SetWindowPos(splitter, HWND_TOP, 0, y - height / 2, width, height, SWP_NOACTIVATE);
}

} // namespace torvane
