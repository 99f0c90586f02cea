// One row for each command.
#include "ui/window_commands.h"

#include "core/command_ids.h"
#include "ui/font_choice.h"
#include "ui/main_window.h"
#include "ui/page_setup.h"
#include "ui/print_pane.h"
#include "ui/screen_files.h"
#include "ui/screen_set.h"
#include "ui/small_dialogs.h"

namespace torvane {

namespace {

void about(HWND, int)
{
    runAboutDialog(mainWindow.window);
}

void exitProgram(HWND, int)
{
    if (confirmExit(mainWindow.window))
        SendMessageW(mainWindow.window, WM_CLOSE, 0, 0);
}

// Its distance from the first font command is the scope: so both commands of the lower pane change all of its text.
void chooseFont(HWND pane, int id)
{
    chooseScreenFont(pane, id - commandFontSelectedUpper);
}

void clear(HWND pane, int)
{
    clearPane(pane);
}

void print(HWND pane, int)
{
    printPane(mainWindow.window, pane);
}

void save(HWND pane, int)
{
    saveScreen(pane);
}

void saveAs(HWND pane, int)
{
    saveScreenAs(pane);
}

void open(HWND pane, int)
{
    openScreen(pane);
}

void setUpPage(HWND, int)
{
    pageSetUp(mainWindow.window);
    setPrintWidth(screenSet.upperScreen);
    setPrintWidth(screenSet.lowerScreen);
}

struct WindowCommand {
    int id;
    void (*run)(HWND pane, int id);
    HWND ScreenSet::*pane;
    bool showsTop; // afterwards the pane takes the focus and scrolls to its top
};

constexpr HWND ScreenSet::*upper = &ScreenSet::upperScreen;
constexpr HWND ScreenSet::*lower = &ScreenSet::lowerScreen;

constexpr WindowCommand commands[] = {
    {commandAbout, about, upper, false},
    {commandExit, exitProgram, upper, false},
    {commandFontSelectedUpper, chooseFont, upper, false},
    {commandFontAllUpper, chooseFont, upper, false},
    {commandFontSelectedLower, chooseFont, lower, true},
    {commandFontAllLower, chooseFont, lower, true},
    {commandClearUpper, clear, upper, true},
    {commandClearLower, clear, lower, true},
    {commandPrintUpper, print, upper, true},
    {commandPrintLower, print, lower, true},
    {commandSaveUpper, save, upper, true},
    {commandSaveLower, save, lower, true},
    {commandSaveAsUpper, saveAs, upper, true},
    {commandSaveAsLower, saveAs, lower, true},
    {commandOpenUpper, open, upper, true},
    {commandOpenLower, open, lower, true},
    {commandPageSetUp, setUpPage, upper, false},
};

} // namespace

void runWindowCommand(const Command& command)
{
    for (const WindowCommand& row : commands) {
        if (row.id != command.id)
            continue;
        row.run(screenSet.*row.pane, row.id);
        if (row.showsTop)
            showTop(screenSet.*row.pane);
    }
}

} // namespace torvane
