// A page opens when its tab is first shown, and is applied only if it was. A page whose values are refused stores
// nothing and keeps none of the others from being applied; the sheet opens again on it, with all that was entered.
#include "ui/form_page.h"

#include "command/help_topics.h"
#include "command/settings_command.h"
#include "core/wide_text.h"
#include "forms/form.h"
#include "ui/form_controls.h"
#include "ui/form_hints.h"
#include "ui/help.h"
#include "ui/main_window.h"
#include "ui/message_box.h"

#include <algorithm>
#include <deque>
#include <string>
#include <vector>

namespace torvane {

namespace {

// What the system is told about a page must outlive the sheet.
struct PageData {
    const Form* form;
    std::wstring title;
    FormWindow window;
    bool first = false;   // the sheet opens on it
    bool applied = false; // when the sheet was closed
    bool refused = false; // then
};

PageData* pageOf(HWND page)
{
    return reinterpret_cast<PageData*>(GetWindowLongPtrW(page, DWLP_USER));
}

INT_PTR onInitDialog(HWND page, LPARAM lParam)
{
    LPARAM data = reinterpret_cast<const PROPSHEETPAGEW*>(lParam)->lParam;
    SetWindowLongPtrW(page, DWLP_USER, data);
    PageData& pageData = *pageOf(page);
    FormWindow& form = pageData.window;
    form.window = page;
    if (form.state.form == nullptr)
        openForm(form.state, *pageData.form, mainWindow.session.saved, mainWindow.session.working,
                 mainWindow.session.model);
    initializeControls(form);
    if (pageData.first)
        focusRefused(form);
    return TRUE;
}

void tellSheet(HWND page)
{
    SendMessageW(GetParent(page), PSM_CHANGED, reinterpret_cast<WPARAM>(page), 0);
}

void markUnmodified(const FormWindow& form)
{
    for (const Row& row : form.state.form->rows)
        SendDlgItemMessageW(form.window, row.id, EM_SETMODIFY, FALSE, 0);
}

// A sheet that stays open turns to the page.
void showRefused(const FormWindow& form)
{
    PostMessageW(GetParent(form.window), PSM_SETCURSELID, 0, form.state.form->id);
    focusRefused(form);
}

LRESULT onApply(PageData& page, bool closes)
{
    FormWindow& form = page.window;
    Verdict verdict = confirmPage(mainWindow.session, form.state);
    showBoxes(form.window, verdict);
    page.applied = closes;
    page.refused = closes && !verdict.passed;
    if (verdict.passed) {
        markUnmodified(form);
        InvalidateRect(mainWindow.window, nullptr, TRUE);
    } else if (!closes) {
        showRefused(form);
    }
    return PSNRET_NOERROR;
}

INT_PTR onNotify(HWND page, LPARAM lParam)
{
    const NMHDR& header = *reinterpret_cast<const NMHDR*>(lParam);
    PageData& pageData = *pageOf(page);
    FormWindow& form = pageData.window;
    switch (header.code) {
    case UDN_DELTAPOS:
        if (handleSpin(form, *reinterpret_cast<const NMUPDOWN*>(lParam)))
            tellSheet(page);
        SetWindowLongPtrW(page, DWLP_MSGRESULT, TRUE);
        return TRUE;
    case TTN_GETDISPINFOW:
        tellHint(form, *reinterpret_cast<NMTTDISPINFOW*>(lParam));
        return TRUE;
    case static_cast<UINT>(PSN_APPLY):
        SetWindowLongPtrW(page, DWLP_MSGRESULT,
                          onApply(pageData, reinterpret_cast<const PSHNOTIFY*>(lParam)->lParam != 0));
        return TRUE;
    case static_cast<UINT>(PSN_RESET):
        cancelForm(form.state, mainWindow.session.working);
        return TRUE;
    default:
        return FALSE;
    }
}

INT_PTR onCommand(HWND page, WPARAM wParam)
{
    if (handleControl(pageOf(page)->window, LOWORD(wParam), HIWORD(wParam)))
        tellSheet(page);
    return TRUE;
}

INT_PTR CALLBACK pageProcedure(HWND page, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_INITDIALOG)
        return onInitDialog(page, lParam);
    if (pageOf(page) == nullptr)
        return FALSE; // notifications of controls that are still being made
    switch (message) {
    case WM_COMMAND:
        return onCommand(page, wParam);
    case WM_NOTIFY:
        return onNotify(page, lParam);
    case WM_HELP:
        showManual(page, manualAnchorOfForm(pageOf(page)->form->id));
        return TRUE;
    default:
        return FALSE;
    }
}

HPROPSHEETPAGE createPage(PageData& data)
{
    PROPSHEETPAGEW page = {};
    page.dwSize = sizeof page;
    page.dwFlags = PSP_USETITLE;
    page.hInstance = mainWindow.instance;
    page.pszTemplate = MAKEINTRESOURCEW(data.form->id);
    page.pszTitle = data.title.c_str();
    page.pfnDlgProc = pageProcedure;
    page.lParam = reinterpret_cast<LPARAM>(&data);
    return CreatePropertySheetPageW(&page);
}

const wchar_t* sheetTitle(Sheet sheet)
{
    switch (sheet) {
    case Sheet::profile:
        return L"profile";
    case Sheet::condition:
        return L"condition";
    default:
        return L"preference";
    }
}

// What was refused before counts also where nobody has turned to its page again.
void applyUnseen(HWND owner, const std::deque<PageData>& data, const std::vector<PageData*>& refused)
{
    if (std::ranges::none_of(data, &PageData::applied))
        return; // cancelled
    for (PageData* page : refused) {
        if (page->window.window != nullptr)
            continue;
        page->window.window = owner; // of the boxes
        onApply(*page, true);
    }
}

// Once, from opening to closing.
void showSheet(HWND owner, Sheet sheet, std::deque<PageData>& data)
{
    std::vector<PageData*> refused;
    std::vector<HPROPSHEETPAGE> pages;
    PROPSHEETHEADERW header = {};
    for (PageData& page : data) {
        page.first = page.refused && refused.empty();
        if (page.first)
            header.nStartPage = static_cast<UINT>(pages.size());
        if (page.refused)
            refused.push_back(&page);
        page.applied = page.refused = false;
        page.window.window = nullptr;
        pages.push_back(createPage(page));
    }
    header.dwSize = sizeof header;
    header.dwFlags = PSH_NOCONTEXTHELP;
    header.hwndParent = owner;
    header.hInstance = mainWindow.instance;
    header.pszCaption = sheetTitle(sheet);
    header.nPages = static_cast<UINT>(pages.size());
    header.phpage = pages.data();
    PropertySheetW(&header);
    applyUnseen(owner, data, refused);
}

} // namespace

void runPropertySheet(HWND owner, Sheet sheet)
{
    std::deque<PageData> data;
    for (const Form* form : sheetPages(sheet))
        data.push_back({form, widen(form->title), {}});
    do
        showSheet(owner, sheet, data);
    while (std::ranges::any_of(data, &PageData::refused));
}

} // namespace torvane
