#include "plot/svg.h"

#include "core/text.h"
#include "plot/palette.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

namespace torvane {

namespace {

// Windows keeps red in the low byte, SVG writes it first.
std::string colourText(Colour colour)
{
    return formatText("#%02x%02x%02x", colour & 0xFF, colour >> 8 & 0xFF, colour >> 16 & 0xFF);
}

struct SvgWriter {
    std::string& svg;
    SvgGround ground;

    // An attribute; where the reader may prefer a dark ground, a class beside it that the style sheet knows.
    std::string paint(const char* attribute, Colour colour) const
    {
        const ThemeColour* theme = std::ranges::find(themeColours, colour, &ThemeColour::light);
        if (theme == std::end(themeColours) || ground == SvgGround::light)
            return formatText("%s=\"%s\"", attribute, colourText(colour).c_str());
        if (ground == SvgGround::dark)
            return formatText("%s=\"%s\"", attribute, colourText(theme->dark).c_str());
        return formatText("%s=\"%s\" class=\"%c%d\"", attribute, colourText(colour).c_str(), *attribute,
                          static_cast<int>(theme - std::begin(themeColours)));
    }

    void operator()(const PictureLine& line) const
    {
        svg += "<polyline fill=\"none\" points=\"";
        for (const Pixel& point : line.points)
            appendFormat(svg, "%d,%d ", point.x, point.y);
        svg.pop_back();
        appendFormat(svg, "\" %s stroke-width=\"%d\"/>\n", paint("stroke", line.colour).c_str(), line.width);
    }

    // A box drawn from right to left is the same box.
    void operator()(const PictureBox& box) const
    {
        int left = std::min(box.left, box.right);
        int top = std::min(box.top, box.bottom);
        appendFormat(svg, "<rect x=\"%d\" y=\"%d\" width=\"%d\" height=\"%d\" %s/>\n", left, top,
                     std::abs(box.right - box.left), std::abs(box.bottom - box.top), paint("fill", box.fill).c_str());
    }

    void operator()(const PictureText& text) const
    {
        appendFormat(svg, "<text x=\"%d\" y=\"%d\" font-size=\"%.2f\" %s%s>", text.at.x,
                     text.at.y + static_cast<int>(std::lround(text.height * baseOfHeight)), text.height * emOfHeight,
                     paint("fill", text.colour).c_str(),
                     text.emphasized ? " font-style=\"italic\" text-decoration=\"underline\"" : "");
        svg += xmlEscaped(text.text) + "</text>\n";
    }
};

} // namespace

std::string themeStyle()
{
    std::string style = "@media (prefers-color-scheme: dark) {";
    for (size_t i = 0; i < std::size(themeColours); ++i) {
        std::string dark = colourText(themeColours[i].dark);
        appendFormat(style, " .f%zu { fill: %s } .s%zu { stroke: %s }", i, dark.c_str(), i, dark.c_str());
    }
    return style + " }";
}

std::string svgText(const Picture& picture, SvgGround ground)
{
    int w = picture.width;
    int h = picture.height;
    std::string svg =
        formatText("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%d\" height=\"%d\" "
                   "viewBox=\"0 0 %d %d\" font-family=\"Arial, 'Liberation Sans', Helvetica, sans-serif\" "
                   "stroke-linejoin=\"round\">\n",
                   w / picture.perPixel, h / picture.perPixel, w, h);
    if (ground == SvgGround::preferred)
        svg += "<style>" + themeStyle() + "</style>\n";
    SvgWriter writer{svg, ground};
    writer(PictureBox{0, 0, w, h, groundColour.light});
    for (const PictureItem& item : picture.items)
        std::visit(writer, item);
    return svg + "</svg>\n";
}

} // namespace torvane
