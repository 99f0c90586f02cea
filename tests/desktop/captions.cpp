// Measures the texts of every dialog of the program beside it against the controls that show them, in the dialog's own
// font: each caption, each entry of a list, each number at its limit, under each choice. Prints one line of JSON a
// text.
#include "core/wide_text.h"
#include "forms/form.h"

#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <set>
#include <string>

using namespace torvane;

namespace {

constexpr int markWidth = 18;   // pixels of a check box or radio button with the gap behind it
constexpr int borderWidth = 10; // of a button, an edit box or a group, both sides

std::set<std::string> lines; // a text that several choices show is told once

struct Shown {
    ParameterBlock block;
    Model model;
};

struct Dialog {
    int id;
    HWND window;
    FormState state;
};

SIZE extentOf(HWND control, const std::string& text)
{
    HDC device = GetDC(control);
    HGDIOBJ before = SelectObject(device, reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
    std::wstring wide = widen(text);
    SIZE extent;
    GetTextExtentPoint32W(device, wide.c_str(), static_cast<int>(wide.size()), &extent);
    SelectObject(device, before);
    ReleaseDC(control, device);
    return extent;
}

std::wstring className(HWND control)
{
    wchar_t name[64] = {};
    GetClassNameW(control, name, 64);
    return name;
}

int takenFromText(HWND control)
{
    std::wstring kind = className(control);
    LONG style = GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK;
    if (kind == L"Static")
        return 0;
    if (kind == L"ComboBox")
        return borderWidth + GetSystemMetrics(SM_CXVSCROLL);
    return kind == L"Button" && (style == BS_AUTOCHECKBOX || style == BS_AUTORADIOBUTTON) ? markWidth : borderWidth;
}

void tell(const Dialog& dialog, HWND control, const std::string& text, int taken = 0)
{
    RECT place;
    GetWindowRect(control, &place);
    MapWindowPoints(nullptr, dialog.window, reinterpret_cast<POINT*>(&place), 2);
    char line[512];
    snprintf(line, sizeof line,
             R"({"dialog":%d,"id":%d,"class":"%s","text":"%s","needs":%ld,"has":%ld,"rect":[%ld,%ld,%ld,%ld]})",
             dialog.id, GetDlgCtrlID(control), narrow(className(control)).c_str(), text.c_str(),
             extentOf(control, text).cx, place.right - place.left - takenFromText(control) - taken, place.left,
             place.top, place.right, place.bottom);
    if (lines.insert(line).second)
        puts(line);
}

void tellRow(const Dialog& dialog, const Row& row)
{
    HWND control = GetDlgItem(dialog.window, row.id);
    if (row.id == 0 || !isPresent(dialog.state, row))
        return;
    std::vector<std::string> labels = rowLabels(dialog.state, row);
    for (size_t i = 0; i < labels.size(); ++i)
        if (row.kind == RowKind::choice || row.kind == RowKind::radio)
            tell(dialog, row.kind == RowKind::radio ? GetDlgItem(dialog.window, row.radioIds[i]) : control, labels[i]);
    RECT spin = {};
    GetClientRect(GetDlgItem(dialog.window, row.spin), &spin);
    if (isNumber(row) || row.kind == RowKind::label)
        tell(dialog, control, rowText(dialog.state, row), static_cast<int>(spin.right));
}

void tellRows(const Dialog& dialog)
{
    for (const Row& row : dialog.state.form->rows)
        tellRow(dialog, row);
}

int choicesOf(const FormState& state, const Row& row)
{
    if (row.kind == RowKind::check)
        return 2;
    bool listed = row.kind == RowKind::choice || row.kind == RowKind::radio;
    return listed ? static_cast<int>(rowLabels(state, row).size()) : 0;
}

void tellForm(Dialog& dialog, const Form& form, const Shown& shown)
{
    openForm(dialog.state, form, shown.block, shown.block, shown.model);
    if (form.confirm != nullptr)
        tell(dialog, GetDlgItem(dialog.window, IDOK), form.confirm);
    tellRows(dialog);
    for (const Row& row : form.rows)
        if (isNumber(row) && isPresent(dialog.state, row))
            showValue(dialog.state, row, row.most);
    tellRows(dialog);
    for (const Row& row : form.rows)
        for (int value = 0; value < choicesOf(dialog.state, row); ++value) {
            choose(dialog.state, row, value);
            tellRows(dialog);
        }
}

std::string textOf(HWND control)
{
    wchar_t text[256] = {};
    GetWindowTextW(control, text, 256);
    return narrow(text);
}

bool isOutOfSight(HWND control)
{
    RECT area;
    GetClientRect(control, &area);
    return area.right == 0;
}

// By which a screen reader calls an entry: the text before it, where that is not the unit of an entry before. A text
// that the form computes is told by its number.
std::string nameOf(HWND control)
{
    HWND label = GetWindow(control, GW_HWNDPREV);
    bool unit = className(GetWindow(label, GW_HWNDPREV)) == UPDOWN_CLASSW && !isOutOfSight(label);
    if (className(label) != L"Static" || unit)
        return {};
    std::string text = textOf(label);
    return text.empty() && GetDlgCtrlID(label) > 0 ? std::to_string(GetDlgCtrlID(label)) : text;
}

BOOL CALLBACK tellControl(HWND control, LPARAM about)
{
    const Dialog& dialog = *reinterpret_cast<const Dialog*>(about);
    if (!isOutOfSight(control))
        tell(dialog, control, textOf(control));
    bool entered = className(control) == L"Edit" || className(control) == L"ComboBox";
    if (entered && (GetWindowLongW(control, GWL_STYLE) & WS_TABSTOP) != 0)
        printf("{\"dialog\":%d,\"id\":%d,\"name\":\"%s\"}\n", dialog.id, GetDlgCtrlID(control),
               nameOf(control).c_str());
    return TRUE;
}

INT_PTR CALLBACK leaveAll(HWND, UINT, WPARAM, LPARAM)
{
    return FALSE;
}

BOOL CALLBACK tellTemplate(HMODULE program, LPCWSTR, LPWSTR name, LONG_PTR shown)
{
    int id = static_cast<int>(reinterpret_cast<UINT_PTR>(name));
    HWND owner = CreateWindowExW(0, L"Static", L"", WS_OVERLAPPED, 0, 0, 600, 600, nullptr, nullptr, nullptr, nullptr);
    Dialog dialog = {id, CreateDialogParamW(program, name, owner, leaveAll, 0), {}};
    EnumChildWindows(dialog.window, tellControl, reinterpret_cast<LPARAM>(&dialog));
    if (const Form* form = findForm(id))
        tellForm(dialog, *form, *reinterpret_cast<const Shown*>(shown));
    DestroyWindow(owner);
    return TRUE;
}

// The font that draws the buttons of a window, or what stands in for it.
void tellSymbolFont()
{
    HFONT font = CreateFontW(12, 0, 0, 0, 0, FALSE, FALSE, FALSE, SYMBOL_CHARSET, 0, 0, 0, 0, L"Marlett");
    HDC device = GetDC(nullptr);
    SelectObject(device, font);
    wchar_t face[LF_FACESIZE] = {};
    GetTextFaceW(device, LF_FACESIZE, face);
    printf(R"({"symbols":"%s"})"
           "\n",
           narrow(face).c_str());
}

} // namespace

int main()
{
    tellSymbolFont();
    Shown shown;
    setDefaults(shown.block);
    shown.model = modelOf(shown.block);
    INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_UPDOWN_CLASS};
    InitCommonControlsEx(&classes);
    HMODULE program = LoadLibraryExW(L"Torvane.exe", nullptr, LOAD_LIBRARY_AS_DATAFILE);
    EnumResourceNamesW(program, reinterpret_cast<LPCWSTR>(RT_DIALOG), tellTemplate, reinterpret_cast<LONG_PTR>(&shown));
}
