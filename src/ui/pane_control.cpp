#include "ui/pane_control.h"

#include "core/command_ids.h"
#include "ui/main_window.h"
#include "ui/pane_fill.h"
#include "ui/screen_set.h"

namespace torvane {

namespace {

constexpr UINT_PTR subclassId = 1;

void copyAll(HWND pane)
{
    finishFill(pane);
    CHARRANGE selected, all = {0, -1};
    SendMessageW(pane, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    SendMessageW(pane, WM_SETREDRAW, FALSE, 0);
    SendMessageW(pane, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&all));
    SendMessageW(pane, WM_COPY, 0, 0);
    SendMessageW(pane, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    SendMessageW(pane, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(pane, nullptr, TRUE);
}

void selectAll(HWND pane)
{
    finishFill(pane);
    CHARRANGE all = {0, -1};
    SendMessageW(pane, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&all));
    SetFocus(pane);
}

void toggleEditing(HWND pane)
{
    setEditable(pane, !isEditable(pane));
    SetFocus(pane);
}

// As the window's menu sends it.
template <int upper, int lower>
void send(HWND pane)
{
    PostMessageW(mainWindow.window, WM_COMMAND, pane == screenSet.upperScreen ? upper : lower, 0);
}

struct PaneEntry {
    const wchar_t* label; // null: a line
    void (*run)(HWND pane);
};

constexpr PaneEntry entries[] = {
    {L"&Copy\tCtrl+Insert", [](HWND pane) { SendMessageW(pane, WM_COPY, 0, 0); }},
    {L"Copy &All", copyAll},
    {L"Select A&ll", selectAll},
    {nullptr, nullptr},
    {L"&Edit", toggleEditing},
    {nullptr, nullptr},
    {L"&Save", send<commandSaveUpper, commandSaveLower>},
    {L"&Print", send<commandPrintUpper, commandPrintLower>},
};

UINT stateOf(HWND pane, const PaneEntry& entry)
{
    CHARRANGE selected;
    SendMessageW(pane, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    if (entry.run == entries[0].run)
        return selected.cpMin == selected.cpMax ? MF_GRAYED : MF_ENABLED;
    return entry.run == toggleEditing && isEditable(pane) ? MF_CHECKED : MF_ENABLED;
}

void showMenu(HWND pane, POINT at)
{
    HMENU menu = CreatePopupMenu();
    UINT number = 0;
    for (const PaneEntry& entry : entries) {
        ++number;
        if (entry.label == nullptr)
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
        else
            AppendMenuW(menu, MF_STRING | stateOf(pane, entry), number, entry.label);
    }
    int chosen = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, pane, nullptr);
    DestroyMenu(menu);
    if (chosen > 0)
        entries[chosen - 1].run(pane);
}

// At the caret, for the keyboard.
POINT caretPlace(HWND pane)
{
    POINT at = {};
    GetCaretPos(&at);
    RECT client;
    GetClientRect(pane, &client);
    if (!PtInRect(&client, at))
        at = {};
    ClientToScreen(pane, &at);
    return at;
}

POINT pointOf(LPARAM lParam)
{
    return {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
}

LRESULT CALLBACK paneProcedure(HWND pane, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR)
{
    switch (message) {
    case WM_RBUTTONUP: { // not every version of the control makes a context menu of it
        POINT at = pointOf(lParam);
        ClientToScreen(pane, &at);
        showMenu(pane, at);
        return 0;
    }
    case WM_CONTEXTMENU:
        showMenu(pane, lParam == -1 ? caretPlace(pane) : pointOf(lParam));
        return 0;
    case WM_KEYDOWN:
        if (wParam == VK_INSERT && GetKeyState(VK_CONTROL) < 0)
            return SendMessageW(pane, WM_COPY, 0, 0);
        break;
    case WM_NCDESTROY:
        RemoveWindowSubclass(pane, paneProcedure, subclassId);
        break;
    }
    return DefSubclassProc(pane, message, wParam, lParam);
}

} // namespace

void attachPane(HWND pane)
{
    SetWindowSubclass(pane, paneProcedure, subclassId, 0);
    setEditable(pane, false);
}

HWND nameNext(HWND window, const wchar_t* name)
{
    return CreateWindowExW(0, L"STATIC", name, WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, window, nullptr, mainWindow.instance,
                           nullptr);
}

bool isEditable(HWND pane)
{
    return (GetWindowLongW(pane, GWL_STYLE) & ES_READONLY) == 0;
}

void setEditable(HWND pane, bool editable)
{
    SendMessageW(pane, EM_SETREADONLY, !editable, 0);
}

PaneWriting::PaneWriting(HWND written) : pane(written), locked(!isEditable(written))
{
    if (locked)
        setEditable(pane, true);
}

PaneWriting::~PaneWriting()
{
    if (locked)
        setEditable(pane, false);
}

} // namespace torvane
