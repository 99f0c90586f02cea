// A picture as SVG text: the same lines, boxes and texts that a window paints. On a light ground, on a dark one, or as
// whoever shows it prefers; colours that are not of the palette are the same everywhere.
#pragma once

#include "plot/picture.h"

#include <string>

namespace torvane {

enum class SvgGround { light, dark, preferred };

std::string svgText(const Picture& picture, SvgGround ground = SvgGround::light);

} // namespace torvane
