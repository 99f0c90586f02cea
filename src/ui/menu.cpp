// The menu table as a Windows menu. An accelerator whose entry is greyed does nothing: Windows sees to it.
#include "ui/menu.h"

#include "command/command_table.h"
#include "command/recent_files.h"
#include "core/wide_text.h"
#include "ui/given_file.h"
#include "ui/main_window.h"

#include <string>
#include <vector>

namespace torvane {

namespace {

std::string keyText(const Command& command)
{
    if (command.key == 0)
        return "";
    return std::string("\tCtrl+") + (command.shift ? "Shift+" : "") + command.key;
}

void appendCommand(HMENU menu, int id)
{
    const Command* command = findCommand(id);
    if (command == nullptr)
        return;
    AppendMenuW(menu, MF_STRING | MF_ENABLED, static_cast<UINT_PTR>(id),
                widen(command->label + keyText(*command)).c_str());
}

constexpr int firstRecent = 0x5000, recentOfKind = 0x20; // ids of entries, above those of all commands

HMENU recentRides, recentProfiles;

std::vector<std::string> recentOf(RecentKind kind)
{
    return recentFiles(mainWindow.session.kept, kind);
}

bool isRecent(int id)
{
    return id >= firstRecent && id < firstRecent + 2 * recentOfKind;
}

// Empty where the list has become shorter.
std::string recentPath(int id)
{
    std::vector<std::string> paths = recentOf(static_cast<RecentKind>((id - firstRecent) / recentOfKind));
    size_t place = static_cast<size_t>((id - firstRecent) % recentOfKind);
    return place < paths.size() ? paths[place] : "";
}

HMENU openSubmenu(HMENU parent, const char* label)
{
    HMENU menu = CreatePopupMenu();
    AppendMenuW(parent, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), widen(label).c_str());
    return menu;
}

} // namespace

HMENU buildMenu()
{
    std::vector<HMENU> open = {CreateMenu()}; // the bar, and the menus that are not at their end yet
    for (const MenuItem& item : menuTable()) {
        switch (item.kind) {
        case MenuKind::menu:
        case MenuKind::submenu:
            open.push_back(openSubmenu(open.back(), item.label));
            break;
        case MenuKind::end:
            open.pop_back();
            break;
        case MenuKind::command:
            appendCommand(open.back(), item.command);
            break;
        case MenuKind::recent:
            (item.command == commandRide ? recentRides : recentProfiles) = openSubmenu(open.back(), item.label);
            break;
        case MenuKind::separator:
            AppendMenuW(open.back(), MF_SEPARATOR, 0, nullptr);
            break;
        }
    }
    return open.front();
}

void fillRecentMenu(HMENU menu)
{
    if (menu != recentRides && menu != recentProfiles)
        return;
    RecentKind kind = menu == recentRides ? RecentKind::rides : RecentKind::profiles;
    while (DeleteMenu(menu, 0, MF_BYPOSITION))
        continue;
    std::vector<std::string> paths = recentOf(kind);
    int id = firstRecent + recentOfKind * static_cast<int>(kind);
    for (size_t i = 0; i < paths.size(); ++i)
        AppendMenuW(menu, MF_STRING, static_cast<UINT_PTR>(id) + i, widen(recentLabel(i, paths[i])).c_str());
    if (paths.empty())
        AppendMenuW(menu, MF_STRING | MF_GRAYED, 0, L"none yet");
}

bool openRecent(int id)
{
    if (!isRecent(id))
        return false;
    if (std::string path = recentPath(id); !path.empty())
        openGiven(path);
    return true;
}

std::string menuHint(int id)
{
    if (isRecent(id))
        return recentPath(id);
    const Command* command = findCommand(id);
    return command != nullptr ? command->meaning : "";
}

HACCEL buildAccelerators()
{
    std::vector<ACCEL> keys;
    for (const Command& command : commandTable()) {
        if (command.key == 0)
            continue;
        BYTE modifiers = static_cast<BYTE>(FVIRTKEY | FCONTROL | (command.shift ? FSHIFT : 0));
        keys.push_back({modifiers, static_cast<WORD>(command.key), static_cast<WORD>(command.id)});
    }
    return CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

void enableMenuCommand(int id, bool enabled)
{
    const Command* command = findCommand(id);
    bool open = enabled && command != nullptr;
    EnableMenuItem(mainWindow.menu, static_cast<UINT>(id), MF_BYCOMMAND | (open ? MF_ENABLED : MF_GRAYED));
}

bool isGreyed(int id)
{
    UINT state = GetMenuState(mainWindow.menu, static_cast<UINT>(id), MF_BYCOMMAND);
    return state != static_cast<UINT>(-1) && (state & MF_GRAYED) != 0;
}

} // namespace torvane
