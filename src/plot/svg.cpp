#include "plot/svg.h"

#include "core/text.h"

#include <algorithm>
#include <cstdlib>

namespace torvane {

namespace {

// Windows keeps red in the low byte, SVG writes it first.
std::string colourText(Colour colour)
{
    return formatText("#%02x%02x%02x", colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

std::string escaped(const std::string& text)
{
    std::string result;
    for (char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        default:
            result += static_cast<unsigned char>(c) < 0x20 ? ' ' : c; // XML knows no control characters
        }
    }
    return result;
}

struct SvgWriter {
    std::string& svg;

    void operator()(const PictureLine& line) const
    {
        svg += "<polyline fill=\"none\" points=\"";
        for (const Pixel& point : line.points)
            appendFormat(svg, "%d,%d ", point.x, point.y);
        svg.pop_back();
        appendFormat(svg, "\" stroke=\"%s\" stroke-width=\"%d\"/>\n", colourText(line.colour).c_str(), line.width);
    }

    // A box drawn from right to left is the same box.
    void operator()(const PictureBox& box) const
    {
        int left = std::min(box.left, box.right);
        int top = std::min(box.top, box.bottom);
        appendFormat(svg, "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" fill=\"%s\"/>\n", left, top,
                     std::abs(box.right - box.left), std::abs(box.bottom - box.top), colourText(box.fill).c_str());
    }

    // SVG places the base line; in "Arial" it lies four fifths of the height under the top.
    void operator()(const PictureText& text) const
    {
        appendFormat(svg, "<text x=\"%d\" y=\"%d\" font-size=\"%d\" fill=\"%s\"%s>", text.at.x,
                     text.at.y + text.height * 4 / 5, text.height, colourText(text.colour).c_str(),
                     text.emphasized ? " font-style=\"italic\" text-decoration=\"underline\"" : "");
        svg += escaped(text.text) + "</text>\n";
    }
};

} // namespace

std::string svgText(const Picture& picture)
{
    int w = picture.width;
    int h = picture.height;
    std::string svg = formatText("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" "
                                 "viewBox=\"0 0 %d %d\" font-family=\"Arial, Helvetica, sans-serif\">\n"
                                 "<rect width=\"%d\" height=\"%d\" fill=\"#ffffff\"/>\n",
                                 w, h, w, h, w, h);
    for (const PictureItem& item : picture.items)
        std::visit(SvgWriter{svg}, item);
    return svg + "</svg>\n";
}

} // namespace torvane
