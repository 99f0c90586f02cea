// Our own page layout of a pane's text, for a control that cannot measure a page: one font, tab stops, line breaks
// where a line is wider than the paper.
#pragma once

#include "ui/gdi_object.h"

#include <string>
#include <string_view>
#include <vector>

namespace torvane {

struct PaneLayout {
    std::wstring text;
    std::vector<std::wstring_view> lines; // into text, as they are printed
    GdiObject<HFONT> font;
    COLORREF colour = 0;
    int left = 0, top = 0; // device units, of the first line
    int lineHeight = 1;
    int tabWidth = 1;
    int linesPerPage = 1;

    int pageCount() const;
};

// Breaks the pane's text into lines for a printer, with a margin in twips on all four sides.
PaneLayout layOutPane(HWND pane, HDC printer, int margin);
// Draws a page, counted from 1.
void drawPage(const PaneLayout& layout, HDC printer, int page);

} // namespace torvane
