// The protocol's seam, filled in with windows.
#include "ui/front_end.h"

#include "command/settings_command.h"
#include "forms/form.h"
#include "ui/file_prompts.h"
#include "ui/form_dialog.h"
#include "ui/form_page.h"
#include "ui/given_file.h"
#include "ui/graph_window.h"
#include "ui/main_window.h"
#include "ui/menu.h"
#include "ui/screen_bridge.h"
#include "ui/screen_set.h"
#include "ui/status_line.h"
#include "ui/window_commands.h"

namespace torvane {

namespace {

bool askDialog(const Command& command)
{
    const Form* form = findForm(command.form);
    return form != nullptr && runFormDialog(mainWindow.window, *form, mainWindow.session.ride);
}

bool askSheet(const Command& command)
{
    runPropertySheet(mainWindow.window, command.sheet);
    return true;
}

bool ask(const Command& command)
{
    if (std::optional<bool> entered = enterGiven(command))
        return *entered;
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
        return promptOpenFit(mainWindow.window, mainWindow.session.chosenRide);
    }
    return false;
}

bool runEntry(const Command& command)
{
    if (isGreyed(command.id) || !ask(command)) // greyed by the run that it waited for
        return false;
    rememberEntry(command);
    return true;
}

void focusPane(bool lower)
{
    flushScreens();
    showTop(lower ? screenSet.lowerScreen : screenSet.upperScreen);
    raiseGraphWindow();
}

enum : UINT {
    messageEndRun = WM_APP + 32, // above those of the screens
    messageOpenWaiting,
};

void sendCompletion()
{
    flushScreens();
    SendMessageW(mainWindow.window, messageEndRun, 0, 0);
}

// The run's end is a sent message, and inside one Windows forbids much of what a dialog needs.
void postOpenWaiting()
{
    PostMessageW(mainWindow.window, messageOpenWaiting, 0, 0);
}

// Messages sent by the worker are delivered inside any call that looks for messages.
void serveWorker()
{
    constexpr DWORD moment = 10; // ms
    MsgWaitForMultipleObjects(0, nullptr, FALSE, moment, QS_SENDMESSAGE);
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

template <void (Protocol::*act)()>
LRESULT onMessage(HWND, WPARAM, LPARAM)
{
    flushScreens(); // what the worker has gathered, when this is the end of its run
    setNoticeLine("");
    (mainWindow.protocol.*act)();
    flushScreens();
    return 0;
}

constexpr MessageRow messages[] = {
    {messageEndRun, onMessage<&Protocol::endRun>},
    {messageOpenWaiting, onMessage<&Protocol::openWaiting>},
};

// The last thing before the worker takes a command up.
void beginRun()
{
    allowRun();
    closeGraphWindow();
}

constexpr FrontEnd frontEnd = {
    .runEntry = runEntry,
    .closeGraph = beginRun,
    .openGraph = [] { openGraphWindow(); },
    .enableCommand = enableMenuCommand,
    .focusPane = focusPane,
    .showWaiting = setWaitingLine,
    .sendCompletion = sendCompletion,
    .postOpenWaiting = postOpenWaiting,
    .runFrontEndCommand = runWindowCommand,
    .serveWorker = serveWorker,
};

} // namespace

const FrontEnd& desktopFrontEnd()
{
    return frontEnd;
}

std::span<const MessageRow> frontEndMessages()
{
    return messages;
}

} // namespace torvane
