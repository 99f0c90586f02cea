#include "ui/given_file.h"

#include "command/fill.h"
#include "command/recent_files.h"
#include "command/settings_command.h"
#include "core/file_kind.h"
#include "core/parameter_file.h"
#include "core/text.h"
#include "core/wide_text.h"
#include "report/profile_report.h"
#include "ui/main_window.h"
#include "ui/message_box.h"
#include "ui/screen_bridge.h"
#include "ui/screen_set.h"
#include "ui/status_line.h"

#include <shellapi.h>

#include <string>
#include <utility>

namespace torvane {

namespace {

std::string firstPathOf(HDROP drop)
{
    std::wstring path(DragQueryFileW(drop, 0, nullptr, 0) + size_t{1}, L'\0');
    path.resize(DragQueryFileW(drop, 0, path.data(), static_cast<UINT>(path.size())));
    return narrow(path);
}

// A dialog or a run still uses what the file would change.
bool isBusy()
{
    const WorkerBlock& worker = mainWindow.protocol.workerBlock;
    return !IsWindowEnabled(mainWindow.window) || worker.ActiveCommand != 0 || worker.busy != 0;
}

bool wantsDefaults(const std::string& path)
{
    std::wstring question = widen("take the defaults of '" + shownFileName(path) + "' in place of the present ones?");
    return MessageBoxW(mainWindow.window, question.c_str(), L"attention", MB_OKCANCEL | MB_ICONQUESTION) == IDOK;
}

void takeDefaults(const std::string& path)
{
    Session& session = mainWindow.session;
    ParameterBlock defaults;
    ParametersRead read = readParameters(path, defaults);
    if (read != ParametersRead::ok)
        return showMessageBox(mainWindow.window, "alert", parametersFault(path, read));
    if (!wantsDefaults(path))
        return;
    startFrom(session, defaults);
    reportProfile(session.screens, Pane::upper, session.model.state, session.working, allProfileSections);
    session.screens.setStatus("status : took the defaults of '" + shownFileName(path) + "'");
}

void enterCommand(const std::string& path, int command)
{
    mainWindow.givenFile = path;
    mainWindow.protocol.handleCommand(command);
    mainWindow.givenFile.clear();
}

bool fillRide(const Command& command, const std::string& path)
{
    std::vector<Assignment> asSaved;
    RunFiles files = {{path}, {}};
    Filling filling = {mainWindow.session, command, asSaved, files};
    bool accepted = fillDialog(filling);
    for (const Box& box : filling.boxes)
        showMessageBox(mainWindow.window, box.title, box.text);
    return accepted;
}

} // namespace

LRESULT onDropFiles(HWND, WPARAM wParam, LPARAM)
{
    HDROP drop = reinterpret_cast<HDROP>(wParam);
    std::string path = firstPathOf(drop);
    DragFinish(drop);
    openGiven(path);
    return 0;
}

void openGiven(const std::string& path)
{
    FileKind kind = fileKind(path);
    if (isBusy())
        setNoticeLine("status : a ride can be dropped when the present command is over");
    else if (kind == FileKind::parameters)
        takeDefaults(path);
    else
        enterCommand(path, kind == FileKind::profile ? commandLoadProfile : commandRide);
    flushScreens();
}

std::optional<bool> enterGiven(const Command& command)
{
    std::string path = std::exchange(mainWindow.givenFile, {});
    if (path.empty())
        return std::nullopt;
    if (command.entry != Entry::openProfile)
        return fillRide(command, path);
    mainWindow.session.profilePath = path;
    return true;
}

void rememberEntry(const Command& command)
{
    const Session& session = mainWindow.session;
    bool takesRide = command.work == Work::worker && command.files.least > 0 && command.ride == RideUse::none;
    if (command.entry == Entry::openProfile || command.entry == Entry::saveProfile)
        rememberFile(mainWindow.session.kept, RecentKind::profiles, session.profilePath);
    else if (command.entry == Entry::openFit)
        rememberFile(mainWindow.session.kept, RecentKind::rides, session.chosenRide);
    else if (takesRide && command.id != commandCourse)
        rememberFile(mainWindow.session.kept, RecentKind::rides, session.inputs.files[0].path);
}

} // namespace torvane
