// The two text panes, the status bar and the progress bar within it: made, laid out, filled. Window thread only, save
// where a line says otherwise.
#pragma once

#include "core/screens.h"
#include "ui/win32.h"

namespace torvane {

struct ScreenSet {
    HWND upperScreen;
    HWND lowerScreen;
    HWND statusBar;
    HWND splitter;    // over the edges where the panes meet
    HWND stopButton;  // likewise, beside the progress bar
    HWND progressBar; // child of statusBar, hidden while nothing long runs
    bool paperWide;   // lines of the panes are as wide as the printer's paper
};

extern ScreenSet screenSet;

// Mask of the character format requests: every property that the font dialog can set.
constexpr DWORD defaultCharMask = 0xF800000F;

// Each returns 0, or -1 after telling the user that something could not be made.
int createScreens(HWND window);
int createProgressBar();

// On every change of the window's size.
void layoutScreens(HWND window);
void layoutProgressBar();

HWND paneWindow(Pane pane);
bool setDefaultFont(HWND pane);
// Gives a pane the focus and scrolls it to its top.
void showTop(HWND pane);
// A fresh, empty control in the place of one, in its font: the control of Wine takes minutes to delete a long text, and
// as long to lay it out for another size. False where that was not to be had, and the old one stands.
bool replacePane(HWND pane, const RECT& place);
// Afterwards the pane may be another window: ask paneWindow, or screenSet, again.
void clearPane(HWND pane);

} // namespace torvane
