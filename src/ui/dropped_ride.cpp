#include "ui/dropped_ride.h"

#include "command/fill.h"
#include "core/wide_text.h"
#include "ui/main_window.h"
#include "ui/message_box.h"
#include "ui/screen_bridge.h"

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

// A dialog or a run still uses what a drop would change.
bool isBusy()
{
    const WorkerBlock& worker = mainWindow.protocol.workerBlock;
    return !IsWindowEnabled(mainWindow.window) || worker.ActiveCommand != 0 || worker.busy != 0;
}

} // namespace

LRESULT onDropFiles(HWND, WPARAM wParam, LPARAM)
{
    HDROP drop = reinterpret_cast<HDROP>(wParam);
    std::string path = firstPathOf(drop);
    DragFinish(drop);
    if (isBusy()) {
        mainWindow.session.screens.setStatus("status : a ride can be dropped when the present command is over");
    } else {
        mainWindow.droppedRide = std::move(path);
        mainWindow.protocol.handleCommand(commandRide);
    }
    flushScreens();
    return 0;
}

std::optional<bool> enterDropped(const Command& command)
{
    std::string path = std::exchange(mainWindow.droppedRide, {});
    if (path.empty())
        return std::nullopt;
    std::vector<Assignment> asSaved;
    RunFiles files = {{path}, {}};
    Filling filling = {mainWindow.session, command, asSaved, files};
    bool accepted = fillDialog(filling);
    for (const Box& box : filling.boxes)
        showMessageBox(mainWindow.window, box.title, box.text);
    return accepted;
}

} // namespace torvane
