// By a subclass of the dialog: a hook of the dialog's own kind would give it the look of long ago.
#include "ui/path_guard.h"

#include "ui/message_box.h"

#include <dlgs.h>

#include <cwchar>
#include <string>

namespace torvane {

namespace {

constexpr UINT_PTR subclassId = 1;

HWND nameBox(HWND dialog)
{
    HWND box = GetDlgItem(dialog, cmb13);
    return box != nullptr ? box : GetDlgItem(dialog, edt1);
}

// Of the folder that a name without one belongs to, with the stroke behind it; 0 where the name has one of its own.
size_t folderLength(HWND dialog, HWND box)
{
    wchar_t start[3] = {};
    GetWindowTextW(box, start, 3);
    if (start[0] == L'\\' || start[1] == L':')
        return 0;
    LRESULT length = SendMessageW(dialog, CDM_GETFOLDERPATH, 0, 0); // with the closing 0
    return length > 0 ? static_cast<size_t>(length) : 0;
}

bool isTooLong(HWND dialog)
{
    constexpr size_t longestExtension = 4; // the dialog may add one
    HWND box = nameBox(dialog);
    if (box == nullptr)
        return false;
    size_t length = static_cast<size_t>(GetWindowTextLengthW(box));
    return folderLength(dialog, box) + length + longestExtension >= promptCapacity;
}

LRESULT CALLBACK dialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR)
{
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(dialog, dialogProcedure, id);
    if (message != WM_COMMAND || LOWORD(wParam) != IDOK || !isTooLong(dialog))
        return DefSubclassProc(dialog, message, wParam, lParam);
    showMessageBox(dialog, "warning", "found too long path: at most 255 characters");
    return 0;
}

LRESULT CALLBACK onWindowEvent(int code, WPARAM wParam, LPARAM lParam)
{
    wchar_t name[16] = {};
    HWND window = reinterpret_cast<HWND>(wParam);
    if (code == HCBT_ACTIVATE && GetClassNameW(window, name, 16) != 0 && wcscmp(name, L"#32770") == 0)
        SetWindowSubclass(window, dialogProcedure, subclassId, 0);
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

} // namespace

PathGuard::PathGuard() : hook(SetWindowsHookExW(WH_CBT, onWindowEvent, nullptr, GetCurrentThreadId())) {}

PathGuard::~PathGuard()
{
    if (hook != nullptr)
        UnhookWindowsHookEx(hook);
}

} // namespace torvane
