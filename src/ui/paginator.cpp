// Lines are measured with the printer's own metrics, so that what fits here fits on the paper.
#include "ui/paginator.h"

#include "ui/font_choice.h"
#include "ui/screen_files.h"
#include "ui/screen_set.h"

#include <algorithm>
#include <cwchar>

namespace torvane {

namespace {

constexpr int twipsPerInch = 1440;
constexpr int tabTwips = 720; // the control's own stops: every half inch

// Format of the first character, which stands for all of them; the selection stays where it is.
CHARFORMATW formatOf(HWND pane)
{
    CHARRANGE selected;
    CHARRANGE first = {0, 1};
    SendMessageW(pane, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    SendMessageW(pane, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&first));
    CHARFORMATW format = {};
    format.cbSize = sizeof format;
    format.dwMask = defaultCharMask;
    SendMessageW(pane, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    SendMessageW(pane, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&selected));
    return format;
}

HFONT createPrinterFont(const CHARFORMATW& format, HDC printer)
{
    LOGFONTW font = toLogicalFont(format, GetDeviceCaps(printer, LOGPIXELSY));
    return CreateFontIndirectW(&font);
}

int widthOf(HDC printer, std::wstring_view line, int tabWidth)
{
    DWORD extent = GetTabbedTextExtentW(printer, line.data(), static_cast<int>(line.size()), 1, &tabWidth);
    return LOWORD(extent);
}

// Characters of the longest beginning that fits, at least one.
size_t fittingLength(HDC printer, std::wstring_view line, int tabWidth, int width)
{
    size_t fits = 1;
    size_t tooLong = line.size() + 1;
    while (tooLong - fits > 1) {
        size_t middle = fits + (tooLong - fits) / 2;
        (widthOf(printer, line.substr(0, middle), tabWidth) <= width ? fits : tooLong) = middle;
    }
    return fits;
}

// Where to break a line that does not fit whole: behind the last blank or tab, if there is one.
size_t breakLength(std::wstring_view line, size_t fits)
{
    if (fits >= line.size())
        return line.size();
    size_t blank = line.substr(0, fits).find_last_of(L" \t");
    return blank == line.npos || blank == 0 ? fits : blank + 1;
}

void breakParagraph(PaneLayout& layout, HDC printer, std::wstring_view paragraph, int width)
{
    do {
        size_t fits = paragraph.empty() ? 0 : fittingLength(printer, paragraph, layout.tabWidth, width);
        size_t length = breakLength(paragraph, fits);
        layout.lines.push_back(paragraph.substr(0, length));
        paragraph.remove_prefix(length);
    } while (!paragraph.empty());
}

void breakText(PaneLayout& layout, HDC printer, int width)
{
    std::wstring_view rest = layout.text;
    while (!rest.empty()) {
        size_t end = std::min(rest.find_first_of(L"\r\n"), rest.size());
        breakParagraph(layout, printer, rest.substr(0, end), width);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
}

} // namespace

int PaneLayout::pageCount() const
{
    return (static_cast<int>(lines.size()) + linesPerPage - 1) / linesPerPage;
}

PaneLayout layOutPane(HWND pane, HDC printer, int margin)
{
    PaneLayout layout;
    CHARFORMATW format = formatOf(pane);
    layout.text = paneText(pane);
    layout.font = GdiObject(createPrinterFont(format, printer));
    layout.colour = format.dwEffects & CFE_AUTOCOLOR ? 0 : format.crTextColor;
    int across = GetDeviceCaps(printer, LOGPIXELSX);
    int down = GetDeviceCaps(printer, LOGPIXELSY);
    layout.left = MulDiv(margin, across, twipsPerInch);
    layout.top = MulDiv(margin, down, twipsPerInch);
    layout.tabWidth = MulDiv(tabTwips, across, twipsPerInch);

    HGDIOBJ before = SelectObject(printer, layout.font);
    TEXTMETRICW metrics;
    GetTextMetricsW(printer, &metrics);
    layout.lineHeight = std::max(1, static_cast<int>(metrics.tmHeight + metrics.tmExternalLeading));
    layout.linesPerPage = std::max(1, (GetDeviceCaps(printer, VERTRES) - 2 * layout.top) / layout.lineHeight);
    breakText(layout, printer, std::max(1, GetDeviceCaps(printer, HORZRES) - 2 * layout.left));
    SelectObject(printer, before);
    return layout;
}

void drawPage(const PaneLayout& layout, HDC printer, int page)
{
    HGDIOBJ before = SelectObject(printer, layout.font);
    SetTextColor(printer, layout.colour);
    SetBkMode(printer, TRANSPARENT);
    size_t first = static_cast<size_t>(page - 1) * static_cast<size_t>(layout.linesPerPage);
    size_t end = std::min(first + static_cast<size_t>(layout.linesPerPage), layout.lines.size());
    int y = layout.top;
    for (size_t i = first; i < end; ++i, y += layout.lineHeight) {
        std::wstring_view line = layout.lines[i];
        TabbedTextOutW(printer, layout.left, y, line.data(), static_cast<int>(line.size()), 1, &layout.tabWidth,
                       layout.left);
    }
    SetTextColor(printer, 0);
    SelectObject(printer, before);
}

} // namespace torvane
