#include "ui/pane_fill.h"

#include "core/text.h"
#include "ui/main_window.h"
#include "ui/pane_control.h"
#include "ui/screen_files.h"
#include "ui/screen_set.h"
#include "ui/status_line.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace torvane {

namespace {

constexpr size_t atOnce = 64 * 1024;  // characters of a text that do not wait
constexpr size_t onePiece = 8 * 1024; // short beside the patience of somebody who types
constexpr UINT_PTR timer = 1;
constexpr DWORD slowLayout = 300; // ms

struct View {
    CHARRANGE selected;
    POINT scrolled;
    bool modified;
};

struct Fill {
    std::wstring text; // the first `done` characters stand in the pane
    size_t done;
    size_t keeps;    // characters of the text that stood there before: they are not to be stopped
    size_t begun;    // characters since the pane was emptied, as far as they count
    DWORD cost;      // ms that laying out has taken so far
    bool ownFormats; // that are not of the whole text
    bool returns;    // to the view, as soon as that is possible
    View view;
};

Fill fills[2]; // by Pane

Fill& fillOf(Pane pane)
{
    return fills[pane == Pane::lower];
}

Pane paneOf(HWND window)
{
    return window == screenSet.lowerScreen ? Pane::lower : Pane::upper;
}

bool isComplete(const Fill& fill)
{
    return fill.done == fill.text.size();
}

View viewOf(HWND window)
{
    View view = {};
    SendMessageW(window, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&view.selected));
    SendMessageW(window, EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&view.scrolled));
    view.modified = SendMessageW(window, EM_GETMODIFY, 0, 0) != 0;
    return view;
}

void setView(HWND window, View view)
{
    SendMessageW(window, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&view.selected));
    SendMessageW(window, EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&view.scrolled));
    SendMessageW(window, EM_SETMODIFY, view.modified, 0);
}

// A click may have moved the caret away from the end.
void insertAtEnd(HWND window, const std::wstring& text)
{
    CHARRANGE end = {std::numeric_limits<LONG>::max(), std::numeric_limits<LONG>::max()};
    SendMessageW(window, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&end));
    SendMessageW(window, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
}

// Whole lines as far as there are any.
size_t nextLength(const Fill& fill, size_t limit)
{
    if (fill.text.size() - fill.done <= limit)
        return fill.text.size() - fill.done;
    size_t end = fill.text.find_last_of(L"\r\n", fill.done + limit - 1);
    return end != fill.text.npos && end >= fill.done ? end + 1 - fill.done : limit;
}

void addPiece(Pane pane, size_t limit, bool keepsView)
{
    Fill& fill = fillOf(pane);
    HWND window = paneWindow(pane);
    PaneWriting writing(window);
    View view = viewOf(window);
    size_t length = nextLength(fill, limit);
    DWORD start = GetTickCount();
    SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    insertAtEnd(window, fill.text.substr(fill.done, length));
    if (keepsView)
        setView(window, view);
    SendMessageW(window, WM_SETREDRAW, TRUE, 0);
    fill.cost += GetTickCount() - start;
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME); // with its scroll bars
    fill.done += length;
}

bool canReturn(HWND window, const View& view)
{
    SCROLLINFO bar = {};
    bar.cbSize = sizeof bar;
    bar.fMask = SIF_RANGE | SIF_PAGE;
    GetScrollInfo(window, SB_VERT, &bar);
    return view.scrolled.y + static_cast<LONG>(bar.nPage) <= bar.nMax;
}

// Where nobody has scrolled meanwhile.
void returnToView(Fill& fill, HWND window)
{
    if (!fill.returns || (!isComplete(fill) && !canReturn(window, fill.view)))
        return;
    fill.returns = false;
    if (viewOf(window).scrolled.y == 0)
        setView(window, fill.view);
}

void settleTimer()
{
    if (std::ranges::all_of(fills, isComplete))
        KillTimer(mainWindow.window, timer);
    else
        SetTimer(mainWindow.window, timer, USER_TIMER_MINIMUM, nullptr);
}

void endIfComplete(Fill& fill)
{
    if (!isComplete(fill))
        return;
    fill.text = {};
    fill.done = fill.keeps = 0;
}

void refill(Pane pane, const RECT& place)
{
    Fill& fill = fillOf(pane);
    HWND window = paneWindow(pane);
    View view = fill.returns ? fill.view : viewOf(window);
    std::wstring text = paneText(window);
    size_t kept = std::max(text.size(), fill.keeps);
    text.append(fill.text, fill.done);
    bool editable = isEditable(window);
    if (!replacePane(window, place))
        return;
    setEditable(paneWindow(pane), editable);
    fill = {std::move(text), 0, kept, atOnce, 0, false, true, view};
    addPiece(pane, atOnce, true);
    SendMessageW(paneWindow(pane), EM_SETMODIFY, view.modified, 0);
    returnToView(fill, paneWindow(pane));
    endIfComplete(fill);
    settleTimer();
}

} // namespace

void appendToPane(Pane pane, std::wstring_view text)
{
    Fill& fill = fillOf(pane);
    fill.text.append(text);
    if (fill.begun < atOnce) {
        size_t before = fill.done;
        addPiece(pane, atOnce, false);
        fill.begun += fill.done - before;
    }
    endIfComplete(fill);
    settleTimer();
}

void forgetFill(Pane pane)
{
    fillOf(pane) = {};
    settleTimer();
}

void keepFormats(HWND pane)
{
    fillOf(paneOf(pane)).ownFormats = true;
}

void finishFill(HWND pane)
{
    Fill& fill = fillOf(paneOf(pane));
    if (isComplete(fill))
        return;
    HCURSOR before = SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT)));
    while (!isComplete(fill))
        addPiece(paneOf(pane), atOnce, true);
    returnToView(fill, pane);
    endIfComplete(fill);
    settleTimer();
    SetCursor(before);
}

bool stopFill()
{
    bool stopped = false;
    for (Pane pane : {Pane::upper, Pane::lower}) {
        Fill& fill = fillOf(pane);
        size_t end = std::max(fill.done, fill.keeps);
        if (end >= fill.text.size())
            continue;
        stopped = true;
        fill.text.resize(end);
        long long lines = SendMessageW(paneWindow(pane), EM_GETLINECOUNT, 0, 0) - 1;
        lines += std::ranges::count(fill.text.substr(fill.done), L'\r');
        setStatusLine(formatText("status : stopped, the first %lld lines are shown", lines));
        endIfComplete(fill);
    }
    settleTimer();
    return stopped;
}

void movePane(Pane pane, const RECT& place)
{
    HWND window = paneWindow(pane);
    RECT now;
    GetWindowRect(window, &now);
    SIZE size = {place.right - place.left, place.bottom - place.top};
    bool resized = now.right - now.left != size.cx || now.bottom - now.top != size.cy;
    if (resized && fillOf(pane).cost > slowLayout && !fillOf(pane).ownFormats)
        refill(pane, place);
    else
        MoveWindow(window, place.left, place.top, size.cx, size.cy, TRUE);
}

LRESULT onFillTimer(HWND window, WPARAM wParam, LPARAM lParam)
{
    if (wParam != timer)
        return DefWindowProcW(window, WM_TIMER, wParam, lParam);
    for (Pane pane : {Pane::upper, Pane::lower}) {
        Fill& fill = fillOf(pane);
        if (isComplete(fill))
            continue;
        addPiece(pane, onePiece, true);
        returnToView(fill, paneWindow(pane));
        endIfComplete(fill);
    }
    settleTimer();
    return 0;
}

} // namespace torvane
