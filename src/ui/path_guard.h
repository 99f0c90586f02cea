// Keeps the system's file dialogs from paths that they have no room for: some end the program over one.
#pragma once

#include "ui/win32.h"

namespace torvane {

constexpr size_t promptCapacity = 260; // characters of a path in those dialogs, with the closing 0

// While it lives, a dialog of this thread refuses a longer path in a message box and stays open.
class PathGuard {
public:
    PathGuard();
    ~PathGuard();
    PathGuard(const PathGuard&) = delete;
    PathGuard& operator=(const PathGuard&) = delete;

private:
    HHOOK hook;
};

} // namespace torvane
