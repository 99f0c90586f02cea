#include "cli/json.h"

#include "core/text.h"

#include <cmath>

namespace torvane {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

// Length of the UTF-8 sequence at the start of a text; 0 where there is none.
size_t sequenceLength(std::string_view text)
{
    auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    unsigned char lead = byte(0);
    size_t length = lead < 0x80 ? 1 : lead >= 0xC2 && lead < 0xE0 ? 2 : (lead & 0xF0) == 0xE0 ? 3 : 0;
    if (lead >= 0xF0 && lead < 0xF5)
        length = 4;
    if (length == 0 || length > text.size())
        return 0;
    for (size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    bool overlong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xF0 && byte(1) < 0x90);
    bool beyond = (lead == 0xED && byte(1) >= 0xA0) || (lead == 0xF4 && byte(1) >= 0x90);
    return overlong || beyond ? 0 : length;
}

void appendEscaped(std::string& json, char c)
{
    switch (c) {
    case '"':
        json += "\\\"";
        break;
    case '\\':
        json += "\\\\";
        break;
    case '\n':
        json += "\\n";
        break;
    case '\t':
        json += "\\t";
        break;
    default:
        if (static_cast<unsigned char>(c) < 0x20)
            appendFormat(json, "\\u%04x", static_cast<unsigned>(static_cast<unsigned char>(c)));
        else
            json += c;
    }
}

} // namespace

std::string jsonString(std::string_view text)
{
    std::string json = "\"";
    while (!text.empty()) {
        size_t length = sequenceLength(text);
        if (length == 1)
            appendEscaped(json, text[0]);
        else
            json += length == 0 ? replacement : text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return json + "\"";
}

std::string jsonNumber(double value)
{
    if (!std::isfinite(value))
        return "null";
    return formatText("%.12g", value);
}

void JsonList::element(std::string_view json)
{
    if (!empty)
        text += ", ";
    empty = false;
    text += json;
}

void JsonList::member(std::string_view key, std::string_view json)
{
    element(jsonString(key) + ": " + std::string(json));
}

std::string JsonList::close()
{
    return text += text[0] == '{' ? '}' : ']';
}

} // namespace torvane
