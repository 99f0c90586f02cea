// The protocol's seam, filled in with windows.
#include "ui/front_end.h"

#include "command/settings_command.h"
#include "forms/form.h"
#include "gps/gps_load.h"
#include "ui/file_prompts.h"
#include "ui/form_dialog.h"
#include "ui/form_page.h"
#include "ui/graph_window.h"
#include "ui/main_window.h"
#include "ui/menu.h"
#include "ui/screen_bridge.h"
#include "ui/screen_set.h"
#include "ui/window_commands.h"

namespace torvane {

namespace {

bool askDialog(const Command& command)
{
    const Form* form = findForm(command.form);
    return form != nullptr && runFormDialog(mainWindow.window, *form);
}

bool askSheet(const Command& command)
{
    runPropertySheet(mainWindow.window, command.id);
    return true;
}

bool runEntry(const Command& command)
{
    switch (command.entry) {
    case Entry::immediate:
        return true;
    case Entry::dialog:
        return askDialog(command);
    case Entry::sheet:
        return askSheet(command);
    case Entry::openProfile:
        return promptOpenProfile(mainWindow.window, mainWindow.session.profilePath);
    case Entry::saveProfile:
        return promptSaveProfile(mainWindow.window, mainWindow.session.profilePath);
    case Entry::openFit:
        return promptOpenFit(mainWindow.window, fitInputFileName);
    }
    return false;
}

void focusPane(bool lower)
{
    flushScreens();
    showTop(lower ? screenSet.lowerScreen : screenSet.upperScreen);
    raiseGraphWindow();
}

void sendCompletion(int id)
{
    flushScreens();
    SendMessageW(mainWindow.window, WM_COMMAND, static_cast<WPARAM>(id), 0);
}

// Messages sent by the worker are delivered inside any call that looks for messages.
void serveWorker()
{
    constexpr DWORD moment = 10; // ms
    MsgWaitForMultipleObjects(0, nullptr, FALSE, moment, QS_SENDMESSAGE);
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

constexpr FrontEnd frontEnd = {
    .runEntry = runEntry,
    .closeGraph = closeGraphWindow,
    .openGraph = [] { openGraphWindow(mainWindow.window); },
    .enableCommand = enableMenuCommand,
    .focusPane = focusPane,
    .sendCompletion = sendCompletion,
    .runFrontEndCommand = runWindowCommand,
    .serveWorker = serveWorker,
};

} // namespace

const FrontEnd& desktopFrontEnd()
{
    return frontEnd;
}

} // namespace torvane
