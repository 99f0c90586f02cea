// Paints pictures, and the font of their letters.
#pragma once

#include "plot/picture.h"
#include "ui/win32.h"

namespace torvane {

// To be deleted by whoever asked for it.
HFONT createGraphFont(int height, bool emphasized);

// What the picture holds; the ground is there already.
void paintPicture(HDC device, const Picture& picture);

} // namespace torvane
