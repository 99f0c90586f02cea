#include "core/json_reader.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace torvane {

namespace {

// What is left of a text.
struct Rest {
    std::string_view text;

    void skipBlanks()
    {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    }
    bool take(char wanted)
    {
        skipBlanks();
        if (text.empty() || text[0] != wanted)
            return false;
        text.remove_prefix(1);
        return true;
    }
};

// Behind the closing quote of a string that begins here; 0 where it has none.
size_t endOfString(std::string_view text)
{
    for (size_t at = 1; at < text.size(); ++at) {
        if (text[at] == '"')
            return at + 1;
        at += text[at] == '\\';
    }
    return 0;
}

// Of an object or a list: where as many brackets have closed as opened. 0 where they do not.
size_t endOfNested(std::string_view text)
{
    size_t depth = 0;
    for (size_t at = 0; at < text.size(); ++at) {
        char c = text[at];
        if (c == '"') {
            size_t length = endOfString(text.substr(at));
            if (length == 0)
                return 0;
            at += length - 1;
        }
        depth += c == '{' || c == '[';
        depth -= c == '}' || c == ']';
        if (depth == 0)
            return at + 1;
    }
    return 0;
}

size_t lengthOfValue(std::string_view text)
{
    if (text.empty())
        return 0;
    if (text[0] == '"')
        return endOfString(text);
    if (text[0] == '{' || text[0] == '[')
        return endOfNested(text);
    return std::min(text.find_first_of(",}] \t\r\n"), text.size());
}

std::optional<std::string_view> takeValue(Rest& rest)
{
    rest.skipBlanks();
    size_t length = lengthOfValue(rest.text);
    if (length == 0)
        return {};
    std::string_view value = rest.text.substr(0, length);
    rest.text.remove_prefix(length);
    return value;
}

bool takeMember(Rest& rest, JsonMembers& members)
{
    rest.skipBlanks();
    std::optional<std::string_view> key = takeValue(rest);
    std::optional<std::string> name = key ? jsonText(*key) : std::nullopt;
    if (!name || !rest.take(':'))
        return false;
    std::optional<std::string_view> value = takeValue(rest);
    if (value)
        members.emplace_back(std::move(*name), *value);
    return value.has_value();
}

void appendUtf8(std::string& text, char32_t point)
{
    auto add = [&](char32_t bits) { text += static_cast<char>(bits); };
    if (point < 0x80)
        return add(point);
    if (point < 0x800) {
        add(0xC0 | point >> 6);
    } else {
        if (point < 0x10000) {
            add(0xE0 | point >> 12);
        } else {
            add(0xF0 | point >> 18);
            add(0x80 | (point >> 12 & 0x3F));
        }
        add(0x80 | (point >> 6 & 0x3F));
    }
    add(0x80 | (point & 0x3F));
}

// Four hexadecimal digits.
std::optional<char32_t> takeUnit(std::string_view& text)
{
    constexpr size_t digits = 4;
    uint32_t unit = 0;
    if (text.size() < digits)
        return {};
    auto [end, fault] = std::from_chars(text.data(), text.data() + digits, unit, 16);
    if (fault != std::errc() || end != text.data() + digits)
        return {};
    text.remove_prefix(digits);
    return unit;
}

// Behind "\u": one unit of UTF-16, or the two of a pair.
bool takeUnicode(std::string_view& text, std::string& out)
{
    constexpr char32_t high = 0xD800, low = 0xDC00, afterLow = 0xE000;
    std::optional<char32_t> first = takeUnit(text);
    if (!first || (*first >= low && *first < afterLow))
        return false;
    if (*first < high || *first >= afterLow) {
        appendUtf8(out, *first);
        return true;
    }
    if (!text.starts_with("\\u"))
        return false;
    text.remove_prefix(2);
    std::optional<char32_t> second = takeUnit(text);
    if (!second || *second < low || *second >= afterLow)
        return false;
    appendUtf8(out, 0x10000 + ((*first - high) << 10) + (*second - low));
    return true;
}

// Behind a backslash.
bool takeEscape(std::string_view& text, std::string& out)
{
    constexpr std::string_view letters = "\"\\/bfnrt", meant = "\"\\/\b\f\n\r\t";
    char letter = text[0];
    text.remove_prefix(1);
    if (letter == 'u')
        return takeUnicode(text, out);
    size_t found = letters.find(letter);
    if (found == letters.npos)
        return false;
    out += meant[found];
    return true;
}

} // namespace

std::optional<JsonMembers> readJsonObject(std::string_view text)
{
    JsonMembers members;
    Rest rest = {text};
    if (!rest.take('{'))
        return {};
    if (!rest.take('}')) {
        do
            if (!takeMember(rest, members))
                return {};
        while (rest.take(','));
        if (!rest.take('}'))
            return {};
    }
    rest.skipBlanks();
    return rest.text.empty() ? std::optional(std::move(members)) : std::nullopt;
}

std::string_view jsonMember(const JsonMembers& members, std::string_view key)
{
    auto found = std::ranges::find(members, key, &JsonMembers::value_type::first);
    return found == members.end() ? std::string_view() : found->second;
}

std::optional<std::string> jsonText(std::string_view value)
{
    if (value.size() < 2 || value[0] != '"' || endOfString(value) != value.size())
        return {};
    value = value.substr(1, value.size() - 2);
    std::string text;
    text.reserve(value.size());
    for (;;) {
        size_t plain = value.find('\\');
        text += value.substr(0, plain);
        if (plain == value.npos)
            return text;
        value.remove_prefix(plain + 1);
        if (!takeEscape(value, text)) // the last character is escaped by none
            return {};
    }
}

} // namespace torvane
