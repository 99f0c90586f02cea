#include "plot/text_width.h"

#include <cstddef>
#include <cstdint>

namespace torvane {

namespace {

// Thousandths of an em, from the blank to "~".
constexpr uint16_t widths[] = {
    278,  278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333, 278, 278, // blank to /
    556,  556, 556, 556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, // 0 to ?
    1015, 667, 667, 722, 722, 667, 611, 778, 722, 278, 500, 667, 556, 833, 722, 778, // @ to O
    667,  778, 722, 667, 611, 722, 667, 944, 667, 667, 611, 278, 278, 278, 469, 556, // P to _
    333,  556, 556, 500, 556, 556, 278, 556, 556, 222, 222, 500, 222, 833, 556, 556, // ` to o
    556,  556, 333, 500, 278, 556, 500, 722, 500, 500, 500, 334, 260, 334, 584,      // p to ~
};
constexpr uint16_t other = 1000;

bool continues(unsigned char c)
{
    return (c & 0xC0) == 0x80;
}

} // namespace

double textWidth(std::string_view text)
{
    unsigned sum = 0;
    for (unsigned char c : text)
        if (c >= ' ' && c <= '~')
            sum += widths[c - ' '];
        else if (!continues(c))
            sum += other;
    return sum / 1000.0;
}

} // namespace torvane
