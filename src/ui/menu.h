// Menu bar and accelerators, built from the command table.
#pragma once

#include "ui/win32.h"

#include <string>

namespace torvane {

// Commands that are not built yet come out greyed.
HMENU buildMenu();
HACCEL buildAccelerators();

// A menu of recent files as it opens; any other stays as it is.
void fillRecentMenu(HMENU menu);
// Whether the id is that of an entry there; its file is opened.
bool openRecent(int id);
// What a menu entry does, in one line; of a recent file its whole path. Empty for all else.
std::string menuHint(int id);

void enableMenuCommand(int id, bool enabled);
bool isGreyed(int id); // false for a command without an entry

} // namespace torvane
