// About, and the question before the end.
#include "ui/small_dialogs.h"

#include "ui/main_window.h"
#include "ui/resource_ids.h"
#include "version.h"

namespace torvane {

namespace {

INT_PTR CALLBACK dialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM)
{
    if (message == WM_INITDIALOG) {
        SetDlgItemTextW(dialog, aboutText,
                        L"Torvane ver." TORVANE_VERSION_SHOWN); // of the one dialog that has this control
        return TRUE;
    }
    int id = LOWORD(wParam);
    if (message != WM_COMMAND || (id != IDOK && id != IDCANCEL))
        return FALSE;
    EndDialog(dialog, id);
    return TRUE;
}

INT_PTR run(HWND owner, int id)
{
    return DialogBoxParamW(mainWindow.instance, MAKEINTRESOURCEW(id), owner, dialogProcedure, 0);
}

} // namespace

void runAboutDialog(HWND owner)
{
    run(owner, dialogAbout);
}

bool confirmExit(HWND owner)
{
    return run(owner, dialogConfirmExit) == IDOK;
}

} // namespace torvane
