// A modal form: opened, filled, confirmed or cancelled. The template carries the controls, the form's rows their
// meaning.
#include "ui/form_dialog.h"

#include "command/help_topics.h"
#include "command/kept_entries.h"
#include "command/settings_command.h"
#include "core/wide_text.h"
#include "ui/form_controls.h"
#include "ui/form_hints.h"
#include "ui/help.h"
#include "ui/main_window.h"
#include "ui/message_box.h"

namespace torvane {

namespace {

FormWindow& formOf(HWND dialog)
{
    return *reinterpret_cast<FormWindow*>(GetWindowLongPtrW(dialog, DWLP_USER));
}

INT_PTR onInitDialog(HWND dialog, LPARAM lParam)
{
    SetWindowLongPtrW(dialog, DWLP_USER, lParam);
    FormWindow& form = formOf(dialog);
    form.window = dialog;
    SetWindowTextW(dialog, widen(form.state.form->title).c_str());
    SetDlgItemTextW(dialog, IDOK, widen(form.state.form->confirm).c_str());
    initializeControls(form);
    return TRUE;
}

INT_PTR onConfirm(FormWindow& form)
{
    Verdict verdict = confirmDialog(mainWindow.session, form.state);
    showBoxes(form.window, verdict);
    if (verdict.passed) {
        EndDialog(form.window, IDOK);
        return TRUE;
    }
    refreshControls(form);
    focusRefused(form);
    return TRUE;
}

INT_PTR onCommand(HWND dialog, WPARAM wParam)
{
    FormWindow& form = formOf(dialog);
    switch (LOWORD(wParam)) {
    case IDOK:
        return onConfirm(form);
    case IDCANCEL:
        EndDialog(dialog, IDCANCEL);
        return TRUE;
    default:
        handleControl(form, LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    }
}

INT_PTR onNotify(HWND dialog, LPARAM lParam)
{
    const NMHDR& header = *reinterpret_cast<const NMHDR*>(lParam);
    if (header.code == TTN_GETDISPINFOW)
        tellHint(formOf(dialog), *reinterpret_cast<NMTTDISPINFOW*>(lParam));
    if (header.code != UDN_DELTAPOS)
        return FALSE;
    handleSpin(formOf(dialog), *reinterpret_cast<const NMUPDOWN*>(lParam));
    SetWindowLongPtrW(dialog, DWLP_MSGRESULT, TRUE); // the control's own position stays where it is
    return TRUE;
}

INT_PTR CALLBACK dialogProcedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG)
        return onInitDialog(dialog, lParam);
    if (GetWindowLongPtrW(dialog, DWLP_USER) == 0)
        return FALSE; // notifications of controls that are still being made
    switch (message) {
    case WM_COMMAND:
        return onCommand(dialog, wParam);
    case WM_NOTIFY:
        return onNotify(dialog, lParam);
    case WM_HELP:
        showManual(dialog, manualAnchorOfForm(formOf(dialog).state.form->id));
        return TRUE;
    default:
        return FALSE;
    }
}

} // namespace

bool runFormDialog(HWND owner, const Form& form, const LoadedRide& ride)
{
    FormWindow window;
    openForm(window.state, form, mainWindow.session.saved, mainWindow.session.working, mainWindow.session.model, false,
             ride);
    takeKept(window.state, mainWindow.session.kept);
    INT_PTR result = DialogBoxParamW(mainWindow.instance, MAKEINTRESOURCEW(form.id), owner, dialogProcedure,
                                     reinterpret_cast<LPARAM>(&window));
    return result == IDOK;
}

} // namespace torvane
