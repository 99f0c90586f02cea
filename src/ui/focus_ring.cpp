#include "ui/focus_ring.h"

#include "ui/graph_window.h"
#include "ui/main_window.h"
#include "ui/screen_bridge.h"
#include "ui/screen_set.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <vector>

namespace torvane {

namespace {

BOOL CALLBACK findDialog(HWND window, LPARAM found)
{
    constexpr wchar_t dialogClass[] = L"#32770";
    wchar_t name[std::size(dialogClass) + 1] = {};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    if (wcscmp(name, dialogClass) != 0 || !IsWindowVisible(window) || !IsWindowEnabled(window))
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

// The dialog that can be worked in: none, or the last of a chain.
HWND openDialog()
{
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), findDialog, reinterpret_cast<LPARAM>(&dialog));
    return dialog;
}

// While a dialog is open the panes cannot be reached.
std::vector<HWND> ring()
{
    std::vector<HWND> places;
    if (IsWindowEnabled(mainWindow.window))
        places = {screenSet.upperScreen, screenSet.lowerScreen};
    else if (HWND dialog = openDialog())
        places = {dialog};
    if (HWND graph = graphWindowHandle())
        places.push_back(graph);
    return places;
}

void goTo(HWND place)
{
    bool pane = GetParent(place) == mainWindow.window && (GetWindowLongW(place, GWL_STYLE) & WS_CHILD) != 0;
    if (pane) {
        SetForegroundWindow(mainWindow.window);
        SetFocus(place);
        return;
    }
    if (IsIconic(place))
        ShowWindow(place, SW_RESTORE);
    SetForegroundWindow(place);
    SetActiveWindow(place);
}

void goRound(bool back)
{
    std::vector<HWND> places = ring();
    HWND focus = GetFocus();
    auto here = std::ranges::find_if(places, [=](HWND place) { return place == focus || IsChild(place, focus); });
    if (here == places.end())
        return places.empty() ? void() : goTo(places.front());
    size_t count = places.size();
    size_t next = static_cast<size_t>(here - places.begin()) + (back ? count - 1 : 1);
    goTo(places[next % count]);
}

// A property sheet has a use of its own for Ctrl+Tab.
bool isRingKey(const MSG& message)
{
    bool controlled = message.wParam == VK_TAB && GetKeyState(VK_CONTROL) < 0;
    return message.wParam == VK_F6 || (controlled && IsWindowEnabled(mainWindow.window));
}

bool isRunning()
{
    return mainWindow.protocol.workerBlock.busy != 0;
}

LRESULT CALLBACK onDialogMessage(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == MSGF_DIALOGBOX && takeWindowKey(*reinterpret_cast<const MSG*>(lParam)))
        return TRUE;
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

bool takeWindowKey(const MSG& message)
{
    if (takeGraphKey(message))
        return true;
    if (message.message != WM_KEYDOWN)
        return false;
    if (message.wParam == VK_ESCAPE && IsWindowEnabled(mainWindow.window) && isRunning()) {
        stopRun();
        return true;
    }
    if (!isRingKey(message))
        return false;
    goRound(GetKeyState(VK_SHIFT) < 0);
    return true;
}

void watchDialogKeys()
{
    SetWindowsHookExW(WH_MSGFILTER, onDialogMessage, nullptr, GetCurrentThreadId());
}

} // namespace torvane
