#include "core/shown_text.h"

#include <algorithm>

namespace torvane {

namespace {

struct Span {
    char32_t first, last;
};

constexpr Span steering[] = {
    {0x00, 0x1F},     {0x7F, 0x9F},     // controls
    {0x61C, 0x61C},   {0x200E, 0x200F}, // marks of direction
    {0x2028, 0x202E},                   // ends of line and paragraph, embeddings and overrides of direction
    {0x2066, 0x2069},                   // isolates of direction
};

// Length of a sequence by its first byte; 0 for one that cannot stand first.
size_t lengthBy(unsigned char lead)
{
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4)
        return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

// Longer than it needs to be, a half of a pair of UTF-16, or beyond the last character there is.
bool isMisused(char32_t point, size_t length)
{
    return (length == 3 && point < 0x800) || (length == 4 && (point < 0x10000 || point > 0x10FFFF)) ||
           (point >= 0xD800 && point < 0xE000);
}

} // namespace

Character firstCharacter(std::string_view text)
{
    unsigned char lead = static_cast<unsigned char>(text[0]);
    size_t length = lengthBy(lead);
    if (length == 0 || length > text.size())
        return {};
    char32_t point = length == 1 ? lead : lead & (0x7F >> length);
    for (size_t i = 1; i < length; ++i) {
        unsigned char next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0) != 0x80)
            return {};
        point = point << 6 | (next & 0x3F);
    }
    return isMisused(point, length) ? Character() : Character{length, point};
}

bool isSteering(char32_t point)
{
    for (const Span& span : steering)
        if (point >= span.first && point <= span.last)
            return true;
    return false;
}

std::string shownText(std::string_view text)
{
    std::string shown;
    while (!text.empty()) {
        Character first = firstCharacter(text);
        if (first.length == 0 || isSteering(first.point))
            shown += '?';
        else
            shown += text.substr(0, first.length);
        text.remove_prefix(std::max<size_t>(first.length, 1));
    }
    return shown;
}

} // namespace torvane
