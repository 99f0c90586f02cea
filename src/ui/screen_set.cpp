// Panes and bars as child windows. Lengths are pixels of an ordinary display; the status bar's height is its own, by
// its font.
#include "ui/screen_set.h"

#include "ui/display.h"
#include "ui/main_window.h"
#include "ui/message_box.h"
#include "ui/pane_control.h"
#include "ui/pane_fill.h"
#include "ui/print_pane.h"
#include "ui/screen_bridge.h"
#include "ui/splitter.h"
#include "ui/status_line.h"

#include <algorithm>
#include <cwchar>

namespace torvane {

ScreenSet screenSet;

namespace {

constexpr int lowerScreenId = 201;
constexpr int upperScreenId = 202;
constexpr int statusBarId = 203;
constexpr int stopId = 205;
constexpr int statusBorder = 2; // its empty upper edge, which the lower pane may cover
constexpr int progressTop = 7;
constexpr int progressHeight = 11;
constexpr LPARAM textLimit = 0x7FFFFFFE; // characters; the control's own default of 64 K is less than one long report
constexpr LONG defaultFontTwips = 200;
constexpr int clearedInPlace = 16 * 1024; // characters

HWND createPane(HWND window, int id, RECT place)
{
    // Without the control's own dropping a file goes to the window behind.
    constexpr DWORD style = WS_CHILD | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL | ES_MULTILINE | ES_AUTOHSCROLL |
                            ES_AUTOVSCROLL | ES_WANTRETURN | ES_NOHIDESEL | ES_NOOLEDRAGDROP;
    HWND pane = CreateWindowExW(WS_EX_CLIENTEDGE, L"RichEdit20W", L"", style, place.left, place.top,
                                place.right - place.left, place.bottom - place.top, window,
                                reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), mainWindow.instance, nullptr);
    if (pane == nullptr)
        return nullptr;
    SendMessageW(pane, EM_EXLIMITTEXT, 0, textLimit);
    attachPane(pane);
    return pane;
}

HWND createShownPane(HWND window, int id, const wchar_t* name, RECT place)
{
    nameNext(window, name);
    HWND pane = createPane(window, id, place);
    if (pane == nullptr)
        return nullptr;
    setDefaultFont(pane);
    ShowWindow(pane, SW_SHOW);
    return pane;
}

HWND createStatusBar(HWND window)
{
    HWND bar = CreateWindowExW(0, STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | SBARS_SIZEGRIP, 0, 0,
                               0, 0, window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(statusBarId)),
                               mainWindow.instance, nullptr);
    if (bar == nullptr)
        return nullptr;
    SendMessageW(bar, SB_SIMPLE, FALSE, 0);
    return bar;
}

int heightOf(HWND child)
{
    RECT place;
    GetWindowRect(child, &place);
    return place.bottom - place.top;
}

int bottomOfPanes(const RECT& client)
{
    return static_cast<int>(client.bottom) - heightOf(screenSet.statusBar) + scaled(statusBorder);
}

RECT upperPlace(const RECT& client)
{
    return {client.left, client.top, client.left + client.right, client.top + upperPaneHeightIn(bottomOfPanes(client))};
}

RECT lowerPlace(const RECT& client)
{
    return {client.left, upperPlace(client).bottom, client.left + client.right, bottomOfPanes(client)};
}

void move(HWND child, const RECT& place)
{
    MoveWindow(child, place.left, place.top, place.right - place.left, place.bottom - place.top, TRUE);
}

RECT progressPlace()
{
    RECT bar;
    GetClientRect(screenSet.statusBar, &bar);
    LONG left = bar.right / 10;
    LONG top = scaled(progressTop);
    return {left, top, left + bar.right * 4 / 5, top + scaled(progressHeight)};
}

// Behind the bar, up to the grip.
RECT stopPlace()
{
    RECT bar = progressPlace(), whole;
    GetClientRect(screenSet.statusBar, &whole);
    LONG gap = scaled(4);
    return {bar.right + gap, scaled(3), std::max(whole.right - scaled(18), bar.right + gap), whole.bottom - scaled(1)};
}

// What it notifies goes to the status bar.
LRESULT CALLBACK statusProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    if (message == WM_COMMAND && reinterpret_cast<HWND>(lParam) == screenSet.stopButton)
        stopRun();
    return DefSubclassProc(bar, message, wParam, lParam);
}

void createStopButton()
{
    screenSet.stopButton =
        CreateWindowExW(0, L"BUTTON", L"Stop", WS_CHILD | BS_PUSHBUTTON, 0, 0, 0, 0, screenSet.statusBar,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(stopId)), mainWindow.instance, nullptr);
    SendMessageW(screenSet.stopButton, WM_SETFONT,
                 static_cast<WPARAM>(SendMessageW(screenSet.statusBar, WM_GETFONT, 0, 0)), FALSE);
    SetWindowSubclass(screenSet.statusBar, statusProcedure, 1, 0);
    move(screenSet.stopButton, stopPlace());
}

CHARFORMATW formatOf(HWND pane)
{
    CHARRANGE start = {0, 0};
    SendMessageW(pane, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&start));
    CHARFORMATW format = {};
    format.cbSize = sizeof format;
    format.dwMask = defaultCharMask;
    SendMessageW(pane, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    return format;
}

bool setFormat(HWND pane, CHARFORMATW format)
{
    format.dwMask = defaultCharMask;
    auto request = reinterpret_cast<LPARAM>(&format);
    SendMessageW(pane, EM_SETCHARFORMAT, SCF_DEFAULT, request); // for what comes after the pane was emptied
    return SendMessageW(pane, EM_SETCHARFORMAT, SCF_ALL, request) != 0;
}

RECT placeOf(HWND child)
{
    RECT place;
    GetWindowRect(child, &place);
    MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&place), 2);
    return place;
}

} // namespace

int createScreens(HWND window)
{
    RECT client;
    GetClientRect(window, &client);
    screenSet.statusBar = createStatusBar(window);
    screenSet.upperScreen = createShownPane(window, upperScreenId, L"upper screen", upperPlace(client));
    screenSet.lowerScreen = createShownPane(window, lowerScreenId, L"lower screen", lowerPlace(client));
    screenSet.splitter = registerSplitterClass() == 0 ? createSplitter(window) : nullptr;
    if (!screenSet.upperScreen || !screenSet.lowerScreen || !screenSet.statusBar || !screenSet.splitter) {
        showMessageBox(window, "alert", "failed to create child windows");
        return -1;
    }
    setStatusLine(" status :");
    return 0;
}

int createProgressBar()
{
    RECT place = progressPlace();
    screenSet.progressBar =
        CreateWindowExW(0, PROGRESS_CLASSW, L"", WS_CHILD, place.left, place.top, place.right - place.left,
                        place.bottom - place.top, screenSet.statusBar, nullptr, mainWindow.instance, nullptr);
    if (screenSet.progressBar == nullptr) {
        showMessageBox(mainWindow.window, "alert", "failed to create progress bar");
        return -1;
    }
    createStopButton();
    SendMessageW(screenSet.progressBar, PBM_SETRANGE32, 0, 100);
    SendMessageW(screenSet.progressBar, PBM_SETSTEP, 1, 0);
    return 0;
}

void layoutScreens(HWND window)
{
    RECT client;
    GetClientRect(window, &client);
    MoveWindow(screenSet.statusBar, 0, 0, 0, 0, TRUE); // it aligns itself to the bottom
    movePane(Pane::upper, upperPlace(client));
    movePane(Pane::lower, lowerPlace(client));
    placeSplitter(screenSet.splitter, static_cast<int>(upperPlace(client).bottom), static_cast<int>(client.right));
}

void layoutProgressBar()
{
    move(screenSet.progressBar, progressPlace());
    move(screenSet.stopButton, stopPlace());
}

HWND paneWindow(Pane pane)
{
    return pane == Pane::upper ? screenSet.upperScreen : screenSet.lowerScreen;
}

bool replacePane(HWND pane, const RECT& place)
{
    HWND fresh = createPane(GetParent(pane), GetDlgCtrlID(pane), place);
    if (fresh == nullptr)
        return false;
    setFormat(fresh, formatOf(pane));
    if (screenSet.paperWide)
        setPrintWidth(fresh);
    (pane == screenSet.upperScreen ? screenSet.upperScreen : screenSet.lowerScreen) = fresh;
    if (mainWindow.lastFocus == pane)
        mainWindow.lastFocus = fresh;
    SetWindowPos(fresh, pane, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE); // behind the same label
    ShowWindow(fresh, SW_SHOW);
    if (GetFocus() == pane)
        SetFocus(fresh);
    DestroyWindow(pane);
    return true;
}

bool setDefaultFont(HWND pane)
{
    CHARFORMATW format = {};
    format.cbSize = sizeof format;
    format.dwEffects = CFE_AUTOCOLOR; // a scheme of colours with a dark ground has light letters
    format.yHeight = defaultFontTwips;
    format.bCharSet = DEFAULT_CHARSET;
    format.bPitchAndFamily = FIXED_PITCH | FF_MODERN;
    wcscpy(format.szFaceName, L"Courier New");
    return setFormat(pane, format);
}

void showTop(HWND pane)
{
    SetFocus(pane);
    SendMessageW(pane, EM_SCROLL, SB_TOP, 0);
}

void clearPane(HWND pane)
{
    forgetFill(pane == screenSet.upperScreen ? Pane::upper : Pane::lower);
    if (GetWindowTextLengthW(pane) <= clearedInPlace || !replacePane(pane, placeOf(pane)))
        SetWindowTextW(pane, L"");
}

} // namespace torvane
