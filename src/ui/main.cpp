// Start of the desktop program, its message loop and its end.
#include "command/kept_entries.h"
#include "command/settings_command.h"
#include "core/parameter_block.h"
#include "core/parameter_file.h"
#include "core/screens.h"
#include "core/shown_text.h"
#include "ui/focus_ring.h"
#include "ui/main_window.h"
#include "ui/menu.h"
#include "ui/message_box.h"
#include "ui/pane_fill.h"
#include "ui/parameter_place.h"
#include "ui/status_line.h"
#include "ui/win32.h"
#include "ui/window_place.h"

#include <ole2.h>

namespace torvane {

namespace {

// What is skipped of the entry file is told once, at the start.
void readKept()
{
    EntryFile& kept = mainWindow.session.kept;
    std::string text;
    mainWindow.writesKept = readEntryFile(entryFilePath(mainWindow.parameterPath), kept);
    if (!mainWindow.writesKept)
        text = "\nthe file cannot be read";
    for (const std::string& entry : skippedEntries(kept))
        text.append("\n").append(shownText(entry));
    if (!text.empty())
        showMessageBox(nullptr, "alert", "skipped of Torvane.settings:" + text);
}

void registerCommonControls()
{
    INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES | ICC_PROGRESS_CLASS | ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&classes);
}

int runMessageLoop(HACCEL accelerators)
{
    MSG message;
    for (;;) {
        BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got == 0)
            return static_cast<int>(message.wParam);
        if (got == -1) {
            showMessageBox(nullptr, "error", "GetMessage Error");
            return 1;
        }
        if (takeWindowKey(message) || (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE && stopFill()))
            continue;
        if (TranslateAcceleratorW(mainWindow.window, accelerators, &message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// Null where another instance holds it.
HANDLE takeInstanceMutex()
{
    HANDLE mutex = CreateMutexW(nullptr, TRUE, L"Torvane");
    if (mutex != nullptr && GetLastError() == 0)
        return mutex;
    if (mutex != nullptr)
        CloseHandle(mutex);
    return nullptr;
}

int runWindow(bool tellsPlace)
{
    settleMainPlace(mainWindow.session.saved);
    if (!createMainWindow())
        return 1;
    if (tellsPlace)
        setStatusLine("status : defaults are kept in '" + shownText(mainWindow.parameterPath) + "'");
    HACCEL accelerators = buildAccelerators();
    watchDialogKeys();
    int result = runMessageLoop(accelerators);
    DestroyAcceleratorTable(accelerators);
    return result;
}

} // namespace

} // namespace torvane

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int)
{
    using namespace torvane;
    mainWindow.instance = instance;
    // Before the files are touched: an instance that must not run has no say in them.
    HANDLE mutex = takeInstanceMutex();
    if (mutex == nullptr)
        return 0;
    mainWindow.session.screens.showMessage = [](std::string_view title, std::string_view text) {
        showMessageBox(nullptr, title, text);
    };
    ParameterPlace place = findParameterPlace();
    mainWindow.parameterPath = place.path;
    registerCommonControls();
    ParameterBlock defaults;
    ParametersLoaded loaded = loadParameters(mainWindow.session.screens, mainWindow.parameterPath, defaults);
    startFrom(mainWindow.session, defaults);
    mainWindow.session.keepsRideCurves = mainWindow.session.keepsRidePlaces = true;
    mainWindow.writesParameters = loaded == ParametersLoaded::ready;
    readKept();
    OleInitialize(nullptr); // the panes copy by it
    int result = loaded != ParametersLoaded::failed ? runWindow(place.isNews) : 1;
    OleFlushClipboard(); // what was copied outlives the program
    OleUninitialize();
    ReleaseMutex(mutex);
    CloseHandle(mutex);
    return result;
}
