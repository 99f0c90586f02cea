// Text from outside, such as the name of a file, on its way to a terminal or into a report: nothing of it may steer
// what shows it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace torvane {

struct Character {
    size_t length = 0; // bytes of UTF-8; 0: the text does not begin with any
    char32_t point = 0;
};
// The first character of a text that is not empty.
Character firstCharacter(std::string_view text);

// Whether a character is obeyed instead of seen: controls, the start of an escape sequence, the ends of lines, marks
// that turn the direction of writing.
bool isSteering(char32_t point);

// A text of one line with "?" for every character that steers and every byte that is no UTF-8.
std::string shownText(std::string_view text);

} // namespace torvane
