// UTF-8, which every text of the program is, to and from the UTF-16 of Windows. Windows only.
#pragma once

#include <string>
#include <string_view>

namespace torvane {

std::wstring widen(std::string_view text);
std::string narrow(std::wstring_view text);

} // namespace torvane
