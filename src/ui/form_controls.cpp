// One small function for each kind of row and each way to touch it.
#include "ui/form_controls.h"

#include "core/parameter_block.h"
#include "core/wide_text.h"
#include "ui/file_prompts.h"
#include "ui/form_dialog.h"
#include "ui/form_hints.h"
#include "ui/main_window.h"
#include "ui/message_box.h"
#include "ui/spoken_name.h"

#include <algorithm>
#include <string>
#include <vector>

namespace torvane {

namespace {

constexpr int numberLength = 31;   // characters that a number's edit box takes
constexpr int pathLength = 32766;  // the longest that the system knows
constexpr int spinReach = 1 << 30; // the up-down controls report directions; their own position means nothing

HWND control(const FormWindow& form, int id)
{
    return GetDlgItem(form.window, id);
}

std::wstring controlText(HWND window)
{
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)), L'\0');
    text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1)));
    return text;
}

void setControlText(HWND window, const std::string& text)
{
    std::wstring wide = widen(text);
    if (controlText(window) != wide)
        SetWindowTextW(window, wide.c_str());
}

bool isText(const Row& row)
{
    return row.kind == RowKind::path || row.kind == RowKind::words;
}

bool isEdit(const Row& row)
{
    return isNumber(row) || isText(row);
}

bool hasSpin(const Row& row)
{
    return row.spin != 0 && isNumber(row);
}

bool isRadioOf(const Row& row, int id)
{
    return row.kind == RowKind::radio && std::find(row.radioIds.begin(), row.radioIds.end(), id) != row.radioIds.end();
}

void enableControl(const FormWindow& form, int id, bool enabled)
{
    HWND window = control(form, id);
    if (window == nullptr || (IsWindowEnabled(window) != FALSE) == enabled)
        return;
    // A control that is disabled under the focus would leave the keyboard nowhere.
    if (!enabled && GetFocus() == window)
        SendMessageW(GetParent(window), WM_NEXTDLGCTL, 0, FALSE);
    EnableWindow(window, enabled);
}

void enableRow(const FormWindow& form, const Row& row)
{
    bool enabled = isEnabled(form.state, row);
    if (row.kind != RowKind::label)
        enableControl(form, row.id, enabled);
    if (row.spin != 0)
        enableControl(form, row.spin, enabled);
    for (int id : row.radioIds)
        enableControl(form, id, enabled);
}

bool listsLabels(HWND combo, const std::vector<std::string>& labels)
{
    if (SendMessageW(combo, CB_GETCOUNT, 0, 0) != static_cast<LRESULT>(labels.size()))
        return false;
    for (size_t i = 0; i < labels.size(); ++i) {
        LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, i, 0);
        std::wstring listed(static_cast<size_t>(length > 0 ? length : 0), L'\0');
        SendMessageW(combo, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(listed.data()));
        if (listed != widen(labels[i]))
            return false;
    }
    return true;
}

void showChoice(const FormWindow& form, const Row& row)
{
    HWND combo = control(form, row.id);
    std::vector<std::string> labels = rowLabels(form.state, row);
    if (!listsLabels(combo, labels)) {
        SendMessageW(combo, CB_RESETCONTENT, 0, 0);
        for (const std::string& label : labels)
            SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(widen(label).c_str()));
    }
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(chosenValue(form.state, row)), 0);
}

void showRadio(const FormWindow& form, const Row& row)
{
    int chosen = chosenValue(form.state, row);
    for (size_t i = 0; i < row.radioIds.size(); ++i)
        SendMessageW(control(form, row.radioIds[i]), BM_SETCHECK,
                     static_cast<int>(i) == chosen ? BST_CHECKED : BST_UNCHECKED, 0);
}

void showRow(const FormWindow& form, const Row& row)
{
    switch (row.kind) {
    case RowKind::real:
    case RowKind::whole:
    case RowKind::words:
    case RowKind::path:
    case RowKind::label:
        setControlText(control(form, row.id), rowText(form.state, row));
        break;
    case RowKind::choice:
        showChoice(form, row);
        break;
    case RowKind::radio:
        showRadio(form, row);
        break;
    case RowKind::check:
        SendMessageW(control(form, row.id), BM_SETCHECK,
                     chosenValue(form.state, row) != 0 ? BST_CHECKED : BST_UNCHECKED, 0);
        break;
    case RowKind::button:
        break;
    }
}

void attachSpin(const FormWindow& form, const Row& row)
{
    HWND spinControl = control(form, row.spin);
    if (SendMessageW(spinControl, UDM_GETBUDDY, 0, 0) != 0)
        return; // of another row on the same control; attaching again would narrow the edit box again
    SendMessageW(spinControl, UDM_SETBUDDY, reinterpret_cast<WPARAM>(control(form, row.id)), 0);
    SendMessageW(spinControl, UDM_SETRANGE32, static_cast<WPARAM>(-spinReach), spinReach);
}

void labelRadioButtons(const FormWindow& form, const Row& row)
{
    std::vector<std::string> labels = rowLabels(form.state, row);
    for (size_t i = 0; i < row.radioIds.size() && i < labels.size(); ++i)
        SetWindowTextW(control(form, row.radioIds[i]), widen(labels[i]).c_str());
}

// "..." stands on many buttons of a dialog, "predict" on two.
void nameButton(const FormWindow& form, const Row& row)
{
    bool browses = row.browse != Browse::none;
    HWND button = control(form, browses ? row.spin : row.id);
    std::wstring about = browses ? controlText(GetWindow(control(form, row.id), GW_HWNDPREV)) : std::wstring();
    if (row.kind == RowKind::button && !row.labels.empty())
        about = widen(rowLabels(form.state, row)[static_cast<size_t>(row.index)]);
    if (button != nullptr && !about.empty())
        speakAs(button, (browses ? L"browse" : controlText(button)) + L", " + about);
}

std::string typedText(const FormWindow& form, int id)
{
    return narrow(controlText(control(form, id)));
}

bool takeEdit(FormWindow& form, const Row& row, int code)
{
    if (code != EN_CHANGE)
        return false;
    if (isText(row))
        setPath(form.state, row, typedText(form, row.id));
    else
        editText(form.state, row, typedText(form, row.id));
    refreshControls(form, row.id);
    return true;
}

bool takeChoice(FormWindow& form, const Row& row, int code)
{
    if (code != CBN_SELCHANGE)
        return false;
    choose(form.state, row, static_cast<int>(SendMessageW(control(form, row.id), CB_GETCURSEL, 0, 0)));
    refreshControls(form);
    return true;
}

bool takeRadio(FormWindow& form, const Row& row, int id)
{
    auto button = std::find(row.radioIds.begin(), row.radioIds.end(), id);
    choose(form.state, row, static_cast<int>(button - row.radioIds.begin()));
    refreshControls(form);
    return true;
}

bool takeCheck(FormWindow& form, const Row& row)
{
    choose(form.state, row, IsDlgButtonChecked(form.window, row.id) == BST_CHECKED);
    refreshControls(form);
    return true;
}

bool takeBrowse(FormWindow& form, const Row& row)
{
    std::string path = rowText(form.state, row);
    if (!promptBrowse(form.window, row.browse, path))
        return false;
    setPath(form.state, row, path);
    refreshControls(form);
    return true;
}

bool takeButton(FormWindow& form, const Row& row)
{
    Verdict verdict = pressButton(form.state, row, mainWindow.session.working);
    showBoxes(form.window, verdict);
    const Form* child = findForm(row.child);
    if (!verdict.passed || child == nullptr || !runFormDialog(form.window, *child, form.state.ride))
        return false;
    buttonReturned(form.state, row, mainWindow.session.working);
    refreshControls(form);
    return true;
}

bool takeClick(FormWindow& form, const Row& row, int id)
{
    switch (row.kind) {
    case RowKind::radio:
        return takeRadio(form, row, id);
    case RowKind::check:
        return takeCheck(form, row);
    case RowKind::words:
    case RowKind::path:
        return takeBrowse(form, row);
    case RowKind::button:
        return takeButton(form, row);
    default:
        return false;
    }
}

bool takeSaveBox(FormWindow& form)
{
    form.state.saveAsDefault = IsDlgButtonChecked(form.window, form.state.form->saveBox) == BST_CHECKED;
    return true;
}

} // namespace

const Row* rowOfControl(const FormWindow& form, int id)
{
    if (id == 0)
        return nullptr;
    for (const Row& row : form.state.form->rows)
        if ((row.id == id || row.spin == id || isRadioOf(row, id)) && isPresent(form.state, row))
            return &row;
    return nullptr;
}

void initializeControls(FormWindow& form)
{
    const Form& definition = *form.state.form;
    form.refreshing = true;
    for (const Row& row : definition.rows) {
        if (isEdit(row))
            SendMessageW(control(form, row.id), EM_LIMITTEXT, isText(row) ? pathLength : numberLength, 0);
        if (hasSpin(row))
            attachSpin(form, row);
        if (row.kind == RowKind::radio)
            labelRadioButtons(form, row);
        nameButton(form, row);
    }
    if (definition.saveBox != 0)
        CheckDlgButton(form.window, definition.saveBox, form.state.saveAsDefault ? BST_CHECKED : BST_UNCHECKED);
    form.refreshing = false;
    refreshControls(form);
    attachHints(form);
}

void refreshControls(FormWindow& form, int typedId)
{
    form.refreshing = true;
    for (const Row& row : form.state.form->rows) {
        if (row.id == 0 || rowOfControl(form, row.id) != (isPresent(form.state, row) ? &row : nullptr))
            continue;
        if (row.id != typedId && isPresent(form.state, row))
            showRow(form, row);
        enableRow(form, row);
    }
    if (form.state.form->confirm != nullptr)
        enableControl(form, IDOK, mayConfirm(form.state));
    form.refreshing = false;
}

void focusRefused(const FormWindow& form)
{
    const Row* row = form.state.refused;
    if (row == nullptr)
        return;
    bool radio = row->kind == RowKind::radio;
    int id = radio ? row->radioIds[static_cast<size_t>(chosenValue(form.state, *row))] : row->id;
    HWND window = control(form, id);
    if (window != nullptr && IsWindowEnabled(window) != FALSE)
        PostMessageW(form.window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(window), TRUE);
}

bool handleControl(FormWindow& form, int id, int code)
{
    if (form.refreshing)
        return false;
    if (code == BN_CLICKED && id != 0 && id == form.state.form->saveBox)
        return takeSaveBox(form);
    const Row* row = rowOfControl(form, id);
    if (row == nullptr)
        return false;
    if (isEdit(*row) && id == row->id)
        return takeEdit(form, *row, code);
    if (row->kind == RowKind::choice)
        return takeChoice(form, *row, code);
    return code == BN_CLICKED && takeClick(form, *row, id);
}

bool handleSpin(FormWindow& form, const NMUPDOWN& press)
{
    const Row* row = rowOfControl(form, static_cast<int>(press.hdr.idFrom));
    if (row == nullptr || !hasSpin(*row))
        return false;
    spin(form.state, *row, press.iDelta > 0);
    refreshControls(form);
    return true;
}

} // namespace torvane
