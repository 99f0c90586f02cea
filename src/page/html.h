// Text and numbers on their way into HTML.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace torvane {

// Fit for an element and for an attribute in double quotes; nothing in it is markup, and nothing steers who reads it.
std::string htmlText(std::string_view text);

// The numbers as 32-bit floats, little-endian, in base64.
std::string base64Floats(std::span<const double> values);

} // namespace torvane
