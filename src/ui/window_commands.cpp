// One row for each command.
#include "ui/window_commands.h"

#include "core/command_ids.h"
#include "ui/font_choice.h"
#include "ui/help.h"
#include "ui/main_window.h"
#include "ui/page_file.h"
#include "ui/page_setup.h"
#include "ui/print_pane.h"
#include "ui/screen_files.h"
#include "ui/screen_set.h"
#include "ui/small_dialogs.h"

namespace torvane {

namespace {

void about(HWND)
{
    runAboutDialog(mainWindow.window);
}

void manual(HWND)
{
    showManual(mainWindow.window, "");
}

void page(HWND)
{
    showPage(mainWindow.window);
}

void exitProgram(HWND)
{
    if (confirmExit(mainWindow.window))
        SendMessageW(mainWindow.window, WM_CLOSE, 0, 0);
}

void chooseFontOfSelection(HWND pane)
{
    chooseScreenFont(pane, FontScope::selection);
}

void chooseFontOfAll(HWND pane)
{
    chooseScreenFont(pane, FontScope::all);
}

void clear(HWND pane)
{
    clearPane(pane);
}

void print(HWND pane)
{
    printPane(mainWindow.window, pane);
}

void save(HWND pane)
{
    saveScreen(pane);
}

void saveAs(HWND pane)
{
    saveScreenAs(pane);
}

void open(HWND pane)
{
    openScreen(pane);
}

void setUpPage(HWND)
{
    pageSetUp(mainWindow.window);
    setPrintWidth(screenSet.upperScreen);
    setPrintWidth(screenSet.lowerScreen);
}

struct WindowCommand {
    int id;
    void (*run)(HWND pane);
    HWND ScreenSet::*pane;
    bool showsTop; // afterwards the pane takes the focus and scrolls to its top
};

constexpr HWND ScreenSet::*upper = &ScreenSet::upperScreen;
constexpr HWND ScreenSet::*lower = &ScreenSet::lowerScreen;

// Both font commands of the lower pane change all of its text, as ever.
constexpr WindowCommand commands[] = {
    {commandAbout, about, upper, false},
    {commandManual, manual, upper, false},
    {commandPage, page, upper, false},
    {commandExit, exitProgram, upper, false},
    {commandFontSelectedUpper, chooseFontOfSelection, upper, false},
    {commandFontAllUpper, chooseFontOfAll, upper, false},
    {commandFontSelectedLower, chooseFontOfAll, lower, true},
    {commandFontAllLower, chooseFontOfAll, lower, true},
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
        row.run(screenSet.*row.pane);
        if (row.showsTop)
            showTop(screenSet.*row.pane);
    }
}

} // namespace torvane
