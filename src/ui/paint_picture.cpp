// By GDI.
#include "ui/paint_picture.h"

#include "core/wide_text.h"

#include <string>
#include <variant>
#include <vector>

namespace torvane {

namespace {

struct Painter {
    HDC device;
    const Ground& ground;

    void operator()(const PictureLine& line) const
    {
        GdiObject pen(CreatePen(PS_SOLID, line.width, colourOn(ground, line.colour)));
        HGDIOBJ before = SelectObject(device, pen);
        std::vector<POINT> points;
        points.reserve(line.points.size());
        for (const Pixel& point : line.points)
            points.push_back({point.x, point.y});
        Polyline(device, points.data(), static_cast<int>(points.size()));
        SelectObject(device, before);
    }

    void operator()(const PictureBox& box) const
    {
        GdiObject brush(CreateSolidBrush(colourOn(ground, box.fill)));
        RECT place = {box.left, box.top, box.right, box.bottom};
        FillRect(device, &place, brush);
    }

    void operator()(const PictureText& text) const
    {
        GdiObject font = createGraphFont(text.height, text.emphasized);
        HGDIOBJ before = SelectObject(device, font);
        SetTextColor(device, colourOn(ground, text.colour));
        std::wstring wide = widen(text.text);
        TextOutW(device, text.at.x, text.at.y, wide.c_str(), static_cast<int>(wide.size()));
        SelectObject(device, before);
    }
};

// Units of the picture onto pixels of the place.
void scaleTo(HDC device, const Picture& picture, const RECT& place)
{
    SetMapMode(device, MM_ANISOTROPIC);
    SetWindowExtEx(device, picture.width, picture.height, nullptr);
    SetViewportExtEx(device, place.right - place.left, place.bottom - place.top, nullptr);
    SetViewportOrgEx(device, place.left, place.top, nullptr);
}

} // namespace

GdiObject<HFONT> createGraphFont(int height, bool emphasized)
{
    return GdiObject(CreateFontW(height, 0, 0, 0, FW_NORMAL, emphasized, emphasized, FALSE, DEFAULT_CHARSET,
                                 OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, VARIABLE_PITCH | FF_SWISS,
                                 L"Arial"));
}

Ground systemGround()
{
    Ground ground = groundOf(GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT));
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof contrast;
    if (SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) &&
        (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0)
        ground.faint = GetSysColor(COLOR_HOTLIGHT); // lighter letters would be against its purpose
    return ground;
}

void paintPicture(HDC device, const Picture& picture, const RECT& place, const Ground& ground)
{
    if (picture.width <= 0 || picture.height <= 0)
        return;
    int saved = SaveDC(device);
    scaleTo(device, picture, place);
    SetBkMode(device, TRANSPARENT);
    for (const PictureItem& item : picture.items)
        std::visit(Painter{device, ground}, item);
    RestoreDC(device, saved);
}

} // namespace torvane
