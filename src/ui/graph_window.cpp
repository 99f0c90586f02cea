// Messages of the graph window.
#include "ui/graph_window.h"

#include "core/wide_text.h"
#include "plot/graph.h"
#include "plot/graph_view.h"
#include "ui/display.h"
#include "ui/graph_canvas.h"
#include "ui/graph_output.h"
#include "ui/help.h"
#include "ui/main_window.h"
#include "ui/message_box.h"
#include "ui/paint_picture.h"
#include "ui/pane_control.h"
#include "ui/resource_ids.h"
#include "ui/window_place.h"

#include <algorithm>
#include <string>
#include <utility>

namespace torvane {

namespace {

constexpr wchar_t className[] = L"graph";
constexpr int readOutId = 7;

// Of the system's menu as well, which keeps the low four bits and all from 0xF000 on.
enum PictureCommand : UINT { copyPicture = 0xE0, printPicture = 0xF0, savePictureId = 0x100, firstAlong = 0x110 };

struct GraphWindow {
    HWND window;
    HWND readOut;
    GdiObject<HFONT> controlFont;
    Graph graph;
    GraphCanvas canvas;
    int point = -1; // that is read out
};

GraphWindow graphWindow;
RECT lastPlace; // of the last one, while the program runs

SIZE clientSize(HWND window)
{
    RECT client;
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

// As the picture is measured.
SIZE pictureSize(HWND window)
{
    SIZE size = clientSize(window);
    return {unscaled(size.cx), unscaled(size.cy)};
}

POINT pointerOn(LPARAM lParam)
{
    return {unscaled(static_cast<short>(LOWORD(lParam))), unscaled(static_cast<short>(HIWORD(lParam)))};
}

// What the user sees and the screen reader tells.
void showPoint(HWND window, int point)
{
    if (point == graphWindow.point)
        return;
    graphWindow.point = point;
    SetWindowTextW(graphWindow.readOut, widen(readOut(graphWindow.graph, point)).c_str());
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, graphWindow.readOut, OBJID_CLIENT, CHILDID_SELF);
    InvalidateRect(window, nullptr, FALSE);
}

void showAnew(HWND window)
{
    graphWindow.canvas.forget();
    std::wstring text = widen(readOut(graphWindow.graph, graphWindow.point));
    SetWindowTextW(graphWindow.readOut, text.c_str());
    InvalidateRect(window, nullptr, TRUE);
}

void runPictureCommand(HWND window, UINT command)
{
    switch (command) {
    case copyPicture:
        return copyGraph(window, graphWindow.graph, clientSize(window));
    case savePictureId:
        return saveGraph(window, graphWindow.graph, clientSize(window));
    case printPicture:
        return printGraph(window, graphWindow.graph, clientSize(window));
    default:
        layAlong(graphWindow.graph, static_cast<int>((command - firstAlong) >> 4));
        return showAnew(window);
    }
}

void appendAlongs(HMENU menu)
{
    const GraphSeries& series = graphWindow.graph.series;
    if (series.alongs < 2)
        return;
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    for (int i = 0; i < series.alongs && i < series.seriesCount(); ++i) {
        UINT chosen = graphWindow.graph.axisSeries[axisX] == i ? MF_CHECKED : MF_UNCHECKED;
        AppendMenuW(menu, MF_STRING | chosen, firstAlong + (static_cast<UINT>(i) << 4),
                    (L"Along " + widen(series.seriesNames[static_cast<size_t>(i)])).c_str());
    }
}

// Both of the right button's menu and of the system's, which icon, Alt and the blank open.
void appendPictureCommands(HMENU menu)
{
    AppendMenuW(menu, MF_STRING, copyPicture, L"&Copy\tCtrl+Insert");
    AppendMenuW(menu, MF_STRING, savePictureId, L"Save &Picture As ...");
    AppendMenuW(menu, MF_STRING, printPicture, L"P&rint ...");
}

void offerPictureCommands(HWND window)
{
    HMENU menu = GetSystemMenu(window, FALSE);
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    appendPictureCommands(menu);
}

void createControl(HWND window, const GraphControl& control)
{
    bool combo = control.label == nullptr;
    if (combo)
        nameNext(window, widen(control.name).c_str());
    DWORD style = WS_CHILD | WS_VISIBLE | (combo ? CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP : ES_READONLY);
    HWND made =
        CreateWindowExW(0, combo ? L"COMBOBOX" : L"EDIT", combo ? L"" : widen(control.label).c_str(), style,
                        scaled(control.x), scaled(control.y), scaled(control.width), scaled(control.height), window,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(control.id)), mainWindow.instance, nullptr);
    SendMessageW(made, WM_SETFONT, reinterpret_cast<WPARAM>(static_cast<HFONT>(graphWindow.controlFont)), TRUE);
    for (const std::string& entry : control.entries)
        SendMessageW(made, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(widen(entry).c_str()));
    if (combo)
        SendMessageW(made, CB_SETCURSEL, static_cast<WPARAM>(control.selected), 0);
    else
        SendMessageW(made, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN,
                     0); // they grow with the display, and cut the label
}

// Beside the lists, above the curves.
void createReadOut(HWND window)
{
    graphWindow.readOut =
        CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOPREFIX, 0, 0, 0, 0, window,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(readOutId)), mainWindow.instance, nullptr);
    SendMessageW(graphWindow.readOut, WM_SETFONT, reinterpret_cast<WPARAM>(static_cast<HFONT>(graphWindow.controlFont)),
                 TRUE);
}

void showChoices(HWND window)
{
    for (const GraphControl& control : graphControls(graphWindow.graph))
        if (control.label == nullptr)
            SendDlgItemMessageW(window, control.id, CB_SETCURSEL, static_cast<WPARAM>(control.selected), 0);
    showAnew(window);
}

LRESULT onCreate(HWND window, WPARAM, LPARAM)
{
    graphWindow.controlFont = createGraphFont(scaled(controlFontHeight), false);
    for (const GraphControl& control : graphControls(graphWindow.graph))
        createControl(window, control);
    createReadOut(window);
    offerPictureCommands(window);
    return 0;
}

LRESULT onSize(HWND window, WPARAM, LPARAM)
{
    constexpr int wholeRoom = 360, edge = 4, line = controlFontHeight + 1;
    int left = freeLeftOf(graphWindow.graph);
    int room = std::max(static_cast<int>(pictureSize(window).cx) - left - edge, 0);
    bool wraps = room < wholeRoom;
    MoveWindow(graphWindow.readOut, scaled(left), scaled(wraps ? edge : controlTop), scaled(room),
               scaled(wraps ? 2 * line : line), TRUE);
    return 0;
}

LRESULT onSystemCommand(HWND window, WPARAM wParam, LPARAM lParam)
{
    UINT command = static_cast<UINT>(wParam & 0xFFF0);
    if (command != copyPicture && command != savePictureId && command != printPicture)
        return DefWindowProcW(window, WM_SYSCOMMAND, wParam, lParam);
    runPictureCommand(window, command);
    return 0;
}

POINT menuPlace(HWND window, LPARAM lParam)
{
    POINT at = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    if (lParam == -1) { // by the keyboard
        at = {scaled(controlTop), scaled(controlTop)};
        ClientToScreen(window, &at);
    }
    return at;
}

LRESULT onContextMenu(HWND window, WPARAM, LPARAM lParam)
{
    HMENU menu = CreatePopupMenu();
    appendPictureCommands(menu);
    appendAlongs(menu);
    POINT at = menuPlace(window, lParam);
    BOOL chosen = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, window, nullptr);
    DestroyMenu(menu);
    if (chosen != 0)
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(chosen), 0);
    return 0;
}

LRESULT onCommand(HWND window, WPARAM wParam, LPARAM lParam)
{
    if (lParam == 0) {
        runPictureCommand(window, LOWORD(wParam));
        return 0;
    }
    if (HIWORD(wParam) != CBN_SELCHANGE)
        return DefWindowProcW(window, WM_COMMAND, wParam, lParam);
    LRESULT entry = SendMessageW(reinterpret_cast<HWND>(lParam), CB_GETCURSEL, 0, 0);
    chooseEntry(graphWindow.graph, LOWORD(wParam), static_cast<int>(entry));
    showChoices(window);
    return 0;
}

LRESULT onMouseMove(HWND window, WPARAM, LPARAM lParam)
{
    TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE, window, 0};
    TrackMouseEvent(&track);
    SIZE size = pictureSize(window);
    POINT at = pointerOn(lParam);
    showPoint(window, nearestPoint(graphWindow.graph, size.cx, size.cy, at.x, at.y));
    return 0;
}

LRESULT onMouseLeave(HWND window, WPARAM, LPARAM)
{
    showPoint(window, -1);
    return 0;
}

struct StepKey {
    WPARAM key;
    PointStep step;
};

constexpr StepKey stepKeys[] = {
    {VK_LEFT, PointStep::back},     {VK_RIGHT, PointStep::forth}, {VK_PRIOR, PointStep::farBack},
    {VK_NEXT, PointStep::farForth}, {VK_HOME, PointStep::first},  {VK_END, PointStep::last},
};

void stepTo(HWND window, PointStep step)
{
    TRACKMOUSEEVENT track = {sizeof track, TME_LEAVE | TME_CANCEL, window, 0};
    TrackMouseEvent(&track); // a pointer that is seen to leave late would take the point away
    SIZE size = pictureSize(window);
    showPoint(window, steppedPoint(graphWindow.graph, size.cx, size.cy, graphWindow.point, step));
}

LRESULT onKey(HWND window, WPARAM wParam, LPARAM lParam)
{
    for (const StepKey& row : stepKeys)
        if (row.key == wParam)
            stepTo(window, row.step);
    if (wParam == VK_INSERT && GetKeyState(VK_CONTROL) < 0)
        runPictureCommand(window, copyPicture);
    return DefWindowProcW(window, WM_KEYDOWN, wParam, lParam);
}

LRESULT onHelpKey(HWND window, WPARAM, LPARAM)
{
    showManual(window, "the-desktop-program");
    return TRUE;
}

LRESULT onSystemColours(HWND window, WPARAM, LPARAM)
{
    showAnew(window);
    return 0;
}

LRESULT onClick(HWND window, WPARAM, LPARAM lParam)
{
    if (kindOf(graphWindow.graph).search) {
        SIZE size = pictureSize(window);
        POINT at = pointerOn(lParam);
        if (pickPoint(graphWindow.graph, size.cx, size.cy, at.x, at.y))
            showChoices(window);
    }
    SetFocus(window);
    return 0;
}

LRESULT onPaint(HWND window, WPARAM, LPARAM)
{
    PAINTSTRUCT paintStruct;
    HDC screen = BeginPaint(window, &paintStruct);
    graphWindow.canvas.paint(screen, graphWindow.graph, clientSize(window), graphWindow.point);
    EndPaint(window, &paintStruct);
    return 0;
}

LRESULT onEraseBackground(HWND, WPARAM, LPARAM)
{
    return 1; // painting covers everything
}

// The labels are read-only edit boxes: on the window's own ground, not on the grey that such boxes have.
LRESULT onLabelColour(HWND, WPARAM wParam, LPARAM)
{
    HDC device = reinterpret_cast<HDC>(wParam);
    SetTextColor(device, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(device, GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
}

LRESULT onDestroy(HWND window, WPARAM, LPARAM)
{
    lastPlace = returnPlace(window);
    graphWindow = {};
    return 0;
}

// In the middle of the screen, in units of the display and no larger than the room that there is.
RECT firstPlace(const GraphSeries& series)
{
    RECT room = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &room, 0);
    int width = std::min(scaled(series.width), static_cast<int>(room.right - room.left));
    int height = std::min(scaled(series.height), static_cast<int>(room.bottom - room.top));
    int left = room.left + (room.right - room.left - width) / 2;
    int top = room.top + (room.bottom - room.top - height) / 2;
    return {left, top, left + width, top + height};
}

constexpr MessageRow messages[] = {
    {WM_CREATE, onCreate},
    {WM_COMMAND, onCommand},
    {WM_SYSCOMMAND, onSystemCommand},
    {WM_LBUTTONUP, onClick},
    {WM_CONTEXTMENU, onContextMenu},
    {WM_MOUSEMOVE, onMouseMove},
    {WM_MOUSELEAVE, onMouseLeave},
    {WM_KEYDOWN, onKey},
    {WM_SIZE, onSize},
    {WM_SYSCOLORCHANGE, onSystemColours},
    {WM_HELP, onHelpKey},
    {WM_PAINT, onPaint},
    {WM_ERASEBKGND, onEraseBackground},
    {WM_CTLCOLORSTATIC, onLabelColour},
    {WM_DESTROY, onDestroy},
};

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    for (const MessageRow& row : messages)
        if (row.message == message)
            return row.handle(window, wParam, lParam);
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

int registerGraphClass()
{
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = windowProcedure;
    windowClass.hInstance = mainWindow.instance;
    windowClass.hIcon = LoadIconW(mainWindow.instance, MAKEINTRESOURCEW(iconTorvane));
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windowClass.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    windowClass.lpszClassName = className;
    if (RegisterClassExW(&windowClass) != 0)
        return 0;
    showMessageBox(mainWindow.window, "alert", "failed to registre graph window class");
    return -1;
}

int openGraphWindow()
{
    if (!mainWindow.session.graph)
        return 0;
    graphWindow.graph = storeGraph(std::move(*mainWindow.session.graph));
    mainWindow.session.graph.reset();
    RECT place = isReachable(lastPlace) ? lastPlace : firstPlace(graphWindow.graph.series);
    // Without an owner, above which it would always stay.
    graphWindow.window = CreateWindowExW(
        WS_EX_CLIENTEDGE, className, L"graph", WS_POPUP | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, place.left, place.top,
        place.right - place.left, place.bottom - place.top, nullptr, nullptr, mainWindow.instance, nullptr);
    if (graphWindow.window == nullptr) {
        showMessageBox(mainWindow.window, "alert", "failed to create graph windows");
        return -1;
    }
    // Not activated: the focus goes to a pane next, and the main window would come to the front over the graph.
    ShowWindow(graphWindow.window, SW_SHOWNOACTIVATE);
    raiseGraphWindow();
    UpdateWindow(graphWindow.window);
    return 0;
}

void closeGraphWindow()
{
    if (graphWindow.window != nullptr)
        DestroyWindow(graphWindow.window);
}

HWND graphWindowHandle()
{
    return graphWindow.window;
}

bool takeGraphKey(const MSG& message)
{
    HWND window = graphWindow.window;
    if (window == nullptr || message.message != WM_KEYDOWN ||
        (message.hwnd != window && !IsChild(window, message.hwnd)))
        return false;
    if (message.wParam == VK_TAB && GetKeyState(VK_CONTROL) >= 0) {
        if (HWND next = GetNextDlgTabItem(window, GetFocus(), GetKeyState(VK_SHIFT) < 0))
            SetFocus(next);
        return true;
    }
    if (message.wParam != VK_ESCAPE || SendMessageW(message.hwnd, CB_GETDROPPEDSTATE, 0, 0) != 0)
        return false;
    closeGraphWindow();
    return true;
}

// Under X11 the focus raises the main window past the system's own order, and a window that is the first in that order
// already is not raised again: so the main one goes first.
void raiseGraphWindow()
{
    if (graphWindow.window == nullptr)
        return;
    for (HWND window : {mainWindow.window, graphWindow.window})
        SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

} // namespace torvane
