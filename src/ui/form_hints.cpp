// Asked for when it is due, since rows that are present by turns share a control.
#include "ui/form_hints.h"

#include "core/wide_text.h"
#include "forms/entry_meanings.h"
#include "ui/main_window.h"

namespace torvane {

namespace {

constexpr LPARAM widestHint = 360; // pixels
constexpr LPARAM shownFor = 20000; // ms

bool hasMeaning(const Form& form, const Row& row)
{
    return row.name != nullptr && *meaningOf(form, row.name) != '\0';
}

void addTool(const FormWindow& form, HWND hints, int id)
{
    HWND control = GetDlgItem(form.window, id);
    if (id == 0 || control == nullptr)
        return;
    TTTOOLINFOW tool = {};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS | TTF_TRANSPARENT; // a click goes to what lies below the hint
    tool.hwnd = form.window;
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = LPSTR_TEXTCALLBACKW;
    SendMessageW(hints, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

} // namespace

void attachHints(const FormWindow& form)
{
    HWND hints = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0,
                                 0, 0, form.window, nullptr, mainWindow.instance, nullptr);
    SendMessageW(hints, TTM_SETMAXTIPWIDTH, 0, widestHint);
    SendMessageW(hints, TTM_SETDELAYTIME, TTDT_AUTOPOP, shownFor);
    for (const Row& row : form.state.form->rows) {
        if (!hasMeaning(*form.state.form, row))
            continue;
        addTool(form, hints, row.id);
        if (row.browse != Browse::none)
            addTool(form, hints, row.spin);
        for (int id : row.radioIds)
            addTool(form, hints, id);
    }
}

void tellHint(FormWindow& form, NMTTDISPINFOW& asked)
{
    const Row* row = rowOfControl(form, GetDlgCtrlID(reinterpret_cast<HWND>(asked.hdr.idFrom)));
    form.hint = row != nullptr && hasMeaning(*form.state.form, *row) ? widen(meaningOf(*form.state.form, row->name))
                                                                     : std::wstring();
    asked.lpszText = form.hint.data();
}

} // namespace torvane
