// The main window's messages, one function each.
#include "ui/main_window.h"

#include "command/menu_rules.h"
#include "command/settings_command.h"
#include "core/parameter_file.h"
#include "report/profile_report.h"
#include "ui/front_end.h"
#include "ui/gdi_object.h"
#include "ui/given_file.h"
#include "ui/graph_window.h"
#include "ui/help.h"
#include "ui/menu.h"
#include "ui/message_box.h"
#include "ui/pane_fill.h"
#include "ui/resource_ids.h"
#include "ui/screen_bridge.h"
#include "ui/screen_set.h"
#include "ui/status_line.h"
#include "ui/window_place.h"

#include <span>

namespace torvane {

MainWindow mainWindow;

namespace {

constexpr wchar_t className[] = L"Torvane";

HMODULE loadRichEdit()
{
    wchar_t folder[MAX_PATH];
    UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return nullptr;
    return LoadLibraryW((std::wstring(folder, length) + L"\\RICHED20.DLL").c_str());
}

void reportAtStart()
{
    const ModelState& model = mainWindow.session.model.state;
    reportProfile(mainWindow.session.screens, Pane::upper, model, mainWindow.session.working, allProfileSections);
    flushScreens();
    showTop(screenSet.upperScreen);
    greyActivityCommands(enableMenuCommand);
    enableMenuCommand(commandPage, false);
}

LRESULT onCreate(HWND window, WPARAM, LPARAM)
{
    mainWindow.window = window;
    mainWindow.session.wantsPage = true;
    mainWindow.protocol.startWorker(desktopFrontEnd(), mainWindow.session);
    SetWindowTextW(window, L"Torvane");
    mainWindow.richEdit = loadRichEdit();
    if (createScreens(window) != 0 || createProgressBar() != 0 || registerGraphClass() != 0) {
        PostMessageW(window, WM_CLOSE, 0, 0);
        return 0;
    }
    installScreens(window);
    reportAtStart();
    return 0;
}

LRESULT onCommand(HWND window, WPARAM wParam, LPARAM lParam)
{
    // Notifications of the panes carry their ids in the same place, and their handle beside it.
    if (lParam != 0)
        return DefWindowProcW(window, WM_COMMAND, wParam, lParam);
    if (openRecent(LOWORD(wParam)))
        return 0;
    mainWindow.lastCommand = LOWORD(wParam);
    mainWindow.protocol.handleCommand(LOWORD(wParam));
    flushScreens();
    return 0;
}

LRESULT onMenuOpens(HWND window, WPARAM wParam, LPARAM lParam)
{
    fillRecentMenu(reinterpret_cast<HMENU>(wParam));
    return DefWindowProcW(window, WM_INITMENUPOPUP, wParam, lParam);
}

LRESULT onMenuSelect(HWND, WPARAM wParam, LPARAM)
{
    constexpr UINT nothing = MF_POPUP | MF_SEPARATOR | MF_SYSMENU; // of these, or the menu is closed: all bits
    setHintLine((HIWORD(wParam) & nothing) != 0 ? "" : menuHint(LOWORD(wParam)));
    return 0;
}

LRESULT onSize(HWND window, WPARAM wParam, LPARAM)
{
    if (screenSet.progressBar == nullptr || wParam == SIZE_MINIMIZED)
        return 0;
    layoutScreens(window);
    layoutProgressBar();
    return 0;
}

LRESULT onClose(HWND window, WPARAM, LPARAM)
{
    // A modal dialog disables its owner; closing beneath it would leave it without one.
    if (!IsWindowEnabled(window) || !mainWindow.protocol.stopWorker())
        return 0;
    keepMainPlace(window, mainWindow.session.saved, mainWindow.session.kept);
    if (mainWindow.writesParameters)
        saveParameters(mainWindow.session.screens, mainWindow.parameterPath, mainWindow.session.saved);
    const EntryFile& kept = mainWindow.session.kept;
    if (mainWindow.writesKept && kept.changed && !writeEntryFile(entryFilePath(mainWindow.parameterPath), kept))
        showMessageBox(window, "alert", "failed to write Torvane.settings");
    closeGraphWindow();
    for (HWND child : {screenSet.upperScreen, screenSet.lowerScreen, screenSet.statusBar, screenSet.splitter})
        DestroyWindow(child);
    screenSet = {};
    DestroyWindow(window);
    return 0;
}

LRESULT onDestroy(HWND, WPARAM, LPARAM)
{
    if (mainWindow.richEdit != nullptr)
        FreeLibrary(mainWindow.richEdit);
    PostQuitMessage(0);
    return 0;
}

// Coming back to the window brings back the pane that was worked in.
LRESULT onActivate(HWND window, WPARAM wParam, LPARAM lParam)
{
    if (LOWORD(wParam) != WA_INACTIVE)
        return DefWindowProcW(window, WM_ACTIVATE, wParam, lParam);
    HWND focus = GetFocus();
    if (IsChild(window, focus))
        mainWindow.lastFocus = focus;
    return 0;
}

LRESULT onSetFocus(HWND, WPARAM, LPARAM)
{
    SetFocus(mainWindow.lastFocus != nullptr ? mainWindow.lastFocus : screenSet.upperScreen);
    return 0;
}

// Enabled again: the dialog is over, and with it what was said of it.
LRESULT onEnable(HWND window, WPARAM wParam, LPARAM lParam)
{
    if (wParam != 0)
        setNoticeLine("");
    return DefWindowProcW(window, WM_ENABLE, wParam, lParam);
}

constexpr MessageRow messages[] = {
    {WM_CREATE, onCreate},   {WM_COMMAND, onCommand},         {WM_SIZE, onSize},         {WM_CLOSE, onClose},
    {WM_DESTROY, onDestroy}, {WM_SETFOCUS, onSetFocus},       {WM_ACTIVATE, onActivate}, {WM_DROPFILES, onDropFiles},
    {WM_HELP, onHelp},       {WM_INITMENUPOPUP, onMenuOpens}, {WM_TIMER, onFillTimer},   {WM_MENUSELECT, onMenuSelect},
    {WM_ENABLE, onEnable},
};

const MessageRow* findRow(UINT message)
{
    for (std::span<const MessageRow> rows :
         {std::span<const MessageRow>(messages), screenMessages(), frontEndMessages()})
        for (const MessageRow& row : rows)
            if (row.message == message)
                return &row;
    return nullptr;
}

// Of those that this program's wrappers hold: for whoever watches it in long use.
UINT countsMessage()
{
    static UINT message = RegisterWindowMessageW(L"Torvane.counts");
    return message;
}

LRESULT livingObjects(WPARAM kind)
{
    return kind < gdiKindCount ? livingGdiObjects[kind] : -1;
}

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == countsMessage())
        return livingObjects(wParam);
    const MessageRow* row = findRow(message);
    return row != nullptr ? row->handle(window, wParam, lParam) : DefWindowProcW(window, message, wParam, lParam);
}

bool registerClass()
{
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = windowProcedure;
    windowClass.hInstance = mainWindow.instance;
    windowClass.hIcon = LoadIconW(mainWindow.instance, MAKEINTRESOURCEW(iconTorvane));
    windowClass.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_APPWORKSPACE));
    windowClass.lpszClassName = className;
    return RegisterClassExW(&windowClass) != 0;
}

} // namespace

bool createMainWindow()
{
    const int32_t* rect = mainWindow.session.saved.windowRect;
    mainWindow.menu = buildMenu();
    HWND window = nullptr;
    if (registerClass())
        window =
            CreateWindowExW(WS_EX_ACCEPTFILES, className, L"Torvane", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, rect[0],
                            rect[1], mainWindow.session.saved.windowWidth, mainWindow.session.saved.windowHeight,
                            nullptr, mainWindow.menu, mainWindow.instance, nullptr);
    if (window == nullptr) {
        showMessageBox(nullptr, "alert", "failed to create main window");
        return false;
    }
    showAsKept(window, mainWindow.session.kept);
    UpdateWindow(window);
    return true;
}

} // namespace torvane
