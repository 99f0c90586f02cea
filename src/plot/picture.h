// A picture as a list of lines, boxes and texts in pixels, in the order in which they are to be painted. A front end
// paints it, svg.h writes it.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace torvane {

// 0xBBGGRR, as Windows' COLORREF.
using Colour = uint32_t;

constexpr Colour colourBlack = 0x000000;
constexpr Colour colourGrey = 0x999999;
constexpr Colour colourBar = 0xCCCCCC;
constexpr Colour colourTag = 0xCC3333;    // blue
constexpr Colour colourPicked = 0x0000FF; // red
constexpr Colour colourVector = 0x0000CC; // dark red

struct Pixel {
    int x, y;
    bool operator==(const Pixel&) const = default;
};

// Moves to the first point and connects every other one. At least two points.
struct PictureLine {
    std::vector<Pixel> points;
    int width;
    Colour colour;
};

// Filled, without a border; right and bottom are outside.
struct PictureBox {
    int left, top, right, bottom;
    Colour fill;
};

// A line of text is higher than its letters are large (their em), and where the letters stand on it.
constexpr double emOfHeight = 0.87;
constexpr double baseOfHeight = 0.8;

// "Arial"; at is the left top corner of the first character.
struct PictureText {
    Pixel at;
    std::string text; // UTF-8
    int height;       // of the line, pixels
    Colour colour;
    bool emphasized; // italic and underlined
};

using PictureItem = std::variant<PictureLine, PictureBox, PictureText>;

struct Picture {
    int width, height; // the ground is white
    std::vector<PictureItem> items;
    int perPixel = 1; // units of all lengths here in a pixel
};

} // namespace torvane
