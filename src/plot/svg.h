// A picture as SVG text: the same lines, boxes and texts that a window paints. On a light ground, on a dark one, or as
// whoever shows it prefers; colours that are not of the palette are the same everywhere.
#pragma once

#include "plot/picture.h"

#include <string>

namespace torvane {

// `styled` leaves the choice to a document that has themeStyle in its head.
enum class SvgGround { light, dark, preferred, styled };

std::string svgText(const Picture& picture, SvgGround ground = SvgGround::light);

// Rules of a style sheet that give the palette's colours on a dark ground to whoever prefers one.
std::string themeStyle();

} // namespace torvane
