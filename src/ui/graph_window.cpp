// Messages of the graph window, and its picture as a file.
#include "ui/graph_window.h"

#include "core/files.h"
#include "core/shown_text.h"
#include "core/wide_text.h"
#include "plot/draw_graph.h"
#include "plot/graph.h"
#include "ui/file_prompts.h"
#include "ui/main_window.h"
#include "ui/message_box.h"
#include "ui/paint_picture.h"
#include "ui/png.h"
#include "ui/resource_ids.h"
#include "ui/window_place.h"

#include <string>
#include <utility>
#include <vector>

namespace torvane {

namespace {

constexpr wchar_t className[] = L"graph";
constexpr UINT savePictureId = 0x100; // of the system's menu, which keeps the low four bits and all from 0xF000 on
constexpr int droppedWidth = 160; // pixels of a list that hangs down: wider than its box, for the longest series name

struct GraphWindow {
    HWND window;
    HFONT controlFont;
    Graph graph;
};

GraphWindow graphWindow;
RECT lastPlace; // of the last one, while the program runs

// The graph as it is shown, for a device; to be deleted.
HBITMAP drawBitmap(HDC screen, const RECT& client)
{
    HDC device = CreateCompatibleDC(screen);
    HBITMAP bitmap = CreateCompatibleBitmap(screen, client.right, client.bottom);
    HGDIOBJ before = SelectObject(device, bitmap);
    FillRect(device, &client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    paintPicture(device, drawGraph(graphWindow.graph, client.right, client.bottom));
    SelectObject(device, before);
    DeleteDC(device);
    return bitmap;
}

// Painted off screen and copied, so that a resize does not flicker.
void paintBuffered(HDC screen, const RECT& client)
{
    GdiObject bitmap(drawBitmap(screen, client));
    HDC device = CreateCompatibleDC(screen);
    HGDIOBJ before = SelectObject(device, bitmap);
    BitBlt(screen, 0, 0, client.right, client.bottom, device, 0, 0, SRCCOPY);
    SelectObject(device, before);
    DeleteDC(device);
}

// As it is shown, without the lists above it.
void savePicture(HWND window)
{
    RECT client;
    GetClientRect(window, &client);
    HDC screen = GetDC(window);
    GdiObject bitmap(drawBitmap(screen, client));
    ReleaseDC(window, screen);
    std::string path;
    EnableWindow(mainWindow.window, FALSE); // its commands would close the graph under the prompt
    bool chosen = promptSavePng(window, path);
    EnableWindow(mainWindow.window, TRUE);
    if (!chosen)
        return;
    std::vector<uint8_t> png = pngOf(bitmap);
    if (png.empty() || replaceFile(path, {png}) != FileResult::ok)
        showMessageBox(window, "error", "failed to write a file '" + shownText(path) + "'");
}

// The window has no menu but the system's, which its icon, Alt and the blank, and the right button open.
void offerSaving(HWND window)
{
    HMENU menu = GetSystemMenu(window, FALSE);
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, savePictureId, L"Save &Picture As ...");
}

void createControl(HWND window, const GraphControl& control)
{
    bool combo = control.label == nullptr;
    DWORD style = WS_CHILD | WS_VISIBLE | (combo ? CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP : ES_READONLY);
    HWND made =
        CreateWindowExW(0, combo ? L"COMBOBOX" : L"EDIT", combo ? L"" : widen(control.label).c_str(), style, control.x,
                        control.y, control.width, control.height, window,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(control.id)), mainWindow.instance, nullptr);
    SendMessageW(made, WM_SETFONT, reinterpret_cast<WPARAM>(graphWindow.controlFont), TRUE);
    for (const std::string& entry : control.entries)
        SendMessageW(made, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(widen(entry).c_str()));
    if (combo) {
        SendMessageW(made, CB_SETDROPPEDWIDTH, droppedWidth, 0);
        SendMessageW(made, CB_SETCURSEL, static_cast<WPARAM>(control.selected), 0);
    }
}

void showChoices(HWND window)
{
    for (const GraphControl& control : graphControls(graphWindow.graph))
        if (control.label == nullptr)
            SendDlgItemMessageW(window, control.id, CB_SETCURSEL, static_cast<WPARAM>(control.selected), 0);
    InvalidateRect(window, nullptr, TRUE);
}

LRESULT onCreate(HWND window, WPARAM, LPARAM)
{
    graphWindow.controlFont = createGraphFont(controlFontHeight, false);
    for (const GraphControl& control : graphControls(graphWindow.graph))
        createControl(window, control);
    offerSaving(window);
    return 0;
}

LRESULT onSystemCommand(HWND window, WPARAM wParam, LPARAM lParam)
{
    if ((wParam & 0xFFF0) != savePictureId)
        return DefWindowProcW(window, WM_SYSCOMMAND, wParam, lParam);
    savePicture(window);
    return 0;
}

LRESULT onRightClick(HWND window, WPARAM, LPARAM lParam)
{
    POINT at = {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
    ClientToScreen(window, &at);
    BOOL chosen =
        TrackPopupMenu(GetSystemMenu(window, FALSE), TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, window, nullptr);
    if (chosen != 0)
        PostMessageW(window, WM_SYSCOMMAND, static_cast<WPARAM>(chosen), 0);
    return 0;
}

LRESULT onCommand(HWND window, WPARAM wParam, LPARAM lParam)
{
    if (lParam == 0 || HIWORD(wParam) != CBN_SELCHANGE)
        return DefWindowProcW(window, WM_COMMAND, wParam, lParam);
    LRESULT entry = SendMessageW(reinterpret_cast<HWND>(lParam), CB_GETCURSEL, 0, 0);
    chooseEntry(graphWindow.graph, LOWORD(wParam), static_cast<int>(entry));
    showChoices(window);
    return 0;
}

LRESULT onClick(HWND window, WPARAM, LPARAM lParam)
{
    if (kindOf(graphWindow.graph).search) {
        RECT client;
        GetClientRect(window, &client);
        int x = static_cast<short>(LOWORD(lParam));
        int y = static_cast<short>(HIWORD(lParam));
        if (pickPoint(graphWindow.graph, client.right, client.bottom, x, y))
            showChoices(window);
    }
    SetFocus(window);
    return 0;
}

LRESULT onPaint(HWND window, WPARAM, LPARAM)
{
    PAINTSTRUCT paintStruct;
    HDC screen = BeginPaint(window, &paintStruct);
    RECT client;
    GetClientRect(window, &client);
    if (client.right > 0 && client.bottom > 0)
        paintBuffered(screen, client);
    EndPaint(window, &paintStruct);
    return 0;
}

LRESULT onEraseBackground(HWND, WPARAM, LPARAM)
{
    return 1; // painting covers everything
}

// The labels are read-only edit boxes: on the window's own white, not on the grey that such boxes have.
LRESULT onLabelColour(HWND, WPARAM, LPARAM)
{
    return reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH));
}

LRESULT onDestroy(HWND window, WPARAM, LPARAM)
{
    lastPlace = returnPlace(window);
    DeleteObject(graphWindow.controlFont);
    graphWindow = {};
    return 0;
}

RECT firstPlace(const GraphSeries& series)
{
    int left = (GetSystemMetrics(SM_CXSCREEN) - series.width) / 2;
    int top = (GetSystemMetrics(SM_CYSCREEN) - series.height) / 2;
    return {left, top, left + series.width, top + series.height};
}

constexpr MessageRow messages[] = {
    {WM_CREATE, onCreate},
    {WM_COMMAND, onCommand},
    {WM_SYSCOMMAND, onSystemCommand},
    {WM_LBUTTONUP, onClick},
    {WM_RBUTTONUP, onRightClick},
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
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
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

void raiseGraphWindow()
{
    if (graphWindow.window != nullptr)
        SetWindowPos(graphWindow.window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

} // namespace torvane
