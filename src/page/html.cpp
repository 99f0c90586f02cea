#include "page/html.h"

#include "core/shown_text.h"

#include <bit>
#include <cstdint>

namespace torvane {

namespace {

const char* markup(char c)
{
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return nullptr;
    }
}

} // namespace

std::string htmlText(std::string_view text)
{
    std::string html;
    for (char c : shownText(text)) {
        if (const char* escape = markup(c))
            html += escape;
        else
            html += c;
    }
    return html;
}

std::string base64Floats(std::span<const double> values)
{
    constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((values.size() * 4 + 2) / 3 * 4);
    uint32_t bits = 0;
    int held = 0; // bytes
    auto put = [&](int sixes) {
        for (int i = 0; i < sixes; ++i)
            text += digits[bits >> (18 - 6 * i) & 63];
        text.append(static_cast<size_t>(4 - sixes), '=');
        bits = 0;
        held = 0;
    };
    for (double value : values) {
        uint32_t word = std::bit_cast<uint32_t>(static_cast<float>(value));
        for (int byte = 0; byte < 4; ++byte) {
            bits |= (word >> (8 * byte) & 0xFF) << (16 - 8 * held);
            if (++held == 3)
                put(4);
        }
    }
    if (held != 0)
        put(held + 1);
    return text;
}

} // namespace torvane
