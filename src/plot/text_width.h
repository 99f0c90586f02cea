// How wide letters are, for whoever places them without a device to ask: the widths of "Arial" and of what takes its
// place elsewhere, "Liberation Sans" and "Helvetica".
#pragma once

#include <string_view>

namespace torvane {

// Width of a UTF-8 text, in sizes of the font (its em). Letters beyond ASCII count as wide as the widest common one, so
// that no text is wider than it is told.
double textWidth(std::string_view text);

} // namespace torvane
