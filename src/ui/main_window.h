// The one top-level window of the desktop program: its creation, its messages, its end.
#pragma once

#include "command/protocol.h"
#include "command/session.h"
#include "ui/win32.h"

#include <string>

namespace torvane {

struct MainWindow {
    Session session;
    Protocol protocol;
    HINSTANCE instance;
    HWND window;
    HMENU menu;
    HWND lastFocus;            // pane that had the focus when the window was left
    HMODULE richEdit;          // library of the panes, freed at the window's end
    std::string parameterPath; // UTF-8, settled at start
    bool writesParameters;     // at the end, where the start could read them
    bool writesKept;           // the same of the entry file beside
    std::string givenFile;     // UTF-8, in place of a dialog or prompt, up to the entry of its command
    int lastCommand;           // that the user has chosen, 0 none
};

extern MainWindow mainWindow;

// Registers the class and creates and shows the window at the rectangle of the saved block; with the window the worker,
// the panes and the first report come to life. False when it could not be had; the user was told.
bool createMainWindow();

} // namespace torvane
