#include "plot/ground.h"

#include "plot/palette.h"

namespace torvane {

namespace {

constexpr int partsOf(Colour colour, int shift)
{
    return static_cast<int>(colour >> shift & 0xFF);
}

// By how the eye weighs red, green and blue; 0 to 255.
int brightness(Colour colour)
{
    return (299 * partsOf(colour, 0) + 587 * partsOf(colour, 8) + 114 * partsOf(colour, 16)) / 1000;
}

// So many percent of the way from one colour to the other.
Colour between(Colour from, Colour to, int percent)
{
    Colour mixed = 0;
    for (int shift : {0, 8, 16}) {
        int part = partsOf(from, shift) + (partsOf(to, shift) - partsOf(from, shift)) * percent / 100;
        mixed |= static_cast<Colour>(part) << shift;
    }
    return mixed;
}

} // namespace

bool Ground::isDark() const
{
    return brightness(ground) < 128;
}

Ground groundOf(Colour ground, Colour ink)
{
    Ground made = {ground, ink};
    int faintness = made.isDark() ? 40 : 60; // percent; 60 is the plain grey of black on white
    made.faint = between(ink, ground, faintness);
    return made;
}

Colour colourOn(const Ground& ground, Colour colour)
{
    constexpr int lighter = 50; // percent, of what belongs to no palette
    if (colour == colourBlack)
        return ground.ink;
    if (colour == colourGrey)
        return ground.faint;
    if (colour == groundColour.light)
        return ground.ground;
    if (!ground.isDark())
        return colour;
    for (const ThemeColour& theme : themeColours)
        if (theme.light == colour)
            return theme.dark;
    return between(colour, 0xFFFFFF, lighter);
}

} // namespace torvane
