// By GDI.
#include "ui/paint_picture.h"

#include "core/wide_text.h"

#include <span>
#include <string>
#include <variant>

namespace torvane {

namespace {

void paint(HDC device, const PictureLine& line)
{
    GdiObject pen(CreatePen(PS_SOLID, line.width, line.colour));
    HGDIOBJ before = SelectObject(device, pen);
    MoveToEx(device, line.points.front().x, line.points.front().y, nullptr);
    for (const Pixel& point : std::span(line.points).subspan(1))
        LineTo(device, point.x, point.y);
    SelectObject(device, before);
}

void paint(HDC device, const PictureBox& box)
{
    GdiObject brush(CreateSolidBrush(box.fill));
    RECT place = {box.left, box.top, box.right, box.bottom};
    FillRect(device, &place, brush);
}

void paint(HDC device, const PictureText& text)
{
    GdiObject font(createGraphFont(text.height, text.emphasized));
    HGDIOBJ before = SelectObject(device, font);
    SetTextColor(device, text.colour);
    std::wstring wide = widen(text.text);
    TextOutW(device, text.at.x, text.at.y, wide.c_str(), static_cast<int>(wide.size()));
    SelectObject(device, before);
}

} // namespace

HFONT createGraphFont(int height, bool emphasized)
{
    return CreateFontW(height, 0, 0, 0, FW_NORMAL, emphasized, emphasized, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, VARIABLE_PITCH | FF_SWISS, L"Arial");
}

void paintPicture(HDC device, const Picture& picture)
{
    SetBkMode(device, TRANSPARENT);
    for (const PictureItem& item : picture.items)
        std::visit([device](const auto& shape) { paint(device, shape); }, item);
}

} // namespace torvane
