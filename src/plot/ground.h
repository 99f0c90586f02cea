// The colours of a picture on another ground than white: on the window colour of whoever looks at it, with the colour
// of its letters.
#pragma once

#include "plot/picture.h"

namespace torvane {

struct Ground {
    Colour ground = 0xFFFFFF;
    Colour ink = colourBlack;  // of lines and letters
    Colour faint = colourGrey; // of the second of two

    bool isDark() const;
};

// The ground of a scheme of colours: what is faint lies between ground and letters, unless a scheme of high contrast
// has a colour of its own for it.
Ground groundOf(Colour ground, Colour ink);

// The colour by which one of a picture is painted there. The plain ground leaves all as they are.
Colour colourOn(const Ground& ground, Colour colour);

} // namespace torvane
