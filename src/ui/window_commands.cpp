// One row for each command.
#include "ui/window_commands.h"

#include "ui/font_choice.h"
#include "ui/main_window.h"
#include "ui/page_setup.h"
#include "ui/print_pane.h"
#include "ui/screen_files.h"
#include "ui/screen_set.h"
#include "ui/small_dialogs.h"

namespace torvane {

namespace {

constexpr int firstFontCommand = 304;

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
    chooseScreenFont(pane, id - firstFontCommand);
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
    {302, about, upper, false},      {303, exitProgram, upper, false}, {304, chooseFont, upper, false},
    {305, chooseFont, upper, false}, {306, chooseFont, lower, true},   {307, chooseFont, lower, true},
    {308, clear, upper, true},       {309, clear, lower, true},        {310, print, upper, true},
    {311, print, lower, true},       {312, save, upper, true},         {313, save, lower, true},
    {314, saveAs, upper, true},      {315, saveAs, lower, true},       {316, open, upper, true},
    {317, open, lower, true},        {318, setUpPage, upper, false},
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
