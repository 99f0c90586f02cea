// Menu bar and accelerators, built from the command table.
#pragma once

#include "ui/win32.h"

namespace torvane {

// Commands that are not built yet come out greyed.
HMENU buildMenu();
HACCEL buildAccelerators();
void enableMenuCommand(int id, bool enabled);
bool isGreyed(int id); // false for a command without an entry

} // namespace torvane
