// Colours of charts, each for a light and for a dark ground. A picture names the light one; whoever paints it on a dark
// ground takes the other. On their grounds letters and curves have a contrast of at least 4.5 to 1.
#pragma once

#include "plot/picture.h"

#include <cstddef>
#include <iterator>

namespace torvane {

// Red, green, blue as one reads them, into the order of a Colour.
constexpr Colour rgb(uint32_t value)
{
    return (value & 0xFF) << 16 | (value & 0xFF00) | value >> 16;
}

struct ThemeColour {
    Colour light, dark;
};

constexpr ThemeColour themeColours[] = {
    {rgb(0xFFFFFF), rgb(0x15181D)}, // ground
    {rgb(0x1F2328), rgb(0xE6E8EB)}, // letters and the lines through zero
    {rgb(0xDDE1E6), rgb(0x353B44)}, // grid
    {rgb(0x0B5CAD), rgb(0x6CB6FF)}, // and curves
    {rgb(0xB1460A), rgb(0xF0A35E)}, {rgb(0x187A3B), rgb(0x6BD98B)}, {rgb(0x8A2BC2), rgb(0xCFA5FF)},
    {rgb(0xB3202C), rgb(0xFF8F87)}, {rgb(0x0C6E77), rgb(0x5FD4D6)}, {rgb(0x6B5B00), rgb(0xD9C84A)},
    {rgb(0x5A6472), rgb(0xA9B4C2)},
};
constexpr ThemeColour groundColour = themeColours[0];
constexpr ThemeColour inkColour = themeColours[1];
constexpr ThemeColour gridColour = themeColours[2];

constexpr const ThemeColour& curveColour(size_t curve)
{
    constexpr size_t first = 3;
    return themeColours[first + curve % (std::size(themeColours) - first)];
}

} // namespace torvane
