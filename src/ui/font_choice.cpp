// A character format to the font dialog and back.
#include "ui/font_choice.h"

#include "ui/display.h"
#include "ui/gdi_object.h"
#include "ui/main_window.h"
#include "ui/pane_fill.h"
#include "ui/screen_set.h"

#include <cwchar>

namespace torvane {

namespace {

constexpr int twipsPerInch = 1440;
constexpr int twipsPerTenthPoint = 2;

CHARFORMATW selectedFormat(HWND pane)
{
    CHARFORMATW format = {};
    format.cbSize = sizeof format;
    format.dwMask = defaultCharMask;
    SendMessageW(pane, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    return format;
}

DWORD effectsOf(const LOGFONTW& font)
{
    return (font.lfWeight >= FW_BOLD ? CFE_BOLD : 0) | (font.lfItalic ? CFE_ITALIC : 0) |
           (font.lfUnderline ? CFE_UNDERLINE : 0) | (font.lfStrikeOut ? CFE_STRIKEOUT : 0);
}

CHARFORMATW toFormat(const CHOOSEFONTW& choice)
{
    const LOGFONTW& font = *choice.lpLogFont;
    CHARFORMATW format = {};
    format.cbSize = sizeof format;
    format.dwMask = defaultCharMask;
    format.dwEffects = effectsOf(font) | (choice.rgbColors == GetSysColor(COLOR_WINDOWTEXT) ? CFE_AUTOCOLOR : 0);
    format.yHeight = choice.iPointSize * twipsPerTenthPoint;
    format.crTextColor = choice.rgbColors;
    format.bCharSet = font.lfCharSet;
    format.bPitchAndFamily = font.lfPitchAndFamily;
    wcsncpy(format.szFaceName, font.lfFaceName, LF_FACESIZE - 1);
    return format;
}

// The dialog opens on the first font of its list, often one of symbols, where it does not find the name: a font that is
// not installed gets the name of the one that stands in for it.
void takeRealName(LOGFONTW& font)
{
    HDC screen = GetDC(nullptr);
    GdiObject made(CreateFontIndirectW(&font));
    HGDIOBJ before = SelectObject(screen, made);
    GetTextFaceW(screen, LF_FACESIZE, font.lfFaceName);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
}

bool applyChoice(HWND pane, FontScope scope)
{
    CHARFORMATW format = selectedFormat(pane);
    LOGFONTW font = toLogicalFont(format, displayDots());
    takeRealName(font);
    CHOOSEFONTW choice = {};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = mainWindow.window;
    choice.lpLogFont = &font;
    choice.rgbColors = format.dwEffects & CFE_AUTOCOLOR ? GetSysColor(COLOR_WINDOWTEXT) : format.crTextColor;
    choice.Flags = CF_SCREENFONTS | CF_EFFECTS | CF_INITTOLOGFONTSTRUCT;
    if (!ChooseFontW(&choice))
        return true;
    format = toFormat(choice);
    if (scope == FontScope::selection)
        keepFormats(pane);
    WPARAM range = scope == FontScope::selection ? SCF_SELECTION : SCF_ALL;
    return SendMessageW(pane, EM_SETCHARFORMAT, range, reinterpret_cast<LPARAM>(&format)) != 0;
}

} // namespace

LOGFONTW toLogicalFont(const CHARFORMATW& format, int pixelsPerInch)
{
    LOGFONTW font = {};
    font.lfHeight = MulDiv(format.yHeight, pixelsPerInch, -twipsPerInch);
    font.lfWeight = format.dwEffects & CFE_BOLD ? FW_BOLD : FW_NORMAL;
    font.lfItalic = (format.dwEffects & CFE_ITALIC) != 0;
    font.lfUnderline = (format.dwEffects & CFE_UNDERLINE) != 0;
    font.lfStrikeOut = (format.dwEffects & CFE_STRIKEOUT) != 0;
    font.lfCharSet = format.bCharSet;
    font.lfPitchAndFamily = format.bPitchAndFamily;
    wcsncpy(font.lfFaceName, format.szFaceName, LF_FACESIZE - 1);
    return font;
}

bool chooseScreenFont(HWND pane, FontScope scope)
{
    bool applied = applyChoice(pane, scope);
    SetFocus(pane);
    return applied;
}

} // namespace torvane
