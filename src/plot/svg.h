// A picture as SVG text: the same lines, boxes and texts that a window paints.
#pragma once

#include "plot/picture.h"

#include <string>

namespace torvane {

std::string svgText(const Picture& picture);

} // namespace torvane
