#include "ui/help.h"

#include "command/help_topics.h"
#include "core/wide_text.h"
#include "ui/main_window.h"
#include "ui/message_box.h"

#include <shellapi.h>
#include <shlwapi.h>

#include <string>

namespace torvane {

namespace {

std::wstring manualPath()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.rfind(L'\\')) + L"\\manual\\manual.html";
}

std::wstring browser()
{
    wchar_t path[MAX_PATH] = {};
    DWORD length = MAX_PATH;
    bool found = AssocQueryStringW(ASSOCF_NONE, ASSOCSTR_EXECUTABLE, L"http", L"open", path, &length) == S_OK;
    return found ? path : L"";
}

// The system's own way to open a file would lose the anchor.
bool browse(const std::wstring& address)
{
    std::wstring program = browser();
    if (program.empty())
        return false;
    std::wstring line = L"\"" + program + L"\" \"" + address + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

std::wstring addressOf(const std::wstring& path)
{
    std::wstring address(path.size() * 3 + 16, L'\0');
    DWORD length = static_cast<DWORD>(address.size());
    if (UrlCreateFromPathW(path.c_str(), address.data(), &length, 0) != S_OK)
        return path;
    address.resize(length);
    return address;
}

} // namespace

void showManual(HWND owner, std::string_view anchor)
{
    std::wstring path = manualPath();
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES)
        return showMessageBox(owner, "alert", "the manual is not beside the program: " + narrow(path));
    std::wstring address = addressOf(path) + (anchor.empty() ? L"" : L"#" + widen(anchor));
    if (!browse(address))
        ShellExecuteW(owner, L"open", path.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

LRESULT onHelp(HWND window, WPARAM, LPARAM lParam)
{
    const HELPINFO& asked = *reinterpret_cast<const HELPINFO*>(lParam);
    bool inMenu = asked.iContextType == HELPINFO_MENUITEM;
    showManual(window, manualAnchor(inMenu ? asked.iCtrlId : mainWindow.lastCommand));
    return TRUE;
}

} // namespace torvane
