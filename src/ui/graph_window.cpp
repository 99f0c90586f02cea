// Messages of the graph window, and its painting by GDI.
#include "ui/graph_window.h"

#include "core/wide_text.h"
#include "plot/draw_graph.h"
#include "plot/graph.h"
#include "ui/main_window.h"
#include "ui/message_box.h"
#include "ui/resource_ids.h"

#include <algorithm>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace torvane {

namespace {

constexpr wchar_t className[] = L"graph";
constexpr int droppedWidth = 160; // pixels of a list that hangs down: wider than its box, for the longest series name

struct GraphWindow {
    HWND window;
    HFONT controlFont;
    Graph graph;
};

GraphWindow graphWindow;

HFONT createFont(int height, bool emphasized)
{
    return CreateFontW(height, 0, 0, 0, FW_NORMAL, emphasized, emphasized, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, VARIABLE_PITCH | FF_SWISS, L"Arial");
}

void paint(HDC device, const PictureLine& line)
{
    GdiObject pen(CreatePen(PS_SOLID, line.width, line.colour));
    HGDIOBJ before = SelectObject(device, pen);
    MoveToEx(device, line.points.front().x, line.points.front().y, nullptr);
    for (const Pixel& point : std::span(line.points).subspan(1))
        LineTo(device, point.x, point.y);
    SelectObject(device, before);
}

void paint(HDC device, const PictureBox& box)
{
    GdiObject brush(CreateSolidBrush(box.fill));
    RECT place = {box.left, box.top, box.right, box.bottom};
    FillRect(device, &place, brush);
}

void paint(HDC device, const PictureText& text)
{
    GdiObject font(createFont(text.height, text.emphasized));
    HGDIOBJ before = SelectObject(device, font);
    SetTextColor(device, text.colour);
    std::wstring wide = widen(text.text);
    TextOutW(device, text.at.x, text.at.y, wide.c_str(), static_cast<int>(wide.size()));
    SelectObject(device, before);
}

void paintPicture(HDC device, const Picture& picture)
{
    SetBkMode(device, TRANSPARENT);
    for (const PictureItem& item : picture.items)
        std::visit([device](const auto& shape) { paint(device, shape); }, item);
}

// Painted off screen and copied, so that a resize does not flicker.
void paintBuffered(HDC screen, const RECT& client)
{
    HDC device = CreateCompatibleDC(screen);
    GdiObject bitmap(CreateCompatibleBitmap(screen, client.right, client.bottom));
    HGDIOBJ before = SelectObject(device, bitmap);
    FillRect(device, &client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    paintPicture(device, drawGraph(graphWindow.graph, client.right, client.bottom));
    BitBlt(screen, 0, 0, client.right, client.bottom, device, 0, 0, SRCCOPY);
    SelectObject(device, before);
    DeleteDC(device);
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
    graphWindow.controlFont = createFont(controlFontHeight, false);
    for (const GraphControl& control : graphControls(graphWindow.graph))
        createControl(window, control);
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

LRESULT onDestroy(HWND, WPARAM, LPARAM)
{
    DeleteObject(graphWindow.controlFont);
    graphWindow = {};
    return 0;
}

constexpr MessageRow messages[] = {
    {WM_CREATE, onCreate},
    {WM_COMMAND, onCommand},
    {WM_LBUTTONUP, onClick},
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

int openGraphWindow(HWND owner)
{
    if (!mainWindow.session.graph)
        return 0;
    graphWindow.graph = storeGraph(std::move(*mainWindow.session.graph));
    mainWindow.session.graph.reset();
    int width = graphWindow.graph.series.width;
    int height = graphWindow.graph.series.height;
    graphWindow.window =
        CreateWindowExW(WS_EX_CLIENTEDGE, className, L"graph", WS_POPUP | WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                        (GetSystemMetrics(SM_CXSCREEN) - width) / 2, (GetSystemMetrics(SM_CYSCREEN) - height) / 2,
                        width, height, owner, nullptr, mainWindow.instance, nullptr);
    if (graphWindow.window == nullptr) {
        showMessageBox(owner, "alert", "failed to create graph windows");
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
