#include "core/json.h"

#include "core/shown_text.h"
#include "core/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace torvane {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

void appendEscaped(std::string& json, std::string_view bytes, char32_t point)
{
    if (point == '"' || point == '\\')
        (json += '\\') += bytes;
    else if (point == '\n' || point == '\t')
        json += point == '\n' ? "\\n" : "\\t";
    else if (isSteering(point)) // the same text to a program, and nothing to a terminal
        appendFormat(json, "\\u%04x", static_cast<unsigned>(point));
    else
        json += bytes;
}

} // namespace

std::string jsonString(std::string_view text)
{
    std::string json = "\"";
    while (!text.empty()) {
        Character first = firstCharacter(text);
        if (first.length == 0)
            json += replacement;
        else
            appendEscaped(json, text.substr(0, first.length), first.point);
        text.remove_prefix(std::max<size_t>(first.length, 1));
    }
    return json + "\"";
}

std::string jsonNumber(double value)
{
    if (!std::isfinite(value))
        return "null";
    constexpr int shownDigits = 12;
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, shownDigits).ptr};
}

std::string jsonExact(double value)
{
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, value).ptr};
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
