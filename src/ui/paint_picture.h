// Paints pictures, and the font of their letters.
#pragma once

#include "plot/ground.h"
#include "plot/picture.h"
#include "ui/gdi_object.h"

namespace torvane {

GdiObject<HFONT> createGraphFont(int height, bool emphasized);

// The colours that the user's system has for what is read.
Ground systemGround();

// What the picture holds, as large as the place, on a ground that is there already.
void paintPicture(HDC device, const Picture& picture, const RECT& place, const Ground& ground = {});

} // namespace torvane
