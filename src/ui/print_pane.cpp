// The control lays out and renders a page where it can; where its answer to EM_FORMATRANGE is 0, the paginator does.
#include "ui/print_pane.h"

#include "core/text.h"
#include "core/wide_text.h"
#include "ui/message_box.h"
#include "ui/paginator.h"
#include "ui/pane_fill.h"
#include "ui/screen_files.h"
#include "ui/screen_set.h"

#include <algorithm>
#include <string>

namespace torvane {

namespace {

constexpr int twipsPerInch = 1440;
constexpr int margin = 1440;      // twips, on all four sides
constexpr int pageNumberTop = 40; // device units

int twips(HDC printer, int extent, int resolution)
{
    return MulDiv(GetDeviceCaps(printer, extent), twipsPerInch, GetDeviceCaps(printer, resolution));
}

void freeAnswer(const PRINTDLGW& dialog)
{
    if (dialog.hDevMode != nullptr)
        GlobalFree(dialog.hDevMode);
    if (dialog.hDevNames != nullptr)
        GlobalFree(dialog.hDevNames);
}

void printPageNumber(HDC printer, int page)
{
    std::wstring text = widen(formatText("-- %d --", page));
    TEXTMETRICW metrics;
    GetTextMetricsW(printer, &metrics);
    int length = static_cast<int>(text.size());
    int x = (GetDeviceCaps(printer, HORZRES) - length * static_cast<int>(metrics.tmAveCharWidth)) / 2;
    TextOutW(printer, x, pageNumberTop, text.c_str(), length);
}

FORMATRANGE wholePane(HDC printer, LONG length)
{
    FORMATRANGE range = {};
    range.hdc = range.hdcTarget = printer;
    range.rcPage = {0, 0, twips(printer, HORZRES, LOGPIXELSX), twips(printer, VERTRES, LOGPIXELSY)};
    range.rc = {margin, margin, range.rcPage.right - margin, range.rcPage.bottom - margin};
    range.chrg = {0, length};
    return range;
}

// Position behind the page that starts where the range does.
LONG measurePage(HWND pane, FORMATRANGE range)
{
    return static_cast<LONG>(SendMessageW(pane, EM_FORMATRANGE, FALSE, reinterpret_cast<LPARAM>(&range)));
}

void printByControl(HWND pane, FORMATRANGE range, LONG length)
{
    for (int page = 1; range.chrg.cpMin < length; ++page) {
        LONG next = measurePage(pane, range);
        if (next <= range.chrg.cpMin)
            break;
        StartPage(range.hdc);
        RECT printable = range.rc; // the control changes it
        SendMessageW(pane, EM_DISPLAYBAND, 0, reinterpret_cast<LPARAM>(&printable));
        printPageNumber(range.hdc, page);
        EndPage(range.hdc);
        range.chrg.cpMin = next;
    }
}

void printByPaginator(HWND pane, HDC printer)
{
    PaneLayout layout = layOutPane(pane, printer, margin);
    for (int page = 1; page <= layout.pageCount(); ++page) {
        StartPage(printer);
        drawPage(layout, printer, page);
        printPageNumber(printer, page);
        EndPage(printer);
    }
}

void printDocument(HWND pane, HDC printer)
{
    LONG length = GetWindowTextLengthW(pane);
    FORMATRANGE range = wholePane(printer, length);
    DOCINFOW document = {};
    document.cbSize = sizeof document;
    document.lpszDocName = L"Torvane documents";
    bool controlPrints = length > 0 && measurePage(pane, range) > 0;
    if (StartDocW(printer, &document) <= 0)
        return;
    if (controlPrints)
        printByControl(pane, range, length);
    else if (length > 0)
        printByPaginator(pane, printer);
    SendMessageW(pane, EM_FORMATRANGE, FALSE, 0); // frees the control's cache
    EndDoc(printer);
}

} // namespace

HDC askPrinter(HWND owner, DWORD flags)
{
    PRINTDLGW dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = owner;
    dialog.Flags = flags | PD_RETURNDC;
    dialog.nCopies = 1;
    dialog.nFromPage = dialog.nMinPage = 1;
    dialog.nToPage = dialog.nMaxPage = 65535;
    if (!PrintDlgW(&dialog))
        return nullptr;
    freeAnswer(dialog);
    return dialog.hDC;
}

int setPrintWidth(HWND pane)
{
    HDC printer = askPrinter(nullptr, PD_RETURNDEFAULT);
    if (printer == nullptr)
        return -1;
    int width = twips(printer, HORZRES, LOGPIXELSX) - 2 * margin;
    if (!SendMessageW(pane, EM_SETTARGETDEVICE, reinterpret_cast<WPARAM>(printer), width))
        showMessageBox(GetParent(pane), "error", "failed to set width for rich text format.");
    else
        screenSet.paperWide = true;
    DeleteDC(printer);
    return 0;
}

int printPane(HWND owner, HWND pane)
{
    HDC printer = askPrinter(owner, PD_NOSELECTION | PD_NOPAGENUMS | PD_USEDEVMODECOPIESANDCOLLATE);
    if (printer == nullptr)
        return 1;
    finishFill(pane);
    setPrintWidth(pane);
    printDocument(pane, printer);
    DeleteDC(printer);
    return 1;
}

} // namespace torvane
